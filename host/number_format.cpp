#include "host/number_format.h"

#include "host/real_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace kova_host {

namespace {

constexpr std::size_t digits_of_width = 3;

/// What stands between the percent sign and the letter of a conversion.
struct Conversion {
    bool left = false;
    bool plus = false;
    bool space = false;
    bool zeros = false;
    std::size_t width = 0;
    std::optional<std::size_t> precision;
};

bool is_digit(char character) { return character >= '0' && character <= '9'; }

/// Takes a number of up to three digits off the front of `text`; none when it is longer. No digits
/// are 0.
std::optional<std::size_t> take_number(std::string_view &text) {
    std::size_t number = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && is_digit(text[digits]); ++digits) {
        if (digits == digits_of_width)
            return std::nullopt;
        number = number * 10 + static_cast<std::size_t>(text[digits] - '0');
    }
    text.remove_prefix(digits);
    return number;
}

bool take_flag(char character, Conversion &conversion) {
    switch (character) {
    case '-':
        return conversion.left = true;
    case '+':
        return conversion.plus = true;
    case ' ':
        return conversion.space = true;
    case '0':
        return conversion.zeros = true;
    default:
        return false;
    }
}

/// Takes a conversion, behind its percent sign, off the front of `text`.
std::optional<Conversion> take_conversion(std::string_view &text) {
    Conversion conversion;
    while (!text.empty() && take_flag(text.front(), conversion))
        text.remove_prefix(1);
    const auto width = take_number(text);
    if (!width)
        return std::nullopt;
    conversion.width = *width;
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        conversion.precision = take_number(text);
        if (!conversion.precision)
            return std::nullopt;
    }
    if (text.empty() || (text.front() != 'd' && text.front() != 'i'))
        return std::nullopt;
    text.remove_prefix(1);
    return conversion;
}

void append_integer(std::string &result, const Conversion &conversion, std::int32_t value) {
    const std::int64_t wide = value;
    std::array<char, number_text_size> buffer{};
    char *const end = write_integer(buffer.data(), wide < 0 ? -wide : wide);
    std::string digits(buffer.data(), end);
    if (conversion.precision == std::size_t{0} && value == 0)
        digits.clear();
    std::string sign;
    if (value < 0)
        sign = "-";
    else if (conversion.plus)
        sign = "+";
    else if (conversion.space)
        sign = " ";

    std::size_t least = conversion.precision.value_or(1);
    if (conversion.zeros && !conversion.left && !conversion.precision)
        least = std::max(least, conversion.width - std::min(conversion.width, sign.size()));
    if (digits.size() < least)
        digits.insert(0, least - digits.size(), '0');

    const std::size_t size = sign.size() + digits.size();
    const std::size_t padding = conversion.width - std::min(conversion.width, size);
    if (!conversion.left)
        result.append(padding, ' ');
    result += sign;
    result += digits;
    if (conversion.left)
        result.append(padding, ' ');
}

} // namespace

char *write_integer(char *first, std::int64_t value) {
    return std::to_chars(first, first + number_text_size, value).ptr;
}

char *write_real(char *first, float value) {
    if (is_plain_real(value))
        return write_plain_real(first, value);
    if (value == 0) {
        *first = '-';
        first += std::signbit(value) ? 1 : 0;
        *first = '0';
        return first + 1;
    }
    if (std::isnan(value)) {
        constexpr std::string_view text = "nan";
        return std::copy(text.begin(), text.end(), first);
    }
    constexpr int significant_digits = 9;
    return std::to_chars(first, first + number_text_size, value, std::chars_format::general,
                         significant_digits)
        .ptr;
}

std::optional<std::string> format_integer(std::string_view format, std::int32_t value) {
    std::string result;
    bool converted = false;
    while (!format.empty()) {
        const char character = format.front();
        format.remove_prefix(1);
        if (character != '%') {
            result += character;
        } else if (!format.empty() && format.front() == '%') {
            result += '%';
            format.remove_prefix(1);
        } else {
            const auto conversion = take_conversion(format);
            if (!conversion || converted)
                return std::nullopt;
            append_integer(result, *conversion, value);
            converted = true;
        }
    }
    if (!converted)
        return std::nullopt;
    return result;
}

std::optional<std::string> format_real(std::string_view format, float value) {
    if (format != "%f" && format != "%F")
        return std::nullopt;
    if (std::isnan(value))
        return "nan";
    constexpr int decimals = 6;
    std::array<char, number_text_size> buffer{};
    char *const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                    static_cast<double>(value), std::chars_format::fixed, decimals)
                          .ptr;
    return std::string(buffer.data(), end);
}

} // namespace kova_host
