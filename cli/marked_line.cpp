#include "cli/marked_line.h"

#include "cli/text.h"

#include <algorithm>
#include <vector>

namespace kova_command {

namespace {

constexpr std::string_view ellipsis = "...";

/// The glyphs from `first` up to but without `end`.
struct Window {
    std::size_t first = 0;
    std::size_t end = 0;
};

std::size_t cells_of(const std::vector<Glyph> &glyphs, Window window) {
    std::size_t cells = 0;
    for (std::size_t i = window.first; i < window.end; ++i)
        cells += glyphs[i].cells;
    return cells;
}

/// The glyphs that lie at least partly within the part; an empty window at its place when there are
/// none.
Window glyphs_of_part(const std::vector<Glyph> &glyphs, const MarkedPart &part) {
    Window window;
    while (window.first < glyphs.size() &&
           glyphs[window.first].offset + glyphs[window.first].size <= part.offset)
        ++window.first;
    window.end = window.first;
    while (window.end < glyphs.size() && glyphs[window.end].offset < part.offset + part.width)
        ++window.end;
    return window;
}

/// As much of the line as fits into `cells`: the part first, then what stands about it.
Window visible_window(const std::vector<Glyph> &glyphs, Window part, std::size_t cells) {
    Window window{part.first, part.first};
    std::size_t used = 0;
    const auto take_behind = [&](std::size_t end, std::size_t limit) {
        while (window.end < end && used + glyphs[window.end].cells <= limit)
            used += glyphs[window.end++].cells;
    };
    const auto take_before = [&](std::size_t limit) {
        while (window.first > 0 && used + glyphs[window.first - 1].cells <= limit)
            used += glyphs[--window.first].cells;
    };
    take_behind(part.end, cells);
    if (window.end == part.end) {
        take_before(used + (cells - used) / 2);
        take_behind(glyphs.size(), cells);
    }
    take_before(cells);
    return window;
}

} // namespace

MarkedLine mark_part(std::string_view line, MarkedPart part, std::size_t cells) {
    const std::vector<Glyph> glyphs = glyphs_of(line);
    const Window marked = glyphs_of_part(glyphs, part);
    const std::size_t before = part.cut_before ? ellipsis.size() : 0;
    Window shown{0, glyphs.size()};
    // A mark behind the end of the line needs a column too.
    if (cells_of(glyphs, shown) + before + 1 > cells) {
        constexpr std::size_t smallest = 8;
        const std::size_t around = 2 * ellipsis.size() + 1;
        shown =
            visible_window(glyphs, marked, std::max(smallest, cells > around ? cells - around : 0));
    }

    MarkedLine result;
    if (part.cut_before || shown.first > 0)
        result.text = ellipsis;
    const std::size_t indent = result.text.size() + cells_of(glyphs, {shown.first, marked.first});
    for (std::size_t i = shown.first; i < shown.end; ++i)
        result.text += glyphs[i].shown;
    if (shown.end < glyphs.size())
        result.text += ellipsis;

    const std::size_t width = cells_of(glyphs, {marked.first, std::min(marked.end, shown.end)});
    result.mark = std::string(indent, ' ') + '^' + std::string(width > 1 ? width - 1 : 0, '~');
    return result;
}

} // namespace kova_command
