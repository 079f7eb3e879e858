#pragma once

#include "cli/options.h"
#include "cli/utility_library.h"

namespace kova_command {

/// Imports each file into nothing and tells whether it would come across whole. Gives the exit
/// status.
[[nodiscard]] int run_check_command(const CheckOptions &options, const UtilityLibrary &library);

} // namespace kova_command
