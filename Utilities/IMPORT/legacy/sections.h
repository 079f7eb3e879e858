#pragma once

// The sections of the legacy format, version 7: each reads its section whole and, if that worked,
// sends it; the model parameters send their table in between.

#include "control/import_module.h"

namespace kova_import::legacy {

void modelparam(ImportModule &module);
void segments(ImportModule &module);
void flowpath(ImportModule &module);
void flows(ImportModule &module);
void exchanges(ImportModule &module);
void boundary(ImportModule &module);
void loads(ImportModule &module);
void timefunctions(ImportModule &module);
void seg_parameters(ImportModule &module);
void constants(ImportModule &module);
void initial_conditions(ImportModule &module);

} // namespace kova_import::legacy
