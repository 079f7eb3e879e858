#pragma once

// The sections of the current format, version 8: each reads its section whole and, if that worked,
// sends it.

#include "control/import_module.h"

namespace kova_import::current {

void modelparam_v2(ImportModule &module);
void segments_v2(ImportModule &module);

} // namespace kova_import::current
