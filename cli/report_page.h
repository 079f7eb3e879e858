#pragma once

#include "cli/import_outcome.h"

#include <string>

namespace kova_command {

/// One import as a page for people: HTML with its style sheet, without scripts and without anything
/// from elsewhere. What comes from the file is text and nothing else.
[[nodiscard]] std::string report_page(const ImportOutcome &outcome);

} // namespace kova_command
