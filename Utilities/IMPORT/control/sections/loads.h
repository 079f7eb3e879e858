#pragma once

// Point loads of each system, and where the non-point-source loads come from.

#include "control/fixed_text.h"
#include "control/import_module.h"
#include "control/sections/system_series.h"

#include <cstdint>

namespace kova_import {

struct LoadTable {
    std::int32_t load_option = 0;
    FixedText<512> non_point_source_file; ///< read with an option above 0 only
    SystemSeriesTable loads;
};

/// Reads the load option and what belongs to it, and the system count, which later sections share;
/// gives the section its own copy of the latter.
[[nodiscard]] std::int32_t read_load_settings(ImportModule &module, LoadTable &table);

/// Reads the heading of a system.
void read_load_heading(RecordReader &reader);

/// Reads the load count, factors and loads of a system behind its heading, and adds them to the
/// table as those of the next system.
void read_loads_of_system(ImportModule &module, std::int32_t system, SystemSeriesTable &table);

/// Sends the settings and the loads of the systems that the host numbers 1 .. `system_count`.
void send_loads(ImportModule &module, const LoadTable &table, std::int32_t system_count);

} // namespace kova_import
