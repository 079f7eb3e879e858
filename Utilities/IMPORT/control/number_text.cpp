#include "control/number_text.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <limits>
#include <system_error>

namespace kova_import {

namespace {

// Beyond this every text has long become zero or overflowed, and sums of three stay far from the
// end of 64 bits.
constexpr std::int64_t exponent_limit = std::int64_t{1} << 60;

constexpr bool is_digit(char character) { return character >= '0' && character <= '9'; }

constexpr bool is_exponent_letter(char character) {
    switch (character) {
    case 'E':
    case 'e':
    case 'D':
    case 'd':
    case 'Q':
    case 'q':
        return true;
    default:
        return false;
    }
}

constexpr bool is_sign(char character) { return character == '+' || character == '-'; }

} // namespace

void NumberText::push(char character) {
    switch (state_) {
    case State::start:
    case State::sign:
    case State::digits:
    case State::point:
        if (is_digit(character)) {
            push_digit(static_cast<unsigned>(character - '0'));
            if (state_ != State::point)
                state_ = State::digits;
        } else if (character == '.' && state_ != State::point) {
            state_ = State::point;
        } else if (is_sign(character) && state_ == State::start) {
            negative_ = character == '-';
            state_ = State::sign;
        } else if (is_sign(character) && any_digit_) {
            exponent_negative_ = character == '-';
            state_ = State::exponent_sign;
        } else if (is_exponent_letter(character) && any_digit_) {
            state_ = State::exponent_letter;
        } else {
            state_ = State::bad;
        }
        break;
    case State::exponent_letter:
    case State::exponent_sign:
    case State::exponent_digits:
        if (is_digit(character)) {
            push_exponent_digit(static_cast<unsigned>(character - '0'));
            state_ = State::exponent_digits;
        } else if (is_sign(character) && state_ == State::exponent_letter) {
            exponent_negative_ = character == '-';
            state_ = State::exponent_sign;
        } else {
            state_ = State::bad;
        }
        break;
    case State::bad:
        break;
    }
}

void NumberText::push_digit(unsigned digit) {
    any_digit_ = true;
    const bool kept = digit_count_ < kept_digits && (digit != 0 || digit_count_ != 0);
    const bool is_decimal = state_ == State::point;
    if (kept)
        digits_[digit_count_++] = static_cast<char>('0' + digit);
    else if (digit_count_ != 0 && digit != 0)
        more_digits_ = true;
    // A kept decimal, or a zero before the first digit kept, moves the point; so does a dropped
    // digit before the point.
    if (is_decimal && (kept || digit_count_ == 0))
        scale_ = std::max(scale_ - 1, -exponent_limit);
    else if (!is_decimal && !kept && digit_count_ != 0)
        scale_ = std::min(scale_ + 1, exponent_limit);
}

void NumberText::push_exponent_digit(unsigned digit) {
    exponent_ = std::min(exponent_ * 10 + static_cast<std::int64_t>(digit), exponent_limit / 16);
}

std::optional<std::int32_t> NumberText::integer() const {
    if (state_ != State::digits || digit_count_ > 10 || scale_ != 0)
        return std::nullopt;
    std::int64_t value = 0;
    for (std::size_t i = 0; i < digit_count_; ++i)
        value = value * 10 + (digits_[i] - '0');
    if (negative_)
        value = -value;
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return static_cast<std::int32_t>(value);
}

std::optional<float> NumberText::real(std::size_t implied_decimals) const {
    switch (state_) {
    case State::digits:
        return round(scale_ - static_cast<std::int64_t>(implied_decimals));
    case State::point:
        if (!any_digit_)
            return std::nullopt;
        return round(scale_);
    case State::exponent_digits:
        return round(scale_ + (exponent_negative_ ? -exponent_ : exponent_));
    case State::start:
    case State::sign:
    case State::exponent_letter:
    case State::exponent_sign:
    case State::bad:
        break;
    }
    return std::nullopt;
}

std::optional<float> NumberText::round(std::int64_t exponent) const {
    const float zero = negative_ ? -0.0F : 0.0F;
    if (digit_count_ == 0)
        return zero;
    // Power of ten of the first digit: single precision ends below 1e39 and, rounding included,
    // above 1e-46.
    const std::int64_t magnitude = exponent + static_cast<std::int64_t>(digit_count_) - 1;
    if (magnitude > 38)
        return std::nullopt;
    if (magnitude < -46)
        return zero;

    std::array<char, kept_digits + 16> text{};
    char *end = std::copy_n(digits_.data(), digit_count_, text.data());
    if (more_digits_) {
        *end++ = '1';
        --exponent;
    }
    *end++ = 'e';
    end = std::to_chars(end, text.data() + text.size(), exponent).ptr;
    float value = 0;
    if (std::from_chars(text.data(), end, value).ec != std::errc{}) {
        if (magnitude > 0)
            return std::nullopt;
        return zero;
    }
    return negative_ ? -value : value;
}

std::optional<float> plain_real(const char *&first, const char *last) {
    static constexpr std::array<double, 16> powers_of_ten = {
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char *position = first;
    const bool negative = position != last && *position == '-';
    if (position != last && is_sign(*position))
        ++position;
    std::uint64_t digits = 0;
    const char *const start = position;
    while (position != last && is_digit(*position))
        digits = digits * 10 + static_cast<std::uint64_t>(*position++ - '0');
    std::ptrdiff_t digit_count = position - start;
    std::ptrdiff_t decimals = 0;
    if (position != last && *position == '.') {
        const char *const point = position++;
        while (position != last && is_digit(*position))
            digits = digits * 10 + static_cast<std::uint64_t>(*position++ - '0');
        decimals = position - point - 1;
        digit_count += decimals;
    }
    // Up to 15 digits and the power of ten are exact in double precision, so the quotient is
    // rounded once. It may round a second time on the way to single precision only from the exact
    // middle between two numbers.
    if (digit_count == 0 || digit_count > 15)
        return std::nullopt;
    const double value =
        static_cast<double>(digits) / powers_of_ten[static_cast<std::size_t>(decimals)];
    constexpr std::uint64_t below_single_precision = (std::uint64_t{1} << 29) - 1;
    if ((std::bit_cast<std::uint64_t>(value) & below_single_precision) == std::uint64_t{1} << 28)
        return std::nullopt;
    first = position;
    return static_cast<float>(negative ? -value : value);
}

std::optional<std::int32_t> plain_integer(const char *&first, const char *last) {
    const char *position = first;
    const bool negative = position != last && *position == '-';
    if (position != last && is_sign(*position))
        ++position;
    std::int32_t value = 0;
    const char *const start = position;
    while (position != last && is_digit(*position) && position - start < 9)
        value = value * 10 + (*position++ - '0');
    if (position == start || (position != last && is_digit(*position)))
        return std::nullopt;
    first = position;
    return negative ? -value : value;
}

namespace {

NumberText number_of(std::string_view field) {
    NumberText number;
    for (const char character : field)
        if (character != ' ')
            number.push(character);
    return number;
}

std::string_view without_blanks_around(std::string_view field) {
    const std::size_t first = field.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return field.substr(first, field.find_last_not_of(' ') - first + 1);
}

} // namespace

std::optional<std::int32_t> integer_field(std::string_view field) {
    const std::string_view text = without_blanks_around(field);
    if (text.empty())
        return 0;
    const char *first = text.data();
    const char *const last = first + text.size();
    const std::optional<std::int32_t> plain = plain_integer(first, last);
    if (plain && first == last)
        return plain;
    return number_of(text).integer();
}

std::optional<float> real_field(std::string_view field, std::size_t implied_decimals) {
    const std::string_view text = without_blanks_around(field);
    if (text.empty())
        return 0.0F;
    if (text.find('.') != std::string_view::npos) {
        const char *first = text.data();
        const char *const last = first + text.size();
        const std::optional<float> plain = plain_real(first, last);
        if (plain && first == last)
            return plain;
    }
    return number_of(text).real(implied_decimals);
}

} // namespace kova_import
