#pragma once

#include <cstdint>

namespace kova_import {

// What the exported routines do, on the one module of the library. No exception leaves any of
// these.

void run_import_of_file() noexcept;
void run_legacy_section(std::int32_t number) noexcept;
void run_current_section(std::int32_t number) noexcept;

/// Sends an information page.
void show(void (*send_page)()) noexcept;

} // namespace kova_import
