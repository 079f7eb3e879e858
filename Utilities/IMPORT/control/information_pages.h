#pragma once

namespace kova_import {

/// Empties the information pane and shows the version page.
void send_intro();

/// Adds the version page to the information pane.
void send_version_page();

} // namespace kova_import
