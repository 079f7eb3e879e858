#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kova_import {

/// A string literal as a template argument: keywords and record layouts are checked when compiled.
template <std::size_t n>
struct Literal {
    char characters[n]{};

    // Implicit on purpose: `send<"PNUMSEG">` converts.
    consteval Literal(const char (&text)[n]) { // NOLINT(google-explicit-constructor)
        std::copy_n(text, n, characters);
    }

    [[nodiscard]] constexpr std::string_view view() const { return {characters, n - 1}; }
};

} // namespace kova_import
