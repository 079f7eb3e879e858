#pragma once

#include "control/import_module.h"
#include "control/section.h"

#include <span>

namespace kova_import {

/// One import from the first question to the completion note: asks the host's user for the options
/// and the file, and hands the file to the family that its version calls for, which is the last one
/// whose first version it reaches. `families` stand in the order of their first versions. A call
/// from inside a host command is refused.
void run_import(ImportModule &module, std::span<const Family> families) noexcept;

} // namespace kova_import
