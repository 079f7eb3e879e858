#pragma once

#include "cli/information_pane.h"

#include <string>
#include <vector>

namespace kova_command {

/// The information pane as a part of a page: the tags on the list in `pane_tag.h`, as HTML of today
/// and balanced; everything else as text. Texts from the file are never anything but text. Expects
/// the style sheet of the report page.
[[nodiscard]] std::string pane_html(const std::vector<PaneFragment> &fragments);

} // namespace kova_command
