#include "control/number_text.h"

#include "control/plain_number.h"

#include <algorithm>
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

namespace {

NumberText number_of(std::string_view field) {
    NumberText number;
    for (const char character : field)
        if (character != ' ')
            number.push(character);
    return number;
}

const char *behind_blanks(const char *first, const char *last) {
    while (first != last && *first == ' ')
        ++first;
    return first;
}

/// Converts a field, the long way only when it holds more than a plain number and blanks around it.
template <class T, class... Decimals>
bool convert(std::string_view field, std::optional<T> (NumberText::*long_way)(Decimals...) const,
             T &value, Decimals... implied_decimals) {
    const char *const last = field.data() + field.size();
    const char *first = behind_blanks(field.data(), last);
    T plain{};
    if (first == last || (take_plain_number(first, last, plain, implied_decimals...) &&
                          behind_blanks(first, last) == last)) {
        value = plain;
        return true;
    }
    const std::optional<T> converted = (number_of(field).*long_way)(implied_decimals...);
    if (converted)
        value = *converted;
    return converted.has_value();
}

} // namespace

bool convert_field(std::string_view field, std::int32_t &value) {
    return convert(field, &NumberText::integer, value);
}

bool convert_field(std::string_view field, std::size_t implied_decimals, float &value) {
    return convert(field, &NumberText::real, value, implied_decimals);
}

} // namespace kova_import
