#pragma once

// What becomes of the segment parameters of a legacy file in the current model.

#include "control/sections/segment_parameters.h"
#include "import_export.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace kova_import::legacy {

/// A parameter of the current model that carries the values of a legacy one.
struct SegmentParameterRow {
    std::int32_t legacy_number = 0; ///< 0: none, all values are 1
    ParameterIdentity parameter;
    std::string_view name = {};
    /// The host must simulate at least as many of these as the class index; null: always.
    std::int32_t import_export_data::*class_count = nullptr;
    bool is_one = false; ///< its scale factor and all its values are 1

    [[nodiscard]] bool applies(const import_export_data &data) const {
        return class_count == nullptr || data.*class_count >= parameter.class_index;
    }
};

/// The legacy parameter that the current model has no place for, and tells its users so.
inline constexpr std::int32_t second_water_temperature = 3;

/// The values of legacy numbers 0 .. 106 are kept.
inline constexpr std::int32_t last_legacy_parameter = 106;

namespace segment_parameter_rows {

using Data = import_export_data;

/// In the order of the legacy numbers, since one may have several rows.
inline constexpr std::array rows = {
    SegmentParameterRow{1, {41, 1}, "Water Velocity"},
    SegmentParameterRow{2, {1, 1}, "Water Temperature"},
    SegmentParameterRow{4, {17, 1}, "Light Extinction"},
    SegmentParameterRow{5, {42, 1}, "Ice Cover"},
    SegmentParameterRow{6, {30, 1}, "Benthic Ammonia Flux"},
    SegmentParameterRow{7, {31, 1}, "Benthic Phosphate Flux"},
    SegmentParameterRow{8, {32, 1}, "Sediment Oxygen Demand"},
    SegmentParameterRow{9, {4, 1}, "Incoming Solar Radiation Multiplier"},
    SegmentParameterRow{9, {5, 1}, "Solar Radiation Time Function", nullptr, true},
    SegmentParameterRow{10, {23, 1}, "Segment Specific Reaeration"},
    SegmentParameterRow{11, {22, 1}, "Zooplankton Population"},
    SegmentParameterRow{12, {15, 1}, "Fraction Light Intercept from Canopy"},
    SegmentParameterRow{13, {29, 1}, "Fraction of Bottom Suitable for Benthic/Macro Algae"},
    SegmentParameterRow{14, {24, 1}, "Segment Elevation"},
    SegmentParameterRow{15, {25, 1}, "Dam Elevation"},
    SegmentParameterRow{16, {26, 1}, "Dam Pool Water Quality Condition Indicator"},
    SegmentParameterRow{17, {27, 1}, "Dam  Type"},
    SegmentParameterRow{18, {28, 1}, "Tsvigolo-Wallace Escape Coefficient"},
    SegmentParameterRow{19, {21, 1}, "Settling Rate -- Detritus"},
    SegmentParameterRow{22, {6, 1}, "Wind Scale Factor"},
    SegmentParameterRow{23, {7, 1}, "Wind Speed Time Function"},
    SegmentParameterRow{24, {19, 1}, "Settling Rate -- Solids", &Data::solids_count},
    SegmentParameterRow{25, {19, 2}, "Settling Rate -- Solids", &Data::solids_count},
    SegmentParameterRow{26, {19, 3}, "Settling Rate -- Solids", &Data::solids_count},
    SegmentParameterRow{
        27, {20, 1}, "Settling Rate -- Phytoplankton 1", &Data::phytoplankton_count},
    SegmentParameterRow{
        28, {20, 2}, "Settling Rate -- Phytoplankton 2", &Data::phytoplankton_count},
    SegmentParameterRow{
        29, {20, 3}, "Settling Rate -- Phytoplankton 3", &Data::phytoplankton_count},
    SegmentParameterRow{100, {33, 1}, "Diagenesis Segment Attached to this Segment"},
    SegmentParameterRow{101, {34, 1}, "Diagenesis PON Initial Conditions for Segment"},
    SegmentParameterRow{102, {35, 1}, "Diagenesis POP Initial Conditions for Segment"},
    SegmentParameterRow{103, {36, 1}, "Diagenesis POC Initial Conditions for Segment"},
    SegmentParameterRow{104, {37, 1}, "Diagenesis POSi Initial Conditions for Segment"},
    SegmentParameterRow{105, {38, 1}, "Fraction of (PO-N/P/C) in Class 1"},
    SegmentParameterRow{106, {39, 1}, "Fraction of (PO-N/P/C) in Class 2"},
};

static_assert(std::is_sorted(rows.begin(), rows.end(), [](const auto &first, const auto &second) {
    return first.legacy_number < second.legacy_number;
}));

/// Added where the file has a time function of the air temperature.
inline constexpr std::array air_temperature_rows = {
    SegmentParameterRow{0, {2, 1}, "Air Temp Mult", nullptr, true},
    SegmentParameterRow{0, {3, 1}, "Time Function", nullptr, true},
};

} // namespace segment_parameter_rows

} // namespace kova_import::legacy
