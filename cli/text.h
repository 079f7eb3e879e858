#pragma once

// Text as bytes, as it comes from an import file or the system, made fit for people: UTF-8 stays,
// bytes that are not UTF-8 are taken as Windows-1252, and what a terminal would obey is escaped.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kova_command {

/// Who wrote a text. In the utility's own names the byte 0xF8 is the degree sign.
enum class Origin : std::uint8_t { file, utility };

/// One character of a text: the bytes that it takes there, and how a terminal shows it.
struct Glyph {
    std::size_t offset = 0; ///< of its first byte
    std::size_t size = 0;   ///< bytes
    std::string shown;      ///< UTF-8, without control characters
    std::size_t cells = 0;  ///< columns that it takes on a terminal
    std::size_t utf16_units = 0;
};

/// Whether a character is a control character or one that is not seen itself but can make a text
/// look like another one.
[[nodiscard]] bool is_hidden(char32_t character);

/// The characters of `bytes`. Control characters and those that change the direction of writing are
/// shown as escapes.
[[nodiscard]] std::vector<Glyph> glyphs_of(std::string_view bytes, Origin origin = Origin::file);

/// `bytes` on one line of a terminal: the glyphs joined.
[[nodiscard]] std::string printable(std::string_view bytes, Origin origin = Origin::file);

/// `bytes` as valid UTF-8, control characters as they are.
[[nodiscard]] std::string to_utf8(std::string_view bytes, Origin origin = Origin::file);

/// A JSON document in which such characters stand as escapes.
[[nodiscard]] std::string with_json_escapes(const std::string &json);

/// `bytes` without an incomplete UTF-8 character at its end, as a cut leaves one.
[[nodiscard]] std::string_view without_cut_character(std::string_view bytes);

/// How paths are written: on Windows with drives, and backslashes between folders.
enum class PathStyle : std::uint8_t { posix, windows };
inline constexpr PathStyle native_path_style =
    std::filesystem::path::preferred_separator == '\\' ? PathStyle::windows : PathStyle::posix;

/// A path as the reference in a URI: bytes other than letters, digits, `-._~` and `/` are
/// percent-encoded; an absolute path becomes a `file` URI.
[[nodiscard]] std::string uri_of_path(std::string_view path, PathStyle style = native_path_style);

/// "1 segment", "2 segments".
[[nodiscard]] std::string counted(std::int64_t count, std::string_view singular,
                                  std::string_view plural);

/// The shortest decimal text that is this number.
[[nodiscard]] std::string decimal(float number);

/// "a", "a and b", "a, b and c".
[[nodiscard]] std::string enumerated(const std::vector<std::string> &items);

} // namespace kova_command
