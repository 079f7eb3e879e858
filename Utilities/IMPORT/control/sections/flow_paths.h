#pragma once

// Flow paths: through which segment pairs each flow is routed.

#include "control/fixed_text.h"
#include "control/import_module.h"
#include "control/packed_list.h"

#include <array>
#include <cstdint>

namespace kova_import {

/// The flow option that takes the flows from a hydrodynamic linkage file.
inline constexpr std::int32_t hydrodynamic_linkage = 3;

struct FlowFunction {
    FixedText<30> description; ///< hosts get it at its width, like the file name; both have no NUL
    /// Rows are packed, and have nothing between their members. Blank like the end of most
    /// descriptions, which takes no room then.
    std::array<char, 2> no_gap{' ', ' '};
    std::int32_t pair_count = 0;
};

struct FlowPair {
    std::int32_t first_segment = 0;
    std::int32_t second_segment = 0;
    float routing_fraction = 0; ///< of the function's flow, 0 .. 1
};

/// The lists hold the rows of all fields and functions one behind the other, in the order of the
/// file; the counts say where one ends. The functions of each field are counted in
/// `ImportModule::inflow_count`, which the flow time series share.
struct FlowPathTable {
    std::int32_t segment_count = 0; ///< as it is when the section starts
    std::int32_t field_count = 0;
    FixedText<512> hydrodynamic_file; ///< read with option 3 only
    PackedList<FlowFunction> functions;
    PackedList<FlowPair> pairs;
};

/// Reads the flow-field count and all fields. `module.flow_option` is known.
void read_flow_fields(ImportModule &module, FlowPathTable &table);

/// Sends the whole section.
void send_flow_paths(const ImportModule &module, const FlowPathTable &table);

} // namespace kova_import
