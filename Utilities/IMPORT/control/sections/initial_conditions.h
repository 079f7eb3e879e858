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

/// Reads what belongs to a system as a whole, behind its caption.
[[nodiscard]] InitialSystem read_initial_system(RecordReader &reader);

/// Reads the second caption of a system and its concentrations, and adds them with `values` to the
/// table as those of the next system. Segments that no record names have concentrations of 0.
void read_initial_concentrations(ImportModule &module, std::int32_t system,
                                 const InitialSystem &values, std::int32_t segment_count,
                                 InitialConditionTable &table);

/// Tells when the section has fewer segments than the host, where the others get no initial
/// conditions.
void give_fewer_segments(const ImportModule &module, std::int32_t segment_count);

/// Sends the line of the report.
void send_initial_condition_line();

/// Sends the systems that the host numbers 1 .. `system_count`, each in segments 1 ..
/// `segment_count`. Systems that the table does not hold are 0.
void send_initial_conditions(const ImportModule &module, const InitialConditionTable &table,
                             std::int32_t system_count, std::int32_t segment_count);

} // namespace kova_import
