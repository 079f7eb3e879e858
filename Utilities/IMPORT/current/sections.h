#pragma once

// The sections of the current format, version 8: each reads its section whole and, if that worked,
// sends it; the model parameters send their table in between. Behind the first one each starts with
// a heading that nobody needs; systems are those of the host, in its order, and need no
// translation.

#include "control/import_module.h"

namespace kova_import::current {

void modelparam_v2(ImportModule &module);
void segments_v2(ImportModule &module);
void flowpath_v2(ImportModule &module);
void flows_v2(ImportModule &module);
void exchanges_v2(ImportModule &module);
void boundary_v2(ImportModule &module);
void loads_v2(ImportModule &module);
void timefunctions_v2(ImportModule &module);
void seg_parameters_v2(ImportModule &module);
void constants_v2(ImportModule &module);
void initial_conditions_v2(ImportModule &module);

} // namespace kova_import::current
