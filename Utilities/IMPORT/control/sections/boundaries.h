#pragma once

// Boundary conditions: the concentrations of each system at the edge of the network.

#include "control/fixed_text.h"
#include "control/host_link.h"
#include "control/import_module.h"
#include "control/progress.h"
#include "control/sections/system_series.h"

#include <cstdint>

namespace kova_import {

/// Reads the boundary count, factors and boundaries of a system behind its heading, and adds them
/// to the table as those of the next system.
void read_boundaries_of_system(ImportModule &module, std::int32_t system, SystemSeriesTable &table);

/// Reads the systems of the section, with progress. Progress is counted against `progress_total`.
/// `read_system(number)` reads a system behind its heading, which `hear_heading` gets before.
template <class ReadSystem>
void read_boundary_systems(ImportModule &module, std::int32_t system_count,
                           std::int32_t progress_total, void (*hear_heading)(const FixedText<80> &),
                           ReadSystem read_system) {
    RecordReader &reader = module.reader;
    if (reader.ok())
        send<"PPROGRESS">(std::int32_t{0});
    reader.for_each_record(system_count, [&](std::int32_t system) {
        send<"PPROGRESS">(coarse_percentage(system, progress_total));
        FixedText<80> heading;
        reader.fixed<"(A80)">("heading of the boundaries", field("heading", heading));
        if (!reader.ok())
            return;
        hear_heading(heading);
        read_system(system);
    });
}

/// Sends the boundaries of the systems that the host numbers 1 .. `system_count`.
/// `before_system(number)` is called before the first command of each.
void send_boundaries(SendBuffers &buffers, const SystemSeriesTable &table,
                     std::int32_t system_count, void (*before_system)(std::int32_t));

} // namespace kova_import
