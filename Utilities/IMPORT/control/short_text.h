#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace kova_import {

/// Up to `n` characters and a NUL, without memory of its own: texts of reports that must be
/// possible when memory is short.
template <std::size_t n>
class ShortText {
  public:
    constexpr ShortText() = default;

    constexpr void assign(std::string_view text) {
        length_ = std::min(n, text.size());
        std::copy_n(text.data(), length_, characters_.data());
        characters_[length_] = '\0';
    }

    [[nodiscard]] constexpr std::string_view view() const { return {characters_.data(), length_}; }
    [[nodiscard]] constexpr const char *c_str() const { return characters_.data(); }

  private:
    std::array<char, n + 1> characters_{};
    std::size_t length_ = 0;
};

} // namespace kova_import
