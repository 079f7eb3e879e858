#include "fuzz/plain_reader.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace kova_fuzz {

using kova_import::FilePlace;
using kova_import::ReadFailureKind;

namespace {

bool is_digit(char character) { return character >= '0' && character <= '9'; }

bool is_blank(char character) { return character == ' ' || character == '\t' || character == '\r'; }

std::string without_blanks(std::string_view text) {
    std::string kept;
    for (const char character : text)
        if (character != ' ')
            kept += character;
    return kept;
}

std::string leading_digits(std::string_view text) {
    std::string digits;
    for (std::size_t i = 0; i < text.size() && is_digit(text[i]); ++i)
        digits += text[i];
    return digits;
}

/// The value of digits, or something larger than any number that can be read.
std::int64_t value_of_digits(const std::string &digits) {
    constexpr int decimal = 10;
    return std::strtoll(digits.c_str(), nullptr, decimal); // as large as can be on overflow
}

bool read_integer(std::string_view text, std::int32_t &target) {
    const bool is_negative = text.starts_with('-');
    if (is_negative || text.starts_with('+'))
        text.remove_prefix(1);
    const std::string digits = leading_digits(text);
    if (digits.empty() || digits.size() != text.size())
        return false;
    const std::int64_t value = is_negative ? -value_of_digits(digits) : value_of_digits(digits);
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max())
        return false;
    target = static_cast<std::int32_t>(value);
    return true;
}

/// A number without a point and an exponent has `decimals` implied decimals.
bool read_real(std::string_view text, std::size_t decimals, float &target) {
    std::string for_c;
    const auto take = [&](std::size_t count) {
        for_c += text.substr(0, count);
        text.remove_prefix(count);
    };
    const auto at_sign = [&] { return text.starts_with('+') || text.starts_with('-'); };
    if (at_sign())
        take(1);
    std::size_t digit_count = leading_digits(text).size();
    take(digit_count);
    const bool has_point = text.starts_with('.');
    if (has_point) {
        take(1);
        const std::size_t count = leading_digits(text).size();
        take(count);
        digit_count += count;
    }
    if (digit_count == 0)
        return false;
    if (!text.empty()) {
        for_c += 'e';
        const bool has_letter = std::string_view("EeDdQq").find(text.front()) != text.npos;
        if (has_letter)
            text.remove_prefix(1);
        if (at_sign())
            take(1);
        else if (!has_letter)
            return false;
        const std::size_t exponent_digits = leading_digits(text).size();
        if (exponent_digits == 0 || exponent_digits != text.size())
            return false;
        take(exponent_digits);
    } else if (!has_point) {
        for_c += "e-" + std::to_string(decimals);
    }
    const float value = std::strtof(for_c.c_str(), nullptr);
    if (std::isinf(value))
        return false;
    target = value;
    return true;
}

void put_text(std::string_view text, char *target, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i)
        target[i] = i < text.size() ? text[i] : ' ';
}

// Layouts

struct Column {
    char letter = ' ';
    std::size_t offset = 0;
    std::size_t width = 0;
    std::size_t decimals = 0;
};

std::size_t take_number(std::string_view &layout) {
    const std::string digits = leading_digits(layout);
    layout.remove_prefix(digits.size());
    return static_cast<std::size_t>(value_of_digits(digits));
}

/// Takes "(…)" from the start of `layout`.
void take_group(std::string_view &layout, std::size_t &offset, std::vector<Column> &columns) {
    do {
        layout.remove_prefix(1); // the parenthesis or the comma
        const std::size_t times = is_digit(layout.front()) ? take_number(layout) : 1;
        const std::string_view repeated = layout;
        for (std::size_t i = 0; i < times; ++i) {
            layout = repeated;
            if (layout.front() == '(') {
                take_group(layout, offset, columns);
                continue;
            }
            Column column{layout.front(), offset};
            layout.remove_prefix(1);
            if (column.letter == 'X' || column.letter == 'x') {
                offset += 1;
                continue;
            }
            column.width = take_number(layout);
            if (column.letter == 'F') {
                layout.remove_prefix(1); // the point
                column.decimals = take_number(layout);
            }
            offset += column.width;
            columns.push_back(column);
        }
    } while (layout.front() == ',');
    layout.remove_prefix(1); // the parenthesis
}

} // namespace

// Statements

bool PlainReader::begin_statement() {
    if (!ok())
        return false;
    ++line_counter_;
    return true;
}

bool PlainReader::has_line(std::int64_t number) const {
    // Behind the last line end there is a line only if something stands there.
    return number < lines_.count() || (number == lines_.count() && !lines_.line(number).empty());
}

std::string_view PlainReader::line_text(std::int64_t number) const {
    std::string_view text = lines_.line(number);
    const bool has_line_end = number < lines_.count();
    if (has_line_end && text.ends_with('\r'))
        text.remove_suffix(1);
    return text;
}

void PlainReader::fail(ReadFailureKind kind, FilePlace place) {
    kind_ = kind;
    failure_place_ = place;
}

// Fixed columns

void PlainReader::read_fixed(std::string_view layout, const std::vector<Item> &items) {
    if (!has_line()) {
        fail_at_end();
        return;
    }
    std::vector<Column> columns;
    std::size_t width = 0;
    take_group(layout, width, columns);
    std::string line(line_text(line_));
    line.resize(std::max(line.size(), width), ' ');
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const Column &column = columns[i];
        const Item &item = items[i];
        const std::string text = line.substr(column.offset, column.width);
        const std::string number = without_blanks(text);
        bool can_be_read = true;
        if (item.text != nullptr)
            put_text(text, item.text, item.width);
        else if (item.integer != nullptr)
            can_be_read = read_integer(number.empty() ? "0" : number, *item.integer);
        else
            can_be_read = read_real(number.empty() ? "0" : number, column.decimals, *item.real);
        if (!can_be_read) {
            const std::size_t first = column.offset + text.find_first_not_of(' ');
            fail(ReadFailureKind::bad_value, {line_, static_cast<std::int64_t>(first) + 1});
            return;
        }
    }
    ++line_;
}

