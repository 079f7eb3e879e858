#include "control/record_reader.h"

#include <limits>
#include <optional>

namespace kova_import {

namespace {

constexpr const char *an_integer = "an integer of at most 32 bits";
constexpr const char *a_real = "a real number within single precision";

// A CR is a blank in a free-form list; before an LF that makes no difference.
constexpr bool is_blank(int character) {
    return character == ' ' || character == '\t' || character == '\r';
}

constexpr bool is_separator(int character) {
    return is_blank(character) || character == ',' || character == '/' || character == '\n' ||
           character == RecordStream::end_of_file;
}

constexpr bool is_delimiter(int character) { return character == '\'' || character == '"'; }

} // namespace

void RecordReader::start_counting() {
    line_counter_ = 1;
    *exported_counter_ = 1;
    statement_ = "";
    start_section();
}

bool RecordReader::begin_statement(const char *statement) {
    if (!ok())
        return false;
    ++line_counter_;
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    *exported_counter_ = static_cast<std::int32_t>(std::min(line_counter_, largest));
    statement_ = statement;
    if (stream_.is_open())
        return true;
    fail(ReadFailureKind::not_open, FilePlace{0, 0}, 0, {});
    return false;
}

// Fixed-column records

bool RecordReader::fixed_field(std::string_view line, const LayoutField &column,
                               Field<std::int32_t> item) {
    const std::optional<std::int32_t> value =
        integer_field(line.substr(std::min(line.size(), column.offset), column.width));
    if (!value)
        return fail_field(line, column, item.name, an_integer);
    *item.target = *value;
    return true;
}

bool RecordReader::fixed_field(std::string_view line, const LayoutField &column,
                               Field<float> item) {
    const std::optional<float> value = real_field(
        line.substr(std::min(line.size(), column.offset), column.width), column.decimals);
    if (!value)
        return fail_field(line, column, item.name, a_real);
    *item.target = *value;
    return true;
}

// Free-form lists

void RecordReader::Value::start(FilePlace at) {
    place = at;
    width = 0;
    delimited = false;
    only_digits = true;
    number.clear();
    text_length = 0;
}

void RecordReader::Value::push(char character) {
    ++width;
    only_digits = only_digits && character >= '0' && character <= '9';
    number.push(character);
    push_text(character);
}

void RecordReader::Value::push_text(char character) {
    if (text_length < kept_text)
        text[text_length++] = character;
}

bool RecordReader::begin_list() {
    first_item_ = true;
    complete_ = false;
    repeats_left_ = 0;
    if (!stream_.at_end_of_file())
        return true;
    fail_at_end();
    return false;
}

int RecordReader::skip_blanks() {
    int character = stream_.peek();
    while (is_blank(character)) {
        stream_.advance();
        character = stream_.peek();
    }
    return character;
}

// Finds out what the next item of the list gets. With a fresh value the stream stands at its first
// character.
RecordReader::Item RecordReader::begin_item() {
    if (repeats_left_ > 0) {
        --repeats_left_;
        return repeats_are_empty_ ? Item::absent : Item::repeated;
    }
    if (complete_)
        return Item::absent;
    if (!first_item_)
        return begin_next_item();
    first_item_ = false;
    return begin_first_item();
}

RecordReader::Item RecordReader::begin_first_item() {
    switch (skip_blanks()) {
    case RecordStream::end_of_file:
        return fail_at_end();
    case ',':
        return Item::absent; // the comma separates it from the second item
    case '/':
        return end_list_at_slash();
    case '\n':
        return begin_in_next_line(false);
    default:
        return Item::fresh;
    }
}

RecordReader::Item RecordReader::begin_next_item() {
    int character = skip_blanks();
    const bool comma_seen = character == ',';
    if (comma_seen) {
        stream_.advance();
        character = skip_blanks();
    }
    switch (character) {
    case RecordStream::end_of_file:
        return fail_at_end();
    case ',':
        return Item::absent; // this comma separates it from the item behind
    case '/':
        return end_list_at_slash();
    case '\n':
        return begin_in_next_line(comma_seen);
    default:
        return Item::fresh;
    }
}

// A comma at the start of a line separates what stands before and behind, unless the line before
// ended with one.
RecordReader::Item RecordReader::begin_in_next_line(bool comma_seen) {
    for (;;) {
        stream_.advance_line();
        int character = skip_blanks();
        if (character == ',' && !comma_seen) {
            stream_.advance();
            character = skip_blanks();
        }
        switch (character) {
        case '\n':
            break;
        case RecordStream::end_of_file:
            return fail_at_end();
        case ',':
            return Item::absent;
        case '/':
            return end_list_at_slash();
        default:
            return Item::fresh;
        }
    }
}

RecordReader::Item RecordReader::end_list_at_slash() {
    complete_ = true;
    return Item::absent;
}

// Takes the value at which the stream stands, with its repeat count if it has one. The stream is
// behind it then.
RecordReader::Item RecordReader::take_value() {
    value_.start(stream_.place());
    bool repeated = false;
    for (;;) {
        const int character = stream_.peek();
        if (value_.width == 0 && is_delimiter(character))
            return take_delimited(static_cast<char>(character));
        if (is_separator(character))
            break;
        stream_.advance();
        if (character == '*' && !repeated && value_.may_be_repeat_count()) {
            if (!take_repeat_count())
                return Item::failed;
            repeated = true;
        } else {
            value_.push(static_cast<char>(character));
        }
    }
    repeats_are_empty_ = value_.width == 0;
    return repeats_are_empty_ ? Item::absent : Item::fresh;
}

bool RecordReader::take_repeat_count() {
    const std::optional<std::int32_t> count = value_.number.integer();
    if (!count || *count == 0)
        return fail_value("repeat count", "a repeat count from 1 to 2147483647");
    repeats_left_ = *count - 1;
    value_.start(stream_.place());
    return true;
}

RecordReader::Item RecordReader::take_delimited(char delimiter) {
    value_.delimited = true;
    value_.line_start = stream_.line_start();
    stream_.advance();
    value_.width = 1;
    for (;;) {
        const int character = stream_.peek();
        if (character == RecordStream::end_of_file) {
            fail(stream_.read_error() ? ReadFailureKind::system_error
                                      : ReadFailureKind::open_delimiter,
                 value_.place, value_.width, value_.kept());
            return Item::failed;
        }
        ++value_.width;
        if (character == '\n') {
            stream_.advance_line();
            continue;
        }
        stream_.advance();
        if (character == delimiter) {
            if (stream_.peek() != delimiter)
                break;
            stream_.advance();
        } else if (character == '\r' && stream_.peek() == '\n') {
            continue;
        }
        value_.push_text(static_cast<char>(character));
    }
    repeats_are_empty_ = false;
    if (is_separator(stream_.peek()))
        return Item::fresh;
    static_cast<void>(
        fail_value("quoted text", "a blank, a comma or the end of the line behind it"));
    return Item::failed;
}

bool RecordReader::list_item(Field<std::int32_t> item) {
    Item state = begin_item();
    if (state == Item::fresh) {
        const std::string_view block = stream_.peek_block();
        const char *end = block.data();
        const std::optional<std::int32_t> value = plain_integer(end, end + block.size());
        if (value && end != block.data() + block.size() &&
            is_separator(static_cast<unsigned char>(*end))) {
            stream_.advance(static_cast<std::size_t>(end - block.data()));
            *item.target = *value;
            return true;
        }
        state = take_value();
    }
    if (state == Item::absent || state == Item::failed)
        return state == Item::absent;
    const std::optional<std::int32_t> value = value_.number.integer();
    if (!value)
        return fail_number(item.name, an_integer);
    *item.target = *value;
    return true;
}

bool RecordReader::list_item(Field<float> item) {
    Item state = begin_item();
    if (state == Item::fresh) {
        const std::string_view block = stream_.peek_block();
        const char *end = block.data();
        const std::optional<float> value = plain_real(end, end + block.size());
        if (value && end != block.data() + block.size() &&
            is_separator(static_cast<unsigned char>(*end))) {
            stream_.advance(static_cast<std::size_t>(end - block.data()));
            *item.target = *value;
            return true;
        }
        state = take_value();
    }
    if (state == Item::absent || state == Item::failed)
        return state == Item::absent;
    const std::optional<float> value = value_.number.real();
    if (!value)
        return fail_number(item.name, a_real);
    *item.target = *value;
    return true;
}

bool RecordReader::list_text(char *target, std::size_t width) {
    Item state = begin_item();
    if (state == Item::fresh)
        state = take_value();
    if (state == Item::absent || state == Item::failed)
        return state == Item::absent;
    const std::string_view text = value_.kept().substr(0, width);
    std::fill_n(std::copy(text.begin(), text.end(), target), width - text.size(), ' ');
    return true;
}

void RecordReader::integer_list(const char *name, std::int32_t count, std::int32_t *kept,
                                std::size_t size) {
    if (!begin_list())
        return;
    std::int32_t dropped = 0;
    for (std::int64_t i = 0; i < count && !complete_;) {
        const bool is_kept = i < static_cast<std::int64_t>(size);
        if (!list_item(field(name, is_kept ? kept[i] : dropped)))
            return;
        ++i;
        if (is_kept)
            continue;
        // What the value still stands for has been checked with it.
        const std::int64_t checked = std::min(repeats_left_, count - i);
        repeats_left_ -= checked;
        i += checked;
    }
    stream_.skip_line();
}

void RecordReader::unguarded_text_list(char *target, std::size_t width) {
    const LineMark start = stream_.line_start();
    if (begin_list() && list_text(target, width)) {
        stream_.skip_line();
        return;
    }
    // Nobody asks what a title says. At the end of the file it is blank; any other that cannot be
    // read is one line.
    const bool at_end = failure_.kind == ReadFailureKind::end_of_file ||
                        failure_.kind == ReadFailureKind::system_error;
    failure_ = ReadFailure{};
    std::fill_n(target, width, ' ');
    if (!at_end && stream_.go_back(start))
        stream_.skip_line();
}

// Failures

bool RecordReader::fail_value(const char *name, const char *expected) {
    fail(ReadFailureKind::bad_value, value_.place, value_.width, value_.kept());
    failure_.field = name;
    failure_.expected = expected;
    return false;
}

bool RecordReader::fail_number(const char *name, const char *expected) {
    if (value_.delimited) {
        static_cast<void>(fail_value(name, expected));
        failure_.advice = "Take the quotes away: a quoted number is a text.";
        return false;
    }
    return fail_value(name, expected);
}

bool RecordReader::fail_field(std::string_view line, const LayoutField &column, const char *name,
                              const char *expected) {
    // The mark goes under what stands in the field, not under the blanks around it.
    std::string_view text = without_trailing_blanks(line.substr(column.offset, column.width));
    const std::size_t blanks = text.find_first_not_of(' ');
    text.remove_prefix(blanks);
    FilePlace place = stream_.place();
    place.column += static_cast<std::int64_t>(column.offset + blanks);
    fail(ReadFailureKind::bad_value, place, static_cast<std::int64_t>(text.size()), text);
    failure_.field = name;
    failure_.expected = expected;
    return false;
}

RecordReader::Item RecordReader::fail_at_end() {
    fail(stream_.read_error() ? ReadFailureKind::system_error : ReadFailureKind::end_of_file,
         stream_.end_place(), 0, {});
    return Item::failed;
}

void RecordReader::fail(ReadFailureKind kind, FilePlace place, std::int64_t width,
                        std::string_view found) {
    failure_ = ReadFailure{};
    failure_.kind = stream_.is_utf16() ? ReadFailureKind::utf16 : kind;
    failure_.statement = statement_;
    failure_.statement_number = line_counter_;
    failure_.place = place;
    failure_.width = width;
    failure_.found.assign(found);
    if (kind == ReadFailureKind::not_open)
        return;
    // A quoted text may have started many lines ago; nothing is read after a failure, so the stream
    // may go back there.
    LineExcerpt excerpt = stream_.excerpt(place);
    if (kind == ReadFailureKind::open_delimiter && excerpt.text.empty() &&
        stream_.go_back(value_.line_start))
        excerpt = stream_.excerpt(place);
    failure_.line_text.assign(excerpt.text);
    failure_.line_text_column = excerpt.column;
}

} // namespace kova_import
