#include "control/record_reader.h"

#include "control/plain_number.h"

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

void RecordReader::start_counting(std::int64_t first) {
    line_counter_ = first;
    *exported_counter_ = saturated_line_counter();
    statement_ = "";
    start_section();
}

bool RecordReader::begin_statement(const char *statement) {
    if (!ok())
        return false;
    ++line_counter_;
    *exported_counter_ = saturated_line_counter();
    statement_ = statement;
    first_line_ = stream_.line();
    if (stream_.is_open())
        return true;
    fail(ReadFailureKind::not_open, FilePlace{0, 0}, 0, {});
    return false;
}

std::int32_t RecordReader::saturated_line_counter() const {
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(line_counter_, largest));
}

// Fixed-column records

bool RecordReader::fixed_field(std::string_view line, const LayoutField &column,
                               Field<std::int32_t> item) {
    leave_out_missing(line, column, item.name);
    return convert_field(text_in(line, column), *item.target) ||
           fail_field(line, column, item.name, an_integer);
}

bool RecordReader::fixed_field(std::string_view line, const LayoutField &column,
                               Field<float> item) {
    leave_out_missing(line, column, item.name);
    return convert_field(text_in(line, column), column.decimals, *item.target) ||
           fail_field(line, column, item.name, a_real);
}

// A number behind the end of a short line is 0, like a blank one, but nobody has written it.
void RecordReader::leave_out_missing(std::string_view line, const LayoutField &column,
                                     const char *name) {
    if (column.offset >= line.size() && left_out_ != nullptr) {
        const FilePlace place = stream_.place();
        left_out_(left_out_context_, name,
                  {place.line, place.column + static_cast<std::int64_t>(line.size())});
    }
}

// A text that runs on in the column behind its field has been cut; what stands there behind a blank
// is a remark.
void RecordReader::end_fixed_record(const LayoutField &last_field, std::size_t length) {
    text_was_cut_ = false;
    if (last_field.kind == FieldKind::text) {
        const std::size_t width = last_field.offset + last_field.width;
        const std::string_view more = stream_.peek_line(width + 1);
        text_was_cut_ = more.size() > width && more[width - 1] != ' ' && more[width] != ' ';
    }
    last_line_ = stream_.line();
    stream_.advance(length);
    stream_.skip_line();
}

// Free-form lists

void RecordReader::Value::start(StreamMark at) {
    mark = at;
    width = 0;
    delimiter = '\0';
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
RecordReader::ItemState RecordReader::begin_item() {
    if (repeats_left_ > 0) {
        --repeats_left_;
        return repeats_are_empty_ ? ItemState::absent : ItemState::repeated;
    }
    if (complete_)
        return ItemState::absent;
    if (!first_item_)
        return begin_next_item();
    first_item_ = false;
    return begin_first_item();
}

RecordReader::ItemState RecordReader::begin_first_item() {
    switch (skip_blanks()) {
    case RecordStream::end_of_file:
        return fail_at_end();
    case ',':
        return ItemState::absent; // the comma separates it from the second item
    case '/':
        return end_list_at_slash();
    case '\n':
        return begin_in_next_line(false);
    default:
        return ItemState::fresh;
    }
}

RecordReader::ItemState RecordReader::begin_next_item() {
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
        return ItemState::absent; // this comma separates it from the item behind
    case '/':
        return end_list_at_slash();
    case '\n':
        return begin_in_next_line(comma_seen);
    default:
        return ItemState::fresh;
    }
}

// A comma at the start of a line separates what stands before and behind, unless the line before
// ended with one.
RecordReader::ItemState RecordReader::begin_in_next_line(bool comma_seen) {
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
            return ItemState::absent;
        case '/':
            return end_list_at_slash();
        default:
            return ItemState::fresh;
        }
    }
}

RecordReader::ItemState RecordReader::end_list_at_slash() {
    complete_ = true;
    return ItemState::absent;
}

// Takes the value at which the stream stands, with its repeat count if it has one. The stream is
// behind it then.
RecordReader::ItemState RecordReader::take_value() {
    value_.start(stream_.mark());
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
                return ItemState::failed;
            repeated = true;
        } else {
            value_.push(static_cast<char>(character));
        }
    }
    repeats_are_empty_ = value_.width == 0;
    return repeats_are_empty_ ? ItemState::absent : ItemState::fresh;
}

bool RecordReader::take_repeat_count() {
    const std::optional<std::int32_t> count = value_.number.integer();
    if (!count || *count == 0)
        return fail_value("repeat count", "a repeat count from 1 to 2147483647");
    repeats_left_ = *count - 1;
    value_.start(stream_.mark());
    return true;
}

RecordReader::ItemState RecordReader::take_delimited(char delimiter) {
    value_.delimiter = delimiter;
    stream_.advance();
    value_.width = 1;
    for (;;) {
        const int character = stream_.peek();
        if (character == RecordStream::end_of_file) {
            fail(stream_.read_error() ? ReadFailureKind::system_error
                                      : ReadFailureKind::open_delimiter,
                 value_.mark.place(), value_.width, value_.kept());
            return ItemState::failed;
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
            ++value_.width;
        } else if (character == '\r' && stream_.peek() == '\n') {
            continue;
        }
        value_.push_text(static_cast<char>(character));
    }
    repeats_are_empty_ = false;
    if (is_separator(stream_.peek()))
        return ItemState::fresh;
    static_cast<void>(
        fail_value("quoted text", "a blank, a comma or the end of the line behind it"));
    return ItemState::failed;
}