// Free-form lists

void PlainReader::next_line() {
    ++line_;
    column_ = 0;
    text_ = has_line() ? line_text(line_) : "";
}

void PlainReader::start_list() {
    text_ = line_text(line_);
    column_ = 0;
    may_take_comma_ = false;
    is_first_value_ = true;
    value_ = {};
}

bool PlainReader::at_separator() const {
    return at_line_end() || is_blank(character()) || character() == ',' || character() == '/';
}

PlainReader::Next PlainReader::next_value() {
    bool is_first_in_line = false;
    for (;;) {
        if (!has_line()) {
            fail_at_end();
            return Next::failed;
        }
        if (at_line_end()) {
            next_line();
            is_first_in_line = true;
            may_take_comma_ |= is_first_value_; // empty lines before a record
        } else if (is_blank(character())) {
            ++column_;
        } else if (character() == '/') {
            return Next::slash;
        } else if (character() != ',') {
            may_take_comma_ = true;
            is_first_value_ = false;
            return take_value();
        } else {
            ++column_;
            if (!may_take_comma_) {
                is_first_value_ = false;
                value_ = {};
                value_.is_empty = true;
                value_.times = 1;
                return Next::value;
            }
            // Of lines that are a comma only, any number ends one value.
            while (!at_line_end() && is_blank(character()))
                ++column_;
            may_take_comma_ = is_first_in_line && at_line_end();
        }
    }
}

bool PlainReader::take_repeat_count() {
    const std::string digits = leading_digits(text_.substr(column_));
    const std::string_view behind = text_.substr(column_ + digits.size());
    if (digits.empty() || !behind.starts_with('*'))
        return true;
    value_.times = value_of_digits(digits);
    if (value_.times < 1 || value_.times > std::numeric_limits<std::int32_t>::max()) {
        fail(ReadFailureKind::bad_value, place());
        return false;
    }
    column_ += digits.size() + 1;
    value_.is_empty = at_separator();
    return true;
}

PlainReader::Next PlainReader::take_value() {
    value_ = {};
    value_.times = 1;
    if (!take_repeat_count())
        return Next::failed;
    value_.place = place();
    if (value_.is_empty)
        return Next::value;
    if (character() == '\'' || character() == '"')
        return take_quoted();
    while (!at_separator())
        value_.text += text_[column_++];
    return Next::value;
}

PlainReader::Next PlainReader::take_quoted() {
    value_.is_quoted = true;
    const char quote = character();
    ++column_;
    for (;;) {
        if (at_line_end()) {
            next_line();
            if (!has_line()) {
                fail(ReadFailureKind::open_delimiter, value_.place);
                return Next::failed;
            }
            continue;
        }
        const char next = character();
        ++column_;
        if (next == quote) {
            if (at_line_end() || character() != quote)
                break;
            ++column_;
        }
        value_.text += next;
    }
    if (at_separator())
        return Next::value;
    fail(ReadFailureKind::bad_value, value_.place);
    return Next::failed;
}

bool PlainReader::convert(const Item &item) {
    if (item.integer == nullptr && item.real == nullptr) {
        put_text(value_.text, item.text, item.width);
        return true;
    }
    const bool can_be_read =
        !value_.is_quoted && (item.integer != nullptr ? read_integer(value_.text, *item.integer)
                                                      : read_real(value_.text, 0, *item.real));
    if (!can_be_read) {
        fail(ReadFailureKind::bad_value, value_.place);
        return false;
    }
    if (item.integer != nullptr &&
        (*item.integer < item.bounds.smallest || *item.integer > item.bounds.largest)) {
        fail(ReadFailureKind::out_of_range, value_.place);
        return false;
    }
    return true;
}

void PlainReader::read_list(const std::vector<Item> &items) {
    if (!has_line()) {
        fail_at_end();
        return;
    }
    start_list();
    for (const Item &item : items) {
        if (value_.times == 0) {
            const Next next = next_value();
            if (next == Next::failed)
                return;
            if (next == Next::slash)
                break;
        }
        --value_.times;
        if (!value_.is_empty && !convert(item))
            return;
    }
    end_list();
}

void PlainReader::read_integers(std::int64_t count, std::int32_t *kept, std::int64_t size) {
    if (!has_line()) {
        fail_at_end();
        return;
    }
    start_list();
    std::int64_t i = 0;
    while (i < count) {
        if (value_.times == 0) {
            const Next next = next_value();
            if (next == Next::failed)
                return;
            if (next == Next::slash)
                break;
        }
        std::int32_t dropped = 0;
        const Item item{.integer = i < size ? kept + i : &dropped};
        if (!value_.is_empty && !convert(item))
            return;
        // What is right once is right every time.
        const std::int64_t times = i < size ? 1 : value_.times;
        value_.times -= times;
        i += times;
    }
    end_list();
}

bool PlainReader::read_title(const Item &item) {
    const std::int64_t first_line = line_;
    read_list({item});
    if (ok())
        return true;
    const bool is_at_end = kind_ == ReadFailureKind::end_of_file;
    kind_ = ReadFailureKind::none;
    put_text("", item.text, item.width);
    if (!is_at_end)
        line_ = first_line + 1;
    return is_at_end;
}

} // namespace kova_fuzz
