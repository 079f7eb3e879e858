#pragma once

// Flow time series: how much flows through the functions of each flow field, and when.

#include "control/chunked_list.h"
#include "control/import_module.h"
#include "control/sections/fields.h"
#include "control/sections/series.h"

#include <cstdint>

namespace kova_import {

/// The lists hold the rows of all fields and functions one behind the other, in the order of the
/// file; the counts say where one ends. The functions of each field are counted in
/// `ImportModule::inflow_count`.
struct FlowSeriesTable {
    std::int32_t field_count = 0;
    FieldFactors factors;
    ChunkedList<std::int32_t> breakpoint_counts; ///< of each function
    Breakpoints breakpoints;                     ///< two values each, in the order of the record
};

/// Reads the flow-field count and the series of all fields. A count that its record leaves out is
/// that of the flow paths.
void read_flow_series(ImportModule &module, FlowSeriesTable &table);

/// Sends the whole section.
void send_flow_series(const ImportModule &module, const FlowSeriesTable &table);

} // namespace kova_import
