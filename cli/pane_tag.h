#pragma once

// The tags that the information pane may have, and nothing else.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kova_command {

enum class PaneElement : std::uint8_t {
    body,
    center,
    table,
    tbody,
    tr,
    td,
    th,
    list, ///< has no tag in the pane: list items stand alone there
    li,
    span,
    big,
    b,
    br,
};

/// The colours that the pane may use; a page chooses shades that can be read on it.
enum class PaneInk : std::uint8_t { plain, black, white, blue, red, green };
enum class PaneGround : std::uint8_t { plain, blue };

/// A tag with what is kept of its attributes.
struct PaneTag {
    PaneElement element = PaneElement::span;
    bool closes = false;
    std::size_t size = 0; ///< characters of the tag
    std::optional<PaneInk> ink;
    std::optional<PaneGround> ground;
    std::string style; ///< other declarations, as CSS
    int column_span = 1;
    int row_span = 1;
};

/// Stands between two fragments of the pane: it separates words of a tag as a blank does.
inline constexpr char fragment_boundary = '\0';

/// The tag at the start of `html`. None when anything of it is not on the list: another element,
/// another attribute, another property of a style, or a value that is not one of the known ones.
[[nodiscard]] std::optional<PaneTag> parse_pane_tag(std::string_view html);

} // namespace kova_command
