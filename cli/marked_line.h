#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kova_command {

/// A line of a file and, for the line below it, a mark that stands under a part of it.
struct MarkedLine {
    std::string text;
    std::string mark;
};

/// Where the marked part lies.
struct MarkedPart {
    std::size_t offset = 0;  ///< of its first byte in the line; behind the line means its end
    std::size_t width = 0;   ///< bytes; 0 marks a place
    bool cut_before = false; ///< the line goes on before the text that is at hand
};

/// Shows `line` (bytes, without a line end) in at most `cells` columns of a terminal, shortened
/// around the marked part if it has to be.
[[nodiscard]] MarkedLine mark_part(std::string_view line, MarkedPart part, std::size_t cells);

} // namespace kova_command
