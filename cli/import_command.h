#pragma once

#include "cli/options.h"
#include "cli/utility_library.h"

namespace kova_command {

/// Runs one import and shows what came of it. Gives the exit status.
[[nodiscard]] int run_import_command(const ImportOptions &options, const UtilityLibrary &library);

} // namespace kova_command
