#pragma once

// Numbers of the command log against the standard library's conversions, bit pattern by bit
// pattern.

#include "host/number_format.h"
#include "host/real_text.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

namespace host_test {

using NumberText = std::array<char, kova_host::number_text_size>;

inline std::string_view text_in(const NumberText &text, const char *end) {
    return {text.data(), static_cast<std::size_t>(end - text.data())};
}

inline std::string_view real_as_expected(NumberText &text, float value) {
    if (std::isnan(value))
        return "nan";
    return text_in(text, std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::general, 9)
                             .ptr);
}

/// What is wrong with the texts of a bit pattern, taken as a real and as an integer; empty when
/// nothing is.
inline std::string complaint_about(std::uint32_t bits) {
    NumberText written;
    NumberText wanted;
    const auto real = std::bit_cast<float>(bits);
    const std::string_view found = text_in(written, kova_host::write_real(written.data(), real));
    if (const std::string_view expected = real_as_expected(wanted, real); found != expected)
        return std::to_string(bits) + " is written as " + std::string(found) + ", " +
               std::string(expected) + " was expected";
    const auto integer = static_cast<std::int32_t>(bits);
    const std::string_view digits =
        text_in(written, kova_host::write_small_integer(written.data(), integer));
    const char *const end =
        std::to_chars(wanted.data(), wanted.data() + wanted.size(), integer).ptr;
    if (digits != text_in(wanted, end))
        return std::to_string(integer) + " is written as " + std::string(digits);
    return {};
}

} // namespace host_test
