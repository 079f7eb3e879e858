#pragma once

#include "control/section.h"

namespace kova_import {

// What the exported routines do, on the one module of the library. No exception leaves any of
// these.

void run_import_of_file() noexcept;
void run_legacy_section(SectionNumber which) noexcept;
void run_current_section(SectionNumber which) noexcept;

/// Sends an information page.
void show(void (*send_page)()) noexcept;

} // namespace kova_import
