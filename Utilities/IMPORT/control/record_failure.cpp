// How a failed read becomes a value: its place, what stood there, what was expected, and the line
// around it.

#include "control/record_reader.h"

#include <cstddef>
#include <string_view>

namespace kova_import {

namespace {

bool starts_with_letter(std::string_view text) {
    const char first = text.empty() ? '\0' : text.front();
    return (first >= 'A' && first <= 'Z') || (first >= 'a' && first <= 'z');
}

} // namespace

bool RecordReader::fail_value(const char *name, const char *expected) {
    fail(ReadFailureKind::bad_value, value_.mark.place(), value_.width, value_.kept());
    failure_.field = name;
    failure_.expected = expected;
    return false;
}

bool RecordReader::fail_number(const char *name, const char *expected) {
    static_cast<void>(fail_value(name, expected));
    if (value_.delimiter == '\0') {
        if (value_.mark.line != first_line_)
            failure_.advice =
                "The record started in an earlier line; it may be a value short there.";
        else if (starts_with_letter(value_.kept()))
            failure_.advice = "A count above may be too large, or a line too much or missing.";
        return false;
    }
    FixedText<Value::kept_text + 2> quoted;
    const std::string_view quote(&value_.delimiter, 1);
    quoted.assign({quote, value_.kept(), quote});
    failure_.found.assign(quoted.trimmed());
    NumberText inside;
    for (const char character : value_.kept())
        inside.push(character);
    if (inside.real())
        failure_.advice = "Take the quotes away: a quoted number is a text.";
    return false;
}

bool RecordReader::fail_field(std::string_view line, const LayoutField &column, const char *name,
                              const char *expected) {
    // The mark goes under what stands in the field, not under the blanks around it.
    std::string_view text = without_trailing_blanks(text_in(line, column));
    const std::size_t blanks = text.find_first_not_of(' ');
    text.remove_prefix(blanks);
    FilePlace place = stream_.place();
    place.column += static_cast<std::int64_t>(column.offset + blanks);
    fail(ReadFailureKind::bad_value, place, static_cast<std::int64_t>(text.size()), text);
    failure_.field = name;
    failure_.expected = expected;
    return false;
}

RecordReader::ItemState RecordReader::fail_at_end() {
    fail(stream_.read_error() ? ReadFailureKind::system_error : ReadFailureKind::end_of_file,
         stream_.end_place(), 0, {});
    return ItemState::failed;
}

void RecordReader::fail(ReadFailureKind kind, FilePlace place, std::int64_t width,
                        std::string_view found) {
    failure_ = ReadFailure{};
    failure_.kind = kind;
    failure_.statement = statement_;
    failure_.statement_number = line_counter_;
    failure_.place = place;
    failure_.width = width;
    failure_.found.assign(found);
    if (kind == ReadFailureKind::not_open)
        return;
    const bool is_about_value =
        kind == ReadFailureKind::bad_value || kind == ReadFailureKind::out_of_range;
    if (is_about_value && stream_.line_is_cut())
        failure_.kind = ReadFailureKind::system_error;
    else if (kind == ReadFailureKind::bad_value && stream_.has_wide_characters())
        failure_.kind = ReadFailureKind::wide_text;
    show_line(place);
}

// Nothing is read after a failure, so the stream may go back to a value that started long ago.
void RecordReader::show_line(FilePlace place) {
    LineExcerpt excerpt = stream_.excerpt(place);
    const FilePlace start = value_.mark.place();
    const bool is_at_value =
        !failure_.is_at_end() && start.line == place.line && start.column == place.column;
    if (excerpt.text.empty() && is_at_value && stream_.go_back(value_.mark))
        excerpt = stream_.excerpt(place);
    failure_.line_text.assign(excerpt.text);
    failure_.line_text_column = excerpt.column;
}

} // namespace kova_import