// Takes a plain number that stands whole in memory from `first` on, and leaves everything else
// alone.
template <class T>
bool RecordReader::take_plain_value(const char *first, T &target) {
    const std::string_view memory = stream_.in_memory();
    const char *const last = memory.data() + memory.size();
    T value{};
    if (!take_plain_number(first, last, value) || first == last ||
        !is_separator(static_cast<unsigned char>(*first)))
        return false;
    stream_.advance(static_cast<std::size_t>(first - memory.data()));
    target = value;
    return true;
}

// Nearly all items are plain numbers behind blanks or a comma in the same line.
template <class T>
bool RecordReader::take_plain_item(T &target) {
    if (repeats_left_ != 0 || complete_)
        return false;
    const std::string_view memory = stream_.in_memory();
    const char *const last = memory.data() + memory.size();
    const char *first = memory.data();
    while (first != last && *first == ' ')
        ++first;
    if (first != last && *first == ',' && !first_item_)
        do
            ++first;
        while (first != last && *first == ' ');
    if (!take_plain_value(first, target))
        return false;
    first_item_ = false;
    return true;
}

template <class T>
bool RecordReader::number_item(Field<T> item) {
    if (take_plain_item(*item.target)) [[likely]]
        return true;
    ItemState state = begin_item();
    if (state == ItemState::fresh) {
        if (take_plain_value(stream_.peek_block().data(), *item.target))
            return true;
        state = take_value();
    }
    if (state == ItemState::absent)
        return leave_out(item.name);
    return state != ItemState::failed && convert_value(item);
}

bool RecordReader::list_item(Field<std::int32_t> item) { return number_item(item); }
bool RecordReader::list_item(Field<float> item) { return number_item(item); }

// Bounds are for counts and the like, which are few: the value is always taken whole, so that its
// place is known.
bool RecordReader::list_item(BoundedField item) {
    ItemState state = begin_item();
    if (state == ItemState::fresh)
        state = take_value();
    if (state == ItemState::absent)
        return leave_out(item.name) && is_within(item, stream_.place(), width_of_nothing(), {});
    return state != ItemState::failed && convert_value(field(item.name, *item.target)) &&
           is_within(item, value_.mark.place(), value_.width, value_.kept());
}

// Of the character where an item is missing: none at the end of a line.
std::int64_t RecordReader::width_of_nothing() {
    const int character = stream_.peek();
    const bool at_end =
        character == RecordStream::end_of_file || character == '\n' || character == '\r';
    return at_end ? 0 : 1;
}

bool RecordReader::is_within(const BoundedField &item, FilePlace place, std::int64_t width,
                             std::string_view found) {
    if (*item.target >= item.bounds.smallest && *item.target <= item.bounds.largest)
        return true;
    fail(ReadFailureKind::out_of_range, place, width, found);
    failure_.field = item.name;
    failure_.expected = item.bounds.expected;
    return false;
}

bool RecordReader::convert_value(Field<std::int32_t> item) {
    const std::optional<std::int32_t> value = value_.number.integer();
    if (!value)
        return fail_number(item.name, an_integer);
    *item.target = *value;
    return true;
}

bool RecordReader::convert_value(Field<float> item) {
    const std::optional<float> value = value_.number.real();
    if (!value)
        return fail_number(item.name, a_real);
    *item.target = *value;
    return true;
}

// The text of an item that is there.
RecordReader::ItemState RecordReader::list_text(char *target, std::size_t width) {
    text_was_cut_ = false;
    ItemState state = begin_item();
    if (state == ItemState::fresh)
        state = take_value();
    if (state == ItemState::absent || state == ItemState::failed)
        return state;
    const std::string_view text = value_.kept().substr(0, width);
    text_was_cut_ = !without_trailing_blanks(value_.kept().substr(text.size())).empty();
    std::fill_n(std::copy(text.begin(), text.end(), target), width - text.size(), ' ');
    return state;
}

// Leaving it out is no loss.
bool RecordReader::list_item(UnusedText /*item*/) {
    return list_text(nullptr, 0) != ItemState::failed;
}

// The item keeps what it holds. Always succeeds.
bool RecordReader::leave_out(const char *name) {
    if (left_out_ != nullptr)
        left_out_(left_out_context_, name, stream_.place());
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
    end_list();
}

// Goes over what is left of the list's last line. Where an error of the system hides its end,
// nobody knows what the last value was.
void RecordReader::end_list() {
    if (!ok())
        return;
    if (stream_.line_is_cut()) {
        fail_at_end();
        return;
    }
    last_line_ = stream_.line();
    stream_.skip_line();
}

bool RecordReader::unguarded_text_list(char *target, std::size_t width) {
    const StreamMark start = stream_.mark();
    if (begin_list() && list_text(target, width) != ItemState::failed)
        end_list();
    if (ok())
        return true;
    // Nobody asks what a title says. At the end of the file, or where the system cannot read on, it
    // is blank; any other that cannot be read is one line.
    const bool at_end = failure_.is_at_end() || failure_.kind == ReadFailureKind::system_error;
    failure_ = ReadFailure{};
    std::fill_n(target, width, ' ');
    if (!at_end && stream_.go_back(start)) {
        last_line_ = stream_.line();
        stream_.skip_line();
    }
    return at_end;
}

} // namespace kova_import
