#include "host/real_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace kova_host {

namespace {

// A number is m * 2^e with 2^23 <= m < 2^24. With k the power of ten of its first digit, its nine
// digits are m * 2^e * 10^(8 - k), rounded. For k from -9 to 8 the product of m and 5^(8 - k) fits
// into 64 bits, and what is left is a shift to the right: nothing is lost before the rounding.

constexpr std::uint32_t mantissa_bits = 23;
constexpr std::uint32_t exponent_bias = 127;
constexpr std::uint32_t first_exponent = exponent_bias - 29; ///< of 2^-29
constexpr std::uint32_t last_exponent = exponent_bias + 29;  ///< of 2^29, with 10^9 in its range
constexpr std::uint64_t smallest_mantissa = std::uint64_t{1} << mantissa_bits;
constexpr int digits_behind_first = 8;
constexpr std::uint64_t first_with_nine_digits = 100'000'000;
constexpr std::uint64_t first_with_ten_digits = 1'000'000'000;

constexpr std::uint64_t power(std::uint64_t base, int exponent) {
    std::uint64_t result = 1;
    for (; exponent > 0; --exponent)
        result *= base;
    return result;
}

/// How the nine digits of numbers with one first power of ten come out of their mantissa.
struct Scale {
    std::uint64_t factor = 0;
    std::uint32_t shift = 1;
    std::int32_t first_power = 0;
};

/// The numbers of one binary exponent. At most one power of ten lies among them.
struct Binade {
    std::uint64_t power_of_ten = 0; ///< the first mantissa at or above it
    std::array<Scale, 2> scales;    ///< below it, and from it on
};

constexpr Scale scale_of(int exponent, int first_power) {
    const int decimals = digits_behind_first - first_power;
    const int shift = -(exponent + decimals);
    if (decimals < 0) // ten digits; not one of the numbers that are written
        return {};
    Scale scale{power(5, decimals), 1, first_power};
    if (shift >= 1)
        scale.shift = static_cast<std::uint32_t>(shift);
    else
        scale.factor <<= static_cast<unsigned>(1 - shift);
    return scale;
}

/// The smallest m with m * 2^exponent >= 10^decimal.
constexpr std::uint64_t first_mantissa_from(int decimal, int exponent) {
    if (decimal < 0) {
        if (exponent >= 0)
            return 1;
        const std::uint64_t divisor = power(10, -decimal);
        return ((std::uint64_t{1} << static_cast<unsigned>(-exponent)) + divisor - 1) / divisor;
    }
    if (exponent <= 0)
        return power(10, decimal) << static_cast<unsigned>(-exponent);
    const std::uint64_t divisor = std::uint64_t{1} << static_cast<unsigned>(exponent);
    return (power(10, decimal) + divisor - 1) / divisor;
}

constexpr Binade binade_of(std::uint32_t biased) {
    const int exponent = static_cast<int>(biased) - static_cast<int>(exponent_bias + mantissa_bits);
    int first_power = -digits_behind_first - 1;
    while (first_mantissa_from(first_power + 1, exponent) <= smallest_mantissa)
        ++first_power;
    return {first_mantissa_from(first_power + 1, exponent),
            {scale_of(exponent, first_power), scale_of(exponent, first_power + 1)}};
}

constexpr auto binades = [] {
    std::array<Binade, last_exponent - first_exponent + 1> list{};
    for (std::uint32_t i = 0; i < list.size(); ++i)
        list[i] = binade_of(first_exponent + i);
    return list;
}();

/// The nine digits, rounded; what lies in the middle goes to the even one.
constexpr std::uint64_t nine_digits(std::uint64_t mantissa, const Scale &scale) {
    const std::uint64_t product = mantissa * scale.factor;
    const std::uint64_t half = std::uint64_t{1} << (scale.shift - 1);
    return (product + half - 1 + ((product >> scale.shift) & 1U)) >> scale.shift;
}

/// Whether the largest number below each power of ten and the smallest above have nine digits of
/// their own, so that no rounding makes a power of ten of a number below it.
constexpr bool no_rounding_reaches_a_power_of_ten() {
    for (const Binade &binade : binades) {
        const std::uint64_t end = 2 * smallest_mantissa;
        const std::uint64_t middle = std::min(binade.power_of_ten, end);
        if (nine_digits(smallest_mantissa, binade.scales[0]) < first_with_nine_digits ||
            nine_digits(middle - 1, binade.scales[0]) >= first_with_ten_digits)
            return false;
        if (middle == end || binade.scales[1].factor == 0)
            continue;
        if (nine_digits(middle, binade.scales[1]) < first_with_nine_digits ||
            nine_digits(end - 1, binade.scales[1]) >= first_with_ten_digits)
            return false;
    }
    return true;
}

static_assert(no_rounding_reaches_a_power_of_ten());

constexpr unsigned byte_bits = 8;
constexpr std::uint64_t zeros = 0x3030'3030'3030'3030;

/// The eight digits of a number below 10^8 as bytes 0 .. 9, the first in the lowest byte.
constexpr std::uint64_t eight_digits(std::uint32_t value) {
    // Halves of four digits in 32 bits each, then pairs in 16, then digits in 8; the divisions are
    // by multiplication, exact for numbers of so many digits.
    const std::uint32_t upper = value / 10'000;
    const std::uint64_t halves = upper | std::uint64_t{value - upper * 10'000} << 32U;
    const std::uint64_t hundreds = ((halves * 10'486) >> 20U) & 0x0000'007F'0000'007F;
    const std::uint64_t pairs = hundreds | (halves - hundreds * 100) << 16U;
    const std::uint64_t tens = ((pairs * 103) >> 10U) & 0x000F'000F'000F'000F;
    return tens | (pairs - tens * 10) << 8U;
}

/// Puts eight characters, the first in the lowest byte.
void put_eight(char *target, std::uint64_t characters) {
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(target, &characters, sizeof characters);
    } else {
        for (unsigned i = 0; i < sizeof characters; ++i)
            target[i] = static_cast<char>(characters >> (i * byte_bits) & 0xFFU);
    }
}

char *put(char *target, std::string_view text) {
    std::memcpy(target, text.data(), text.size());
    return target + text.size();
}

} // namespace

char *write_plain_real(char *first, float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    *first = '-';
    first += bits >> 31U;
    const std::uint64_t mantissa = (bits & (smallest_mantissa - 1)) | smallest_mantissa;
    const Binade &binade = binades[(bits >> mantissa_bits & 0xFFU) - first_exponent];
    const Scale &scale = binade.scales[mantissa >= binade.power_of_ten ? 1 : 0];
    const auto digits = static_cast<std::uint32_t>(nine_digits(mantissa, scale));
    const std::uint32_t leading = digits / 100'000'000;
    const std::uint64_t others = eight_digits(digits - leading * 100'000'000);
    const auto lead = static_cast<char>('0' + leading);
    // Zeros at the end of the nine digits, the first of which is none.
    const int trailing = std::countl_zero(others) / static_cast<int>(byte_bits);
    const std::uint64_t characters = others | zeros;
    const int power = scale.first_power;

    // Whatever lies behind the end is written over by what comes next.
    if (power >= 0) { // "1234.5": the digits twice, the second time behind the point
        *first = lead;
        put_eight(first + 1, characters);
        char *const point = first + 1 + power;
        if (trailing >= digits_behind_first - power)
            return point;
        *point = '.';
        put_eight(point + 1, characters >> (static_cast<unsigned>(power) * byte_bits));
        return first + 2 + digits_behind_first - trailing;
    }
    constexpr int smallest_without_exponent = -4;
    if (power >= smallest_without_exponent) { // "0.0012"
        put(first, "0.000");
        char *const leading_place = first + 1 - power;
        *leading_place = lead;
        put_eight(leading_place + 1, characters);
        return leading_place + 1 + digits_behind_first - trailing;
    }
    *first = lead; // "1.2e-05"
    first[1] = '.';
    put_eight(first + 2, characters);
    char *const end =
        trailing == digits_behind_first ? first + 1 : first + 2 + digits_behind_first - trailing;
    *put(end, "e-0") = static_cast<char>('0' - power);
    return end + 4;
}

char *write_small_integer(char *first, std::int32_t value) {
    *first = '-';
    first += value < 0 ? 1 : 0;
    const auto wide = static_cast<std::uint32_t>(value);
    const std::uint32_t size = value < 0 ? 0 - wide : wide;
    constexpr std::uint32_t first_with_more_digits = 100'000'000;
    if (size >= first_with_more_digits)
        return std::to_chars(first, first + plain_number_room, size).ptr;
    const std::uint64_t digits = eight_digits(size);
    // The last digit stays, even a zero.
    const unsigned leading =
        static_cast<unsigned>(std::countr_zero(digits | std::uint64_t{1} << 56U)) & ~7U;
    put_eight(first, (digits | zeros) >> leading);
    return first + 8 - leading / byte_bits;
}

} // namespace kova_host
