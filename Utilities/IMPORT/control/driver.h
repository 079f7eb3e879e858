#pragma once

#include "control/import_module.h"
#include "control/section.h"

namespace kova_import {

/// One import from the first question to the completion note: asks the host's user for the options
/// and the file, and hands the file to the family that its version calls for. A call from inside a
/// host command is refused.
void run_import(ImportModule &module, const Family &legacy, const Family &current) noexcept;

} // namespace kova_import
