#pragma once

#include "cli/import_outcome.h"

#include <cstddef>
#include <string>

namespace kova_command {

/// A page shows so many systems; of a model with more it tells how many there are.
inline constexpr std::size_t most_reported_systems = 1000;

/// One import as a page for people: HTML with its style sheet, without scripts and without anything
/// from elsewhere. What comes from the file is text and nothing else.
[[nodiscard]] std::string report_page(const ImportOutcome &outcome);

} // namespace kova_command
