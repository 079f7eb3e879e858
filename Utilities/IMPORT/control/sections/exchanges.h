#pragma once

// Dispersive exchange between segments.

#include "control/chunked_list.h"
#include "control/fixed_text.h"
#include "control/import_module.h"
#include "control/packed_list.h"
#include "control/sections/fields.h"
#include "control/sections/series.h"

#include <array>
#include <cstdint>

namespace kova_import {

struct ExchangeFunction {
    FixedText<30> description;
    std::array<char, 2> no_gap{' ', ' '}; ///< as in `FlowFunction`
    std::int32_t pair_count = 0;
    std::int32_t breakpoint_count = 0;
};

struct ExchangePair {
    std::int32_t first_segment = 0;
    std::int32_t second_segment = 0;
    float interfacial_area = 0; ///< m2
    float mixing_length = 0;    ///< m
};

/// The lists hold the rows of all fields and functions one behind the other, in the order of the
/// file; the counts say where one ends.
struct ExchangeTable {
    std::int32_t field_count = 0;
    FieldFactors factors;
    ChunkedList<std::int32_t> function_counts; ///< of each field
    PackedList<ExchangeFunction> functions;
    PackedList<ExchangePair> pairs;
    Breakpoints breakpoints; ///< dispersion (m2/s before the factors) and time
};

/// Reads the field count and all fields.
void read_exchange_fields(ImportModule &module, ExchangeTable &table);

/// Sends the whole section.
void send_exchanges(const ExchangeTable &table);

} // namespace kova_import
