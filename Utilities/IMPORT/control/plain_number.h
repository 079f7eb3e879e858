#pragma once

// The numbers that files are made of, at full speed: [sign] digits [. digits] [exponent]. Texts
// that need more than this, valid or not, are left to NumberText. The tests sweep both against each
// other.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace kova_import {

namespace plain_number {

// Powers of ten that double precision holds exactly.
inline constexpr std::array<double, 23> powers_of_ten = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr std::ptrdiff_t largest_exponent = powers_of_ten.size() - 1;

// So many digits always fit the 53 bits of double precision.
inline constexpr std::ptrdiff_t most_digits = 15;

/// The value of a digit; 10 or more for any other character.
[[nodiscard]] constexpr unsigned digit_of(char character) {
    return static_cast<unsigned>(static_cast<unsigned char>(character)) - '0';
}

/// Takes digits into `value`, which may wrap around when there are very many, and gives their end.
template <class Integer>
[[nodiscard]] const char *take_digits(const char *position, const char *last, Integer &value) {
    for (unsigned digit = 0; position != last && (digit = digit_of(*position)) < 10; ++position)
        value = value * 10 + static_cast<Integer>(digit);
    return position;
}

/// Takes a sign, if there is one. Says whether it is a minus.
[[nodiscard]] inline bool take_sign(const char *&position, const char *last) {
    if (position == last || (*position != '-' && *position != '+'))
        return false;
    return *position++ == '-';
}

/// `digits` times ten to the power of `exponent`, rounded to single precision. Both factors are
/// exact in double precision, so the result is rounded once there. A second rounding could only go
/// wrong from the exact middle between two numbers: then, and for other exponents, it is refused.
[[nodiscard]] inline bool scale(std::uint64_t digits, std::ptrdiff_t exponent, bool negative,
                                float &value) {
    if (exponent < -largest_exponent || exponent > largest_exponent)
        return false;
    // signed, since processors convert that faster
    const auto exact = static_cast<double>(static_cast<std::int64_t>(digits));
    const double product = exponent < 0 ? exact / powers_of_ten[static_cast<std::size_t>(-exponent)]
                                        : exact * powers_of_ten[static_cast<std::size_t>(exponent)];
    constexpr std::uint64_t below_single_precision = (std::uint64_t{1} << 29) - 1;
    constexpr std::uint64_t middle = std::uint64_t{1} << 28;
    if ((std::bit_cast<std::uint64_t>(product) & below_single_precision) == middle)
        return false;
    value = static_cast<float>(negative ? -product : product);
    return true;
}

} // namespace plain_number

/// Takes a plain real from `first` on; a number without point and exponent has `implied_decimals`
/// decimals. On success `first` is behind it. On failure nothing changes.
[[nodiscard]] inline bool take_plain_number(const char *&first, const char *last, float &value,
                                            std::size_t implied_decimals = 0) {
    using namespace plain_number;
    const char *position = first;
    const bool negative = take_sign(position, last);
    const char *const start = position;
    std::uint64_t digits = 0;
    position = take_digits(position, last, digits);
    std::ptrdiff_t digit_count = position - start;
    std::ptrdiff_t exponent = -static_cast<std::ptrdiff_t>(implied_decimals);
    if (position != last && *position == '.') {
        const char *const decimals = ++position;
        position = take_digits(position, last, digits);
        exponent = decimals - position;
        digit_count -= exponent;
    }
    if (digit_count == 0 || digit_count > most_digits)
        return false;
    if (position != last && (*position == 'E' || *position == 'e')) {
        if (digit_count == position - start)
            exponent = 0; // an exponent: read as written
        ++position;
        const bool down = take_sign(position, last);
        const char *const exponent_start = position;
        std::uint32_t given = 0;
        position = take_digits(position, last, given);
        if (position == exponent_start || position - exponent_start > 3)
            return false;
        exponent += down ? -static_cast<std::ptrdiff_t>(given) : static_cast<std::ptrdiff_t>(given);
    }
    if (!scale(digits, exponent, negative, value))
        return false;
    first = position;
    return true;
}

/// The same for an integer of up to nine digits.
[[nodiscard]] inline bool take_plain_number(const char *&first, const char *last,
                                            std::int32_t &value) {
    using namespace plain_number;
    const char *position = first;
    const bool negative = take_sign(position, last);
    const char *const start = position;
    std::uint32_t digits = 0;
    position = take_digits(position, last, digits);
    if (position == start || position - start > 9)
        return false;
    value = negative ? -static_cast<std::int32_t>(digits) : static_cast<std::int32_t>(digits);
    first = position;
    return true;
}

} // namespace kova_import
