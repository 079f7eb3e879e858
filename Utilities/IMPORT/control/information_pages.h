#pragma once

#include "control/fixed_text.h"

#include <cstddef>
#include <string_view>

namespace kova_import {

/// One line of the version page, cut or padded to its field.
template <std::size_t width>
[[nodiscard]] TerminatedText<width> page_line(std::string_view label, std::string_view value) {
    FixedText<width> line;
    line.assign({label, value});
    return {line};
}

/// Empties the information pane and shows the version page.
void send_intro();

/// Adds the version page to the information pane.
void send_version_page();

} // namespace kova_import
