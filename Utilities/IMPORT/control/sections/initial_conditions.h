#pragma once

// Initial conditions: the concentrations of each system in each segment when a simulation starts.

#include "control/chunked_list.h"
#include "control/import_module.h"

#include <cstdint>

namespace kova_import {

/// Of a system in a segment.
struct InitialConcentration {
    float concentration = 0;
    float dissolved_fraction = 0; ///< 0 .. 1
};

/// What belongs to a system as a whole.
struct InitialSystem {
    std::int32_t flow_field = 0;
    float density = 0;
    float maximum_concentration = 0;
};

/// The concentrations of all systems lie one behind the other, those of a system by segment. The
/// systems stand in the order in which the host numbers them.
struct InitialConditionTable {
    /// False for systems that are only checked.
    bool is_kept = true;
    ChunkedList<InitialSystem> systems;
    ChunkedList<InitialConcentration> concentrations;

    [[nodiscard]] bool holds_data() const { return systems.size() > 0; }
};

/// Reads the caption of a system.
void read_system_caption(RecordReader &reader);

/// Reads the records of a system behind its caption, and adds them to the table as those of the
/// next system. Segments that no record names have concentrations of 0.
void read_initial_conditions_of_system(ImportModule &module, std::int32_t system,
                                       std::int32_t segment_count, InitialConditionTable &table);

/// Sends the line of the report.
void send_initial_condition_notice();

/// Sends the concentrations of a system in segments 1 .. `segment_count`; those that `rows` does
/// not hold any more are 0.
void send_initial_concentrations(std::int32_t system, std::int32_t segment_count,
                                 RowWalk<InitialConcentration> &rows, bool is_in_table);

} // namespace kova_import
