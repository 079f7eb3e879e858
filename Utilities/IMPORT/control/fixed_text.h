#pragma once

// Text as the host and the file know it: fields of a fixed width, blank-padded.

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace kova_import {

/// `text` without its trailing blanks. Only blanks count: a trailing NUL is text.
[[nodiscard]] constexpr std::string_view without_trailing_blanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// `text` up to its first NUL, without trailing blanks: what a person would call its content.
[[nodiscard]] constexpr std::string_view content_of(std::string_view text) {
    return without_trailing_blanks(text.substr(0, text.find('\0')));
}

/// One NUL, for joining.
inline constexpr std::string_view nul{"\0", 1};

/// A text field of `n` characters. Shorter texts are padded with blanks, longer ones are cut.
template <std::size_t n>
class FixedText {
  public:
    static constexpr std::size_t width = n;

    constexpr FixedText() { fill(' '); }
    constexpr explicit FixedText(std::string_view text) { assign(text); }

    constexpr void fill(char character) { characters_.fill(character); }

    constexpr void assign(std::string_view text) { assign({text}); }

    /// The texts one after the other, then blanks; cut at the width.
    constexpr void assign(std::initializer_list<std::string_view> texts) {
        std::array<char, n> joined{};
        std::size_t length = 0;
        for (std::string_view text : texts)
            for (std::size_t i = 0; i < text.size() && length < n; ++i)
                joined[length++] = text[i];
        std::fill(joined.begin() + static_cast<std::ptrdiff_t>(length), joined.end(), ' ');
        characters_ = joined;
    }

    /// All `n` characters.
    [[nodiscard]] constexpr std::string_view view() const { return {characters_.data(), n}; }
    [[nodiscard]] constexpr std::string_view trimmed() const {
        return without_trailing_blanks(view());
    }

    [[nodiscard]] constexpr char *data() { return characters_.data(); }
    [[nodiscard]] constexpr const char *data() const { return characters_.data(); }
    [[nodiscard]] constexpr char &operator[](std::size_t i) { return characters_[i]; }
    [[nodiscard]] constexpr char operator[](std::size_t i) const { return characters_[i]; }

  private:
    std::array<char, n> characters_;
};

/// A text field with one NUL behind it: a third kind of text beside literals and fields, so that
/// nobody counts by hand.
template <std::size_t n>
struct TerminatedText {
    FixedText<n> text;
};

template <std::size_t n>
TerminatedText(FixedText<n>) -> TerminatedText<n>;

} // namespace kova_import
