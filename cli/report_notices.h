#pragma once

#include "cli/import_outcome.h"

#include <cstddef>
#include <string>

namespace kova_command {

/// A page shows so many notices; of a file with more it tells how many there are.
inline constexpr std::size_t most_reported_notices = 5000;

/// Everything that went wrong or not quite as the file has it, as a part of the report page: errors
/// first, each group as on the terminal, with the places of the repeats.
[[nodiscard]] std::string notices_html(const ImportOutcome &outcome);

} // namespace kova_command
