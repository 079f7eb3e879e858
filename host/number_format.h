#pragma once

// Numbers as text, the same on every system, in every locale and rounding mode.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kova_host {

/// Room for any number that the functions below write.
inline constexpr std::size_t number_text_size = 64;

/// Writes `printf("%d")` to `first`, which has room for `number_text_size`; gives the end.
char *write_integer(char *first, std::int64_t value);

/// Writes `printf("%.9g")` to `first`, which has room for `number_text_size`; gives the end.
/// Not-a-number is `nan`, without a sign.
char *write_real(char *first, float value);

/// Formats with a printf format of literal text, `%%` and one `%d` or `%i`, which may have the
/// flags `-+ 0`, a width and a precision below 1000. None when the format is another. `format` is
/// without its NUL.
std::optional<std::string> format_integer(std::string_view format, std::int32_t value);

/// Formats with the format `%f` or `%F`: six decimals, `inf`, `nan` without a sign. None when the
/// format is another.
std::optional<std::string> format_real(std::string_view format, float value);

} // namespace kova_host
