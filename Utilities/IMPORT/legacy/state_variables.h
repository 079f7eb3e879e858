#pragma once

// What becomes of the systems of a legacy eutrophication model.

#include "control/import_module.h"
#include "import_export.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace kova_import::legacy {

/// A legacy system that the host can simulate, and the presence flag or class count that it sets in
/// the data block.
struct StateVariable {
    std::string_view short_name;
    std::string_view long_name;
    std::int32_t import_export_data::*presence = nullptr; ///< set to 1
    std::int32_t import_export_data::*count = nullptr;    ///< counted up
};

namespace state_variable_rows {

using Data = import_export_data;

constexpr StateVariable flagged(std::string_view short_name, std::string_view long_name,
                                std::int32_t Data::*presence) {
    return {short_name, long_name, presence, nullptr};
}

constexpr StateVariable counted(std::string_view short_name, std::string_view long_name,
                                std::int32_t Data::*count) {
    return {short_name, long_name, nullptr, count};
}

/// Legacy system s is row s - 1.
inline constexpr std::array<StateVariable, legacy_system_count> state_variables = {
    flagged("NH-34", "Ammonia", &Data::ammonia_present),
    flagged("NO3O2", "Nitrate/Nitrite", &Data::nitrate_present),
    flagged("ORG-N", "Diss Org N", &Data::organic_nitrogen_present),
    flagged("D-DIP", "Inorganic P", &Data::inorganic_phosphorus_present),
    flagged("ORG-P", "Diss Org P", &Data::organic_phosphorus_present),
    flagged("IN-SI", "Inorganic Si", &Data::inorganic_silica_present),
    flagged("ORGSI", "Organic Si", &Data::organic_silica_present),
    counted("CBODU", "CBOD-1", &Data::cbod_count),
    counted("CBODU", "CBOD-2", &Data::cbod_count),
    counted("CBODU", "CBOD-3", &Data::cbod_count),
    flagged("DISOX", "Dissolved Oxygen", &Data::oxygen_present),
    flagged("DET-C", "Detrital Carbon", &Data::detrital_carbon_present),
    flagged("DET-N", "Detrital N", &Data::detrital_nitrogen_present),
    flagged("DET-P", "Detrital P", &Data::detrital_phosphorus_present),
    flagged("DETSI", "Detrital Si", &Data::detrital_silica_present),
    flagged("TOTDE", "Total Detritus", &Data::total_detritus_present),
    flagged("SALIN", "Salinity", &Data::salinity_present),
    flagged("MALGA", "Benthic Algae", &Data::benthic_algae_present),
    flagged("MALGN", "Benthic Algae-N", &Data::benthic_algae_nitrogen_present),
    flagged("MALGP", "Benthic Algae-P", &Data::benthic_algae_phosphorus_present),
    counted("SOLID", "Solid 1", &Data::solids_count),
    counted("SOLID", "Solid 2", &Data::solids_count),
    counted("SOLID", "Solid 3", &Data::solids_count),
    counted("PHYTO", "Phytoplankton 1", &Data::phytoplankton_count),
    counted("PHYTO", "Phytoplankton 2", &Data::phytoplankton_count),
    counted("PHYTO", "Phytoplankton 3", &Data::phytoplankton_count),
    flagged("PH-SU", "pH", &Data::ph_present),
    flagged("ALKAL", "Alkalinity", &Data::alkalinity_present),
};

} // namespace state_variable_rows

using state_variable_rows::state_variables;

} // namespace kova_import::legacy
