#pragma once

// A single-precision number as `printf("%.9g")` writes it, by integer arithmetic. The command log
// of a large import has tens of millions of these.

#include <bit>
#include <cstdint>

namespace kova_host {

/// Whether `write_plain_real` knows the number: one of a size from 2^-29 up to 10^9.
[[nodiscard]] constexpr bool is_plain_real(float value) {
    constexpr std::uint32_t smallest = std::uint32_t{127 - 29} << 23U;
    constexpr auto too_large = std::bit_cast<std::uint32_t>(1e9F);
    const std::uint32_t size = std::bit_cast<std::uint32_t>(value) & 0x7FFF'FFFFU;
    return size - smallest < too_large - smallest;
}

/// Bytes from `first` on that `write_plain_real` and `write_small_integer` may write to, in part
/// behind the end that they give.
inline constexpr int plain_number_room = 32;

/// Writes a number that `is_plain_real`; gives the end.
char *write_plain_real(char *first, float value);

/// Writes an integer as `printf("%d")` does; gives the end.
char *write_small_integer(char *first, std::int32_t value);

} // namespace kova_host
