#include "cli/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kova_command {

namespace {

struct Character {
    char32_t value = 0;
    std::size_t size = 1;
};

constexpr unsigned char byte_at(std::string_view text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

/// Windows-1252 for 0x80 .. 0x9F; the five codes without a character stand for themselves.
constexpr std::array<char32_t, 32> windows_1252 = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

constexpr char32_t single_byte(unsigned char byte, Origin origin) {
    constexpr unsigned char degree_byte = 0xF8;
    constexpr char32_t degree_sign = 0xB0;
    if (origin == Origin::utility && byte == degree_byte)
        return degree_sign;
    return byte >= 0x80 && byte < 0xA0 ? windows_1252[byte - 0x80U] : byte;
}

/// Bytes of the UTF-8 character that `lead` begins; 0 when it begins none.
constexpr std::size_t sequence_size(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

constexpr bool is_continuation(unsigned char byte) { return (byte & 0xC0U) == 0x80U; }

/// The character at `offset`, as UTF-8 if there is a whole one, else of one byte.
Character character_at(std::string_view text, std::size_t offset, Origin origin) {
    const unsigned char lead = byte_at(text, offset);
    const Character one{single_byte(lead, origin), 1};
    const std::size_t size = sequence_size(lead);
    if (size < 2 || offset + size > text.size())
        return one;
    constexpr std::array<unsigned, 5> lead_bits = {0, 0, 0x1F, 0x0F, 0x07};
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    char32_t value = lead & lead_bits[size];
    for (std::size_t i = 1; i < size; ++i) {
        const unsigned char byte = byte_at(text, offset + i);
        if (!is_continuation(byte))
            return one;
        value = value << 6U | (byte & 0x3FU);
    }
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < smallest[size] || value > 0x10FFFF || surrogate)
        return one;
    return {value, size};
}

void append_utf8(std::string &target, char32_t value) {
    const auto put = [&target](char32_t byte) { target += static_cast<char>(byte); };
    const auto put_rest = [&put, value](unsigned shift) {
        put(0x80U | ((value >> shift) & 0x3FU));
    };
    if (value < 0x80) {
        put(value);
    } else if (value < 0x800) {
        put(0xC0U | value >> 6U);
        put_rest(0);
    } else if (value < 0x10000) {
        put(0xE0U | value >> 12U);
        put_rest(6);
        put_rest(0);
    } else {
        put(0xF0U | value >> 18U);
        put_rest(12);
        put_rest(6);
        put_rest(0);
    }
}

struct Range {
    char32_t first;
    char32_t last;
};

template <std::size_t n>
bool is_in(const std::array<Range, n> &ranges, char32_t value) {
    return std::any_of(ranges.begin(), ranges.end(), [value](const Range &range) {
        return value >= range.first && value <= range.last;
    });
}

/// Not seen themselves, but able to make a line look like another one: what Unicode has for
/// programs to ignore, and what changes the direction of writing.
constexpr std::array<Range, 16> invisible = {{{0x00AD, 0x00AD},
                                              {0x034F, 0x034F},
                                              {0x061C, 0x061C},
                                              {0x115F, 0x1160},
                                              {0x17B4, 0x17B5},
                                              {0x180B, 0x180F},
                                              {0x200B, 0x200F},
                                              {0x2028, 0x202E},
                                              {0x2060, 0x206F},
                                              {0x3164, 0x3164},
                                              {0xFEFF, 0xFEFF},
                                              {0xFFA0, 0xFFA0},
                                              {0xFFF0, 0xFFFB},
                                              {0x1BCA0, 0x1BCA3},
                                              {0x1D173, 0x1D17A},
                                              {0xE0000, 0xE0FFF}}};
/// Are no characters at all, and never will be.
bool is_noncharacter(char32_t value) {
    return (value >= 0xFDD0 && value <= 0xFDEF) || (value & 0xFFFEU) == 0xFFFEU;
}
/// Stand on the character before them.
constexpr std::array<Range, 8> combining = {{{0x0300, 0x036F},
                                             {0x0483, 0x0489},
                                             {0x0591, 0x05BD},
                                             {0x064B, 0x065F},
                                             {0x1AB0, 0x1AFF},
                                             {0x1DC0, 0x1DFF},
                                             {0x20D0, 0x20FF},
                                             {0xFE00, 0xFE2F}}};
constexpr std::array<Range, 10> wide = {{{0x1100, 0x115F},
                                         {0x2E80, 0x303E},
                                         {0x3041, 0xA4CF},
                                         {0xA960, 0xA97F},
                                         {0xAC00, 0xD7A3},
                                         {0xF900, 0xFAFF},
                                         {0xFE30, 0xFE6F},
                                         {0xFF00, 0xFF60},
                                         {0x1F300, 0x1FAFF},
                                         {0x20000, 0x3FFFD}}};

bool is_control(char32_t value) { return value < 0x20 || (value >= 0x7F && value < 0xA0); }

void append_hexadecimal(std::string &target, char32_t value, unsigned digits) {
    for (unsigned i = digits; i-- > 0;)
        target += "0123456789abcdef"[(value >> (4U * i)) & 0xFU];
}

std::string escape_of(char32_t value) {
    if (value == '\t')
        return "\\t";
    std::string escape = value < 0x100 ? "\\x" : value < 0x10000 ? "\\u" : "\\U";
    append_hexadecimal(escape, value, value < 0x100 ? 2 : value < 0x10000 ? 4 : 8);
    return escape;
}

Glyph glyph_of(const Character &character, std::size_t offset) {
    Glyph glyph{offset, character.size, {}, 1, character.value < 0x10000 ? 1U : 2U};
    if (is_hidden(character.value)) {
        glyph.shown = escape_of(character.value);
        glyph.cells = glyph.shown.size();
        return glyph;
    }
    append_utf8(glyph.shown, character.value);
    if (is_in(combining, character.value))
        glyph.cells = 0;
    else if (is_in(wide, character.value))
        glyph.cells = 2;
    return glyph;
}

/// Calls `take(character, offset)` for each character.
template <class Take>
void for_each_character(std::string_view bytes, Origin origin, Take take) {
    for (std::size_t offset = 0; offset < bytes.size();) {
        const Character character = character_at(bytes, offset, origin);
        take(character, offset);
        offset += character.size;
    }
}

bool is_unreserved(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           std::string_view("-._~/").find(character) != std::string_view::npos;
}

} // namespace

bool is_hidden(char32_t character) {
    return is_control(character) || is_in(invisible, character) || is_noncharacter(character);
}

std::string with_json_escapes(const std::string &json) {
    // Most documents have nothing to escape.
    if (std::all_of(json.begin(), json.end(), [](char character) {
            return (character >= ' ' && character <= '~') || character == '\n';
        }))
        return json;
    std::string text;
    for_each_character(json, Origin::file, [&](const Character &character, std::size_t offset) {
        if (!is_hidden(character.value) || json[offset] == '\n') {
            text.append(json, offset, character.size);
            return;
        }
        char32_t unit = character.value;
        if (unit >= 0x10000) { // two halves
            text += "\\u";
            append_hexadecimal(text, 0xD800U + ((unit - 0x10000U) >> 10U), 4);
            unit = 0xDC00U + ((unit - 0x10000U) & 0x3FFU);
        }
        text += "\\u";
        append_hexadecimal(text, unit, 4);
    });
    return text;
}

std::vector<Glyph> glyphs_of(std::string_view bytes, Origin origin) {
    std::vector<Glyph> glyphs;
    glyphs.reserve(bytes.size());
    for_each_character(bytes, origin, [&](const Character &character, std::size_t offset) {
        glyphs.push_back(glyph_of(character, offset));
    });
    return glyphs;
}

std::string printable(std::string_view bytes, Origin origin) {
    std::string shown;
    for_each_character(bytes, origin, [&](const Character &character, std::size_t offset) {
        shown += glyph_of(character, offset).shown;
    });
    return shown;
}

std::string to_utf8(std::string_view bytes, Origin origin) {
    std::string text;
    text.reserve(bytes.size());
    for_each_character(bytes, origin, [&](const Character &character, std::size_t) {
        append_utf8(text, character.value);
    });
    return text;
}

std::string_view without_cut_character(std::string_view bytes) {
    constexpr std::size_t longest = 4;
    for (std::size_t back = 1; back < longest && back <= bytes.size(); ++back) {
        const unsigned char byte = byte_at(bytes, bytes.size() - back);
        if (is_continuation(byte))
            continue;
        return sequence_size(byte) > back ? bytes.substr(0, bytes.size() - back) : bytes;
    }
    return bytes;
}

std::string uri_of_path(std::string_view path, PathStyle style) {
    std::string rest(path);
    std::string uri;
    if (style == PathStyle::windows) {
        std::replace(rest.begin(), rest.end(), '\\', '/');
        if (rest.starts_with("//")) { // the name of a server follows
            uri = "file:";
        } else if (rest.size() > 2 && rest[1] == ':' && rest[2] == '/') {
            uri = "file:///" + rest.substr(0, 2);
            rest.erase(0, 2);
        }
    } else if (rest.starts_with('/')) {
        uri = "file://";
    }
    for (const char character : rest) {
        if (is_unreserved(character)) {
            uri += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        uri += '%';
        uri += "0123456789ABCDEF"[byte >> 4U];
        uri += "0123456789ABCDEF"[byte & 0xFU];
    }
    return uri;
}

std::string counted(std::int64_t count, std::string_view singular, std::string_view plural) {
    return std::to_string(count) + ' ' + std::string(count == 1 ? singular : plural);
}

std::string decimal(float number) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

std::string enumerated(const std::vector<std::string> &items) {
    std::string text;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0)
            text += i + 1 == items.size() ? " and " : ", ";
        text += items[i];
    }
    return text;
}

} // namespace kova_command
