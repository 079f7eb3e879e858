#pragma once

// What becomes of the kinetic constants of a legacy file in the current model.

#include "import_export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kova_import::legacy {

/// Names of constants have at most 60 characters; the rest of a longer one is cut.
inline constexpr std::size_t constant_name_width = 60;

/// What the host must simulate for a constant to mean something: enough of a kind of system.
struct Condition {
    std::int32_t import_export_data::*count = nullptr; ///< a count or presence flag; null: none
    std::int32_t smallest = 0;

    [[nodiscard]] constexpr bool holds(const import_export_data &data) const {
        return count == nullptr || data.*count >= smallest;
    }
};

/// What a legacy constant becomes.
enum class ConstantRole : std::uint8_t {
    constant,      ///< column 1 adds the constant to the list, the others belong to it
    benthic_algae, ///< added to the list too, but counts a column for another constant
    last_on_list,  ///< a column; puts its constant in the place of the last one on the list
    time_function, ///< a series that holds the value from the start to the end
};

struct ConstantRow {
    std::int32_t legacy_number = 0;
    std::int32_t current_number = 0; ///< of the constant or time function
    Condition condition;
    ConstantRole role = ConstantRole::constant;
    std::int32_t column = 1; ///< 1 .. 3
    std::string_view name = {};
};

namespace constant_rows {

using Data = import_export_data;

inline constexpr Condition always{};
inline constexpr Condition ph{&Data::ph_present, 1};
inline constexpr Condition salinity{&Data::salinity_present, 1};
inline constexpr Condition ammonia{&Data::ammonia_present, 1};
inline constexpr Condition nitrate{&Data::nitrate_present, 1};
inline constexpr Condition one_solid{&Data::solids_count, 1};
inline constexpr Condition two_solids{&Data::solids_count, 2};
inline constexpr Condition three_solids{&Data::solids_count, 3};
inline constexpr Condition detrital_carbon{&Data::detrital_carbon_present, 1};
inline constexpr Condition organic_nitrogen{&Data::organic_nitrogen_present, 1};
inline constexpr Condition organic_phosphorus{&Data::organic_phosphorus_present, 1};
inline constexpr Condition organic_silica{&Data::organic_silica_present, 1};
inline constexpr Condition one_cbod{&Data::cbod_count, 1};
inline constexpr Condition two_cbods{&Data::cbod_count, 2};
inline constexpr Condition three_cbods{&Data::cbod_count, 3};
inline constexpr Condition oxygen{&Data::oxygen_present, 1};
inline constexpr Condition one_group{&Data::phytoplankton_count, 1};
inline constexpr Condition two_groups{&Data::phytoplankton_count, 2};
inline constexpr Condition three_groups{&Data::phytoplankton_count, 3};

constexpr ConstantRow constant(std::int32_t legacy_number, std::int32_t current_number,
                               Condition condition, std::string_view name,
                               std::int32_t column = 1) {
    return {legacy_number,          current_number, condition,
            ConstantRole::constant, column,         name.substr(0, constant_name_width)};
}
constexpr ConstantRow last_on_list(std::int32_t legacy_number, std::int32_t current_number,
                                   Condition condition, std::string_view name,
                                   std::int32_t column) {
    return {legacy_number, current_number,
            condition,     ConstantRole::last_on_list,
            column,        name.substr(0, constant_name_width)};
}
constexpr ConstantRow benthic(std::int32_t legacy_number, std::int32_t current_number,
                              std::string_view name) {
    return {legacy_number,
            current_number,
            always,
            ConstantRole::benthic_algae,
            1,
            name.substr(0, constant_name_width)};
}
constexpr ConstantRow series(std::int32_t legacy_number, std::int32_t time_function) {
    return {legacy_number, time_function, always, ConstantRole::time_function};
}

// The names are those under which models were imported before, misspelled ones included. A degree
// sign is the byte 0xF8 (octal 370).
// clang-format off
inline constexpr std::array rows = {
    series(2, 37),
    series(3, 38),
    series(4, 39),
    series(5, 42),
    series(6, 40),
    series(7, 41),
    constant(1, 52, always, "Waterbody Type Used for Wind Driven Reaeration Rate"),
    constant(70, 93, always, "Light Option (1 uses input light;  2 uses calculated diel light)"),
    constant(71, 94, always, "Multiplier for Self Shading (Mult * TCHLA^Exp)"),
    constant(72, 95, always, "Exponent for Self Shading (Mult * TCHLA^Exp)"),
    constant(73, 96, always, "Include Algal Self Shading Light Extinction in Steele (0=Yes, 1=No)"),
    constant(74, 97, always, "Background Light Extinction Coefficient (1/m)"),
    constant(75, 98, always, "Detritus & Solids Light Extinction Multiplier"),
    constant(76, 99, always, "DOC Light Extinction Multiplier (Values Below Modify Global Value)"),
    constant(69, 92, always, "Percent Light in Segment to Define Photic Zone"),
    benthic(80, 135, "Benthic Algae D:C Ratio (mg D/mg C)"),
    benthic(81, 136, "Benthic Algae N:C Ratio (mg N/mg C)"),
    benthic(82, 142, "Benthic Algae P:C Ratio (mg P/mg C)"),
    benthic(83, 143, "Benthic Algae Chl a:C Ratio (mg Chl/mg C)"),
    benthic(84, 137, "Benthic Algae O2:C Production (mg O2/mg C)"),
    benthic(85, 144, "Growth Model, 0 = Zero Order; 1 = First Order"),
    benthic(86, 145, "Max Growth Rate (gD/m2-day, or 1/day)"),
    benthic(87, 147, "Temp Coefficient for Benthic Algal Growth"),
    benthic(88, 151, "Carrying Capacity for First Order Model (g D/m2)"),
    benthic(89, 152, "Respiration Rate Constant (1/day)"),
    benthic(90, 153, "Temperature Coefficient for Benthic Algal Respiration"),
    benthic(91, 154, "Internal Nutrient Excretion Rate Constant for Benthic Algae (1/day)"),
    benthic(92, 155, "Temperature Coefficient for Benthic Algal Nutrient Excretion"),
    benthic(93, 156, "Death Rate Constant (1/day)"),
    benthic(94, 157, "Temperature Coefficient for Benthic Algal Death"),
    benthic(95, 164, "Half Saturation Uptake Constant for Extracellular Nitrogen (mg N/L)"),
    benthic(96, 165, "Half Saturation Uptake Constant for Extracellular Phosphorus (mg P/L)"),
    benthic(99, 166, "Light Constant for growth (langleys/day)"),
    benthic(100, 167, "Benthic Algae ammonia preference (mg N/L)"),
    benthic(101, 168, "Minimum Cell Quota of Internal Nitrogen for Growth (mgN/gDW)"),
    benthic(102, 169, "Minimum Cell Quota of Internal Phosphorus for Growth (mgP/gDW)"),
    benthic(103, 170, "Maximum Nitrogen Uptake Rate for Benthic Algae (mgN/gDW-day)"),
    benthic(104, 171, "Maximum Phosphorus Uptake Rate for Benthic Algae (mgP/gDW-day)"),
    benthic(105, 172, "Half Saturation Uptake Constant for Intracellular Nitrogen (mgN/gDW)"),
    benthic(106, 173, "Half Saturation Uptake Constant for Intracellular Phosphorus (mgP/gDW)"),
    benthic(107, 138, "Fraction of Benthic Algae Recycled to Organic N"),
    benthic(108, 139, "Fraction of Benthic Algae Recycled to Organic P"),
    constant(246, 5, ph, "Ks Option"),
    constant(247, 6, ph, "KSO4 Option (for pH in Seawater)"),
    constant(248, 7, ph, "pH Scale (1 to 4) for pH Output of Seawater"),
    constant(8, 9, ph, "CO2 Partial Pressure, (atmospheres)"),
    constant(249, 8, salinity, "Salinity Simulation Option (1 = Salinity, 2 = TDS)"),
    constant(10, 27, ammonia, "Nitrification Rate Constant @20 C (1/day)"),
    constant(11, 28, ammonia, "Nitrification Temperature Coefficient"),
    constant(12, 29, ammonia, "Half Saturation Constant for Nitrification Oxygen Limit (mg O2/L)"),
    constant(13, 30, ammonia, "Minimum Temperature for Nitrification Reaction (\370C)"),
    constant(14, 31, nitrate, "Denitrification Rate Constant @20 \370C (1/day)"),
    constant(15, 32, nitrate, "Denitrification Temperature Coefficient"),
    constant(16, 33, nitrate, "Half Saturation Constant for Denitrification Oxygen Limit (mg O2/L)"),
    constant(17, 34, one_solid, "Ammonia Partition Coefficient to Water Column Solids 1 (L/kg)"),
    constant(18, 35, one_solid, "Orthophosphate Partition Coefficient to Water Column Solids 1 (L/kg)"),
    constant(19, 36, one_solid, "Silica Partition Coefficient to Water Column Solids 1 (L/kg)"),
    constant(20, 34, two_solids, "Ammonia Partition Coefficient to Water Column Solids 2 (L/kg)", 2),
    constant(21, 35, two_solids, "Orthophosphate Partition Coefficient to Water Column Solids 2 (L/kg)", 2),
    last_on_list(22, 36, two_solids, "Silica Partition Coefficient to Water Column Solids 2 (L/kg)", 2),
    constant(23, 34, three_solids, "Ammonia Partition Coefficient to Water Column Solids 3 (L/kg)", 3),
    constant(24, 35, three_solids, "Orthophosphate Partition Coefficient to Water Column Solids 3 (L/kg)", 3),
    constant(25, 36, three_solids, "Silica Partition Coefficient to Water Column Solids 3 (L/kg)", 3),
    constant(30, 37, detrital_carbon, "Detritus Dissolution Rate (1/day)"),
    constant(31, 38, detrital_carbon, "Temperature Correction for detritus dissolution"),
    constant(32, 39, organic_nitrogen, "Dissolved Organic Nitrogen Mineralization Rate Constant @20 C (1/day)"),
    constant(33, 40, organic_nitrogen, "Dissolved Organic Nitrogen Mineralization Temperature Coefficient"),
    constant(34, 41, organic_phosphorus, "Dissolved Organic Phosphorus Mineralization Rate Constant @20 C (1/day)"),
    constant(35, 42, organic_phosphorus, "Dissolved Organic Phosphorus Mineralization Temperature Coefficient"),
    constant(36, 43, organic_silica, "Dissolved Organic Silica Mineralization Rate Constant @20 C (1/day)"),
    constant(37, 44, organic_silica, "Dissolved Organic Silica Mineralization Temperature Coefficient"),
    constant(40, 47, one_cbod, "CBOD(1) Decay Rate Constant @20 C (1/day)"),
    constant(41, 48, one_cbod, "CBOD(1) Decay Rate Temperature Correction Coefficient"),
    constant(42, 49, one_cbod, "CBOD(1) Half Saturation Oxygen Limit (mg O2/L)"),
    constant(43, 50, one_cbod, "Fraction of Detritus Dissolution to CBOD(1)"),
    constant(44, 51, one_cbod, "Fraction of CBOD(1) Carbon Source for Denitrification"),
    constant(77, 100, one_cbod, "DOC(1) Light Extinction Multiplier"),
    constant(45, 47, two_cbods, "CBOD(2) Decay Rate Constant @20 C (1/day)", 2),
    constant(46, 48, two_cbods, "CBOD(2) Decay Rate Temperature Correction Coefficient", 2),
    constant(47, 49, two_cbods, "CBOD(2) Half Saturation Oxygen Limit (mg O2/L)", 2),
    constant(48, 50, two_cbods, "Fraction of Detritus Dissolution to CBOD(2)", 2),
    constant(49, 51, two_cbods, "Fraction of CBOD(2) Carbon Source for Denitrification", 2),
    constant(78, 100, two_cbods, "DOC(2) Light Extinction Multiplier", 2),
    constant(50, 47, three_cbods, "CBOD(3) Decay Rate Constant @20 C (1/day)", 3),
    constant(51, 48, three_cbods, "CBOD(3) Decay Rate Temperature Correction Coefficient", 3),
    constant(52, 49, three_cbods, "CBOD(3) Half Saturation Oxygen Limit (mg O2/L)", 3),
    constant(53, 50, three_cbods, "Fraction of Detritus Dissolution to CBOD(3)", 3),
    constant(54, 51, three_cbods, "Fraction of CBOD(3) Carbon Source for Denitrification", 3),
    constant(79, 100, three_cbods, "DOC(3) Light Extinction Multiplier", 3),
    constant(60, 54, oxygen, "Oxygen to Carbon Stoichiometric Ratio"),
    constant(61, 55, oxygen, "Global Reaeration Rate Constant @ 20 C (1/day)"),
    constant(62, 56, oxygen, "Reaeration Option (Sums Wind and Hydraulic Ka"),
    constant(63, 57, oxygen, "Elevation above Sea Level (m)"),
    constant(64, 58, oxygen, "Calc Reaeration Option (0=Covar,2=Owens, 3=Churchill, 4=Tsivoglou)"),
    constant(65, 59, oxygen, "Minimum Reaeration Rate (1/day)"),
    constant(66, 60, oxygen, "Theta -- Reaeration Temperature Correction"),
    constant(67, 61, oxygen, "Theta -- SOD Temperature Correction"),
    constant(9, 53, oxygen, "Light Threshold at Bottom to Inhibit SOD (watts/m2)"),
    constant(195, 62, oxygen, "Maximum Allowable Calculate Reaeration Rate, per day"),
    constant(1141, 179, oxygen, "Determines if a steady-state calculation sets initial conditions (1=No,0=Yes)"),
    constant(1142, 180, oxygen, "Maximum error for testing convergence of the steady-state solut"),
    constant(1143, 181, oxygen, "Maximum number of iterations of steady-state solution"),
    constant(1144, 182, oxygen, "Salinity con. (ppt) for determining whether methane or Sulfide SOD"),
    constant(1145, 183, oxygen, "Determines whether fresh or saltwater nitrification/denitrification rates"),
    constant(1146, 184, oxygen, "Solids concentration in Layer 1 kg/L"),
    constant(1147, 185, oxygen, "Solids concentration in Layer 2 kg/L"),
    constant(1148, 186, oxygen, "Diffusion coefficient between layers 1 and 2 (m2/day)"),
    constant(1149, 187, oxygen, "Temperature coefficient for Dd"),
    constant(1150, 188, oxygen, "Thickness of active sediment layer cm"),
    constant(1151, 189, oxygen, "Burial velocity for layer 2 to inactive sediments (m/day)(0.00000685)"),
    constant(1152, 190, oxygen, "Diffusion coefficient for particle mixing (m2/day)"),
    constant(1153, 191, oxygen, "Temperature coefficient for Dp"),
    constant(1154, 192, oxygen, "Reference POC (O2 EQ. =0.*2.67) measurement for particle mixing"),
    constant(1155, 193, oxygen, "Decay constant for benthic stress (1/day)"),
    constant(1156, 194, oxygen, "Particle mixing half-saturation constant for oxygen (gO2/m3)"),
    constant(1157, 195, oxygen, "Nitrogen Constants: Fraction PON to G1"),
    constant(1158, 196, oxygen, "Fraction PON to G2"),
    constant(1159, 197, oxygen, "Diagenesis rate for PON G1"),
    constant(1160, 198, oxygen, "Temperature coefficient for diagenesis of PON G1"),
    constant(1161, 199, oxygen, "Diagenesis rate for PON G2"),
    constant(1162, 200, oxygen, "Temperature coefficient for diagenesis of PON G2"),
    constant(1163, 201, oxygen, "Diagenesis rate for PON G3"),
    constant(1164, 202, oxygen, "Temperature coefficient for diagenesis of PON G3"),
    constant(1165, 203, oxygen, "Freshwater nitrification reaction velocity (m/day)"),
    constant(1166, 204, oxygen, "Saltwater nitrification reaction velocity (m/day)"),
    constant(1167, 205, oxygen, "Temperature coefficient for nitrification"),
    constant(1168, 206, oxygen, "Half-saturation coefficient for ammonia in the nitrification reaction (mg/L)"),
    constant(1169, 207, oxygen, "Half-saturation coefficient for oxygen in the nitrification reaction (mg/L)"),
    constant(1170, 208, oxygen, "2nd step reaction velocity for nitrification (NO2 to NO3) (m/day)"),
    constant(1171, 209, oxygen, "Temperature coefficient for 2nd step reaction velocity"),
    constant(1172, 210, oxygen, "Half-saturation coefficient for oxygen in the 2nd reaction step (mg O2/L)"),
    constant(1173, 211, oxygen, "Freshwater denitrification reaction velocity in layer 1(m/day)"),
    constant(1174, 212, oxygen, "Saltwater denitrification reaction velocity in layer 1 (m/day)"),
    constant(1175, 213, oxygen, "Temperature coefficient for denitrification"),
    constant(1176, 214, oxygen, "Denitrification reaction velocity in layer 2 (m/day)"),
    constant(1177, 215, oxygen, "Nitrogen partition coefficient (L/kg)"),
    constant(1178, 216, oxygen, "Phosphorus: Fraction POP to G1"),
    constant(1179, 217, oxygen, "Phosphorus: Fraction POP to G2"),
    constant(1180, 218, oxygen, "Diagnesis rate for POP G1"),
    constant(1181, 219, oxygen, "Temperature coefficient for diagenesis of POP G1"),
    constant(1182, 220, oxygen, "Diagnesis rate for POP G2"),
    constant(1183, 221, oxygen, "Temperature coefficient for diagenesis of POP G2"),
    constant(1184, 222, oxygen, "Diagnesis rate for POP G3"),
    constant(1185, 223, oxygen, "Temperature coefficient for diagenesis of POP G3"),
    constant(1186, 224, oxygen, "Phosphorus partition coefficient in layer 2 (L/kg)"),
    constant(1187, 225, oxygen, "Incremental freshwater partition coefficient in layer 1"),
    constant(1188, 226, oxygen, "Incremental saltwater partition coefficient in layer 1"),
    constant(1189, 227, oxygen, "Critical oxygen concentration in layer 1 incremental phosphate sorption (mgO2/L)"),
    constant(1190, 228, oxygen, "Carbon Constants: Fraction CBODu to G1"),
    constant(1191, 229, oxygen, "Fraction CBODu to G2"),
    constant(1192, 230, oxygen, "Diagnesis rate for CBODu G1"),
    constant(1193, 231, oxygen, "Temperature coefficient for diagenesis of CBODu G1"),
    constant(1194, 232, oxygen, "Diagnesis rate for CBODu G2"),
    constant(1195, 233, oxygen, "Temperature coefficient for diagenesis of CBODu G2"),
    constant(1196, 234, oxygen, "Diagnesis rate for CBODu G3"),
    constant(1197, 235, oxygen, "Temperature coefficient for diagenesis of CBODu G3"),
    constant(1198, 236, oxygen, "Methane oxidation reaction velocity (m/day)"),
    constant(1199, 237, oxygen, "Temperature coefficient for methane oxidation"),
    constant(1200, 238, oxygen, "Half-saturation coefficient for oxygen in oxidation of methane (mg/L)"),
    constant(1201, 239, oxygen, "Reaction velocity for dissolved sulfide oxidation in layer 1 (m/day)"),
    constant(1202, 240, oxygen, "Reaction velocity for particulate sulfide oxidation in layer 1 (m/day)"),
    constant(1203, 241, oxygen, "Temperature coefficient for sulfide oxidation"),
    constant(1204, 242, oxygen, "Sulfide oxidation normalization constant (mg/L)"),
    constant(1205, 243, oxygen, "Sulfide partition coefficient in layer 1 (L/kg)"),
    constant(1206, 244, oxygen, "Sulfide partition coefficient in layer 2 (L/kg)"),
    constant(1207, 245, oxygen, "Algae Constants: Fraction settled algae to G1"),
    constant(1208, 246, oxygen, "Fraction settled algae to G2"),
    constant(1209, 247, oxygen, "Read/Create Dynamic SOD Restart File (SOD.RST) Automatically Created"),
    constant(1210, 248, oxygen, "Static SOD Restart File (SOD.IC) Needs to be created by user"),
    constant(1140, 178, oxygen, "Activate Sediment Diagenesis Model (1=On, 0=Off)"),
    constant(1211, 249, oxygen, "Dissolution Rate of particulate biogenic silica at 20c (1/day)"),
    constant(1212, 250, oxygen, "Temperature Effect on Silica Dissolution"),
    constant(1213, 251, oxygen, "Silica Saturation Concentration in Porewater (mg si/m**3)"),
    constant(1214, 252, oxygen, "Incremental Change (Mult) for freshwater in Partition Coeff. Si as DO"),
    constant(1215, 253, oxygen, "Partition Coefficient between Dissolved/Sorbed Silica in Layer 2"),
    constant(1216, 254, oxygen, "Half Saturation Constant of Dissolved Silica in Dissolution Reaction"),
    constant(1217, 255, oxygen, "Critical Oxygen Concentration for Silica Sorption"),
    constant(110, 64, one_group, "Phytoplankton Detritus to Carbon Ratio for Group 1 (mg D/mg C)"),
    constant(111, 65, one_group, "Phytoplankton Nitrogen to Carbon Ratio for Group 1 (mg N/mg C)"),
    constant(112, 66, one_group, "Phytoplankton Phosphorus to Carbon Ratio for Group 1 (mg P/mg C)"),
    constant(113, 67, one_group, "Phytoplankton Silica to Carbon Ratio for Group 1 (mg Si/mg C)"),
    constant(114, 68, one_group, "Phytoplankton Carbon to Chlorophyll Ratio for Group 1 (mg C/mg Chl)"),
    constant(115, 69, one_group, "Phytoplankton Maximum Growth Rate Constant @20 C for Group 1 (1/day)"),
    constant(116, 70, one_group, "Phytoplankton Growth Temperature Coefficient for Group 1"),
    constant(117, 71, one_group, "Optimal Temperature for Growth for Group 1 (C)"),
    constant(118, 72, one_group, "Shape parameter for below optimal temperatures for Group 1"),
    constant(120, 74, one_group, "Phytoplankton Respiration Rate Constant @20 C for Group 1 (1/day)"),
    constant(121, 75, one_group, "Phytoplankton Respiration Temperature Coefficient for Group 1"),
    constant(122, 76, one_group, "Phytoplankton Death Rate Constant (Non-Zoo Predation) for Group 1 (1/day)"),
    constant(123, 77, one_group, "Phytoplankton death rate due to salinity toxicity for Group 1 (1/day)"),
    constant(124, 78, one_group, "Salinity at which algal mortality is half maximum value for Group 1 (g/L)"),
    constant(125, 79, one_group, "hytoplankton Zooplankton Grazing Rate Constant for Group 1 (1/day)"),
    constant(126, 80, one_group, "Grazability (0 to 1) for Group 1"),
    constant(127, 81, one_group, "Phytoplankton Half-Saturation Constant for N Uptake for Group 1 (mg N/L)"),
    constant(128, 82, one_group, "Phytoplankton Half-Saturation Constant for P Uptake  for Group 1 (mg P/L)"),
    constant(129, 83, one_group, "Phytoplankton Half-Saturation Constant for Si Uptake for Group 1 (mg Si/L)"),
    constant(130, 84, one_group, "Nitrogen fixation option (0 no, 1=yes) for Group 1"),
    constant(131, 85, one_group, "Phytoplankton Optimal Light Saturation for Group 1 (Ly/day)"),
    constant(132, 86, one_group, "Fraction of Phytoplankton Death Recycled to Organic N for Group 1"),
    constant(133, 87, one_group, "Fraction of Phytoplankton Death Recycled to Organic P for Group 1"),
    constant(134, 88, one_group, "Fraction of Phytoplankton Death Recycled to Organic Si for Group 1"),
    constant(140, 64, two_groups, "Phytoplankton Detritus to Carbon Ratio for Group 2 (mg D/mg C)", 2),
    constant(141, 65, two_groups, "Phytoplankton Nitrogen to Carbon Ratio for Group 2 (mg N/mg C)", 2),
    constant(142, 66, two_groups, "Phytoplankton Phosphorus to Carbon Ratio for Group 2 (mg P/mg C)", 2),
    constant(143, 67, two_groups, "Phytoplankton Silica to Carbon Ratio for Group 2 (mg Si/mg C)", 2),
    constant(144, 68, two_groups, "Phytoplankton Carbon to Chlorophyll Ratio for Group 2 (mg C/mg Chl)", 2),
    constant(145, 69, two_groups, "Phytoplankton Maximum Growth Rate Constant @20 C for Group 2 (1/day)", 2),
    constant(146, 70, two_groups, "Phytoplankton Growth Temperature Coefficient for Group 2", 2),
    constant(147, 71, two_groups, "Optimal Temperature for Growth for Group 2 (C)", 2),
    constant(148, 72, two_groups, "Shape parameter for below optimal temperatures for Group 2", 2),
    constant(119, 73, two_groups, "Shape parameter for above optimal temperatures for Group 1"),
    constant(149, 73, two_groups, "Shape parameter for above optimal temperatures for Group 2", 2),
    constant(150, 74, two_groups, "Phytoplankton Respiration Rate Constant @20 C for Group 2 (1/day)", 2),
    constant(151, 75, two_groups, "Phytoplankton Respiration Temperature Coefficient for Group 2", 2),
    constant(152, 76, two_groups, "Phytoplankton Death Rate Constant (Non-Zoo Predation) for Group 2 (1/day)", 2),
    constant(153, 77, two_groups, "Phytoplankton death rate due to salinity toxicity for Group 2 (1/day)", 2),
    constant(154, 78, two_groups, "Salinity at which algal mortality is half maximum value for Group 2 (g/L)", 2),
    constant(155, 79, two_groups, "Phytoplankton Zooplankton Grazing Rate Constant for Group 2 (1/day)", 2),
    constant(156, 80, two_groups, "Grazability (0 to 1) for Group 2", 2),
    constant(157, 81, two_groups, "Phytoplankton Half-Saturation Constant for N Uptake for Group 2 (mg N/L)", 2),
    constant(158, 82, two_groups, "Phytoplankton Half-Saturation Constant for P Uptake  for Group 2 (mg P/L)", 2),
    constant(159, 83, two_groups, "Phytoplankton Half-Saturation Constant for Si Uptake for Group 2 (mg Si/L)", 2),
    constant(160, 84, two_groups, "Nitrogen fixation option (0 no, 1=yes) for Group 2", 2),
    constant(161, 85, two_groups, "Phytoplankton Optimal Light Saturation for Group 2 (Ly/day)", 2),
    constant(162, 86, two_groups, "Fraction of Phytoplankton Death Recycled to Organic N for Group 2", 2),
    constant(163, 87, two_groups, "Fraction of Phytoplankton Death Recycled to Organic P for Group 2", 2),
    constant(164, 88, two_groups, "Fraction of Phytoplankton Death Recycled to Organic Si for Group 2", 2),
    constant(170, 64, three_groups, "Phytoplankton Detritus to Carbon Ratio for Group 3 (mg D/mg C)", 3),
    constant(171, 65, three_groups, "Phytoplankton Nitrogen to Carbon Ratio for Group 3 (mg N/mg C)", 3),
    constant(172, 66, three_groups, "Phytoplankton Phosphorus to Carbon Ratio for Group 3 (mg P/mg C)", 3),
    constant(173, 67, three_groups, "Phytoplankton Silica to Carbon Ratio for Group 3 (mg Si/mg C)", 3),
    constant(174, 68, three_groups, "Phytoplankton Carbon to Chlorophyll Ratio for Group 3 (mg C/mg Chl)", 3),
    constant(175, 69, three_groups, "Phytoplankton Maximum Growth Rate Constant @20 C for Group 3 (1/day)", 3),
    constant(176, 70, three_groups, "Phytoplankton Growth Temperature Coefficient for Group 3", 3),
    constant(177, 71, three_groups, "Optimal Temperature for Growth for Group 3 (C)", 3),
    constant(178, 72, three_groups, "Shape parameter for below optimal temperatures for Group 3", 3),
    constant(179, 73, three_groups, "Shape parameter for above optimal temperatures for Group 3", 3),
    constant(180, 74, three_groups, "Phytoplankton Respiration Rate Constant @20 C for Group 3 (1/day)", 3),
    constant(181, 75, three_groups, "Phytoplankton Respiration Temperature Coefficient for Group 3", 3),
    constant(182, 76, three_groups, "Phytoplankton Death Rate Constant (Non-Zoo Predation) for Group 3 (1/day)", 3),
    constant(183, 77, three_groups, "Phytoplankton death rate due to salinity toxicity for Group 3 (1/day)", 3),
    constant(184, 78, three_groups, "Salinity at which algal mortality is half maximum value for Group 3 (g/L)", 3),
    constant(185, 79, three_groups, "Phytoplankton Zooplankton Grazing Rate Constant for Group 3 (1/day)", 3),
    constant(186, 80, three_groups, "Grazability (0 to 1) for Group 3", 3),
    constant(187, 81, three_groups, "Phytoplankton Half-Saturation Constant for N Uptake for Group 3 (mg N/L)", 3),
    constant(188, 82, three_groups, "Phytoplankton Half-Saturation Constant for P Uptake  for Group 3 (mg P/L)", 3),
    constant(189, 83, three_groups, "Phytoplankton Half-Saturation Constant for Si Uptake for Group 3 (mg Si/L)", 3),
    constant(190, 84, three_groups, "Nitrogen fixation option (0 no, 1=yes) for Group 3", 3),
    constant(191, 85, three_groups, "Phytoplankton Optimal Light Saturation for Group 3 (Ly/day)", 3),
    constant(192, 86, three_groups, "Fraction of Phytoplankton Death Recycled to Organic N for Group 3", 3),
    constant(193, 87, three_groups, "Fraction of Phytoplankton Death Recycled to Organic P for Group 3", 3),
    constant(194, 88, three_groups, "Fraction of Phytoplankton Death Recycled to Organic Si for Group 3", 3),
};
// clang-format on

constexpr std::int32_t largest_legacy_number() {
    std::int32_t largest = 0;
    for (const ConstantRow &row : rows)
        largest = row.legacy_number > largest ? row.legacy_number : largest;
    return largest;
}

inline constexpr std::size_t no_row = rows.size();

/// The row of each legacy number.
inline constexpr auto row_of_number = [] {
    std::array<std::size_t, largest_legacy_number() + 1> places{};
    places.fill(no_row);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::size_t &place = places[static_cast<std::size_t>(rows[i].legacy_number)];
        // a second row of a number would hide the first: no constant expression
        place = place == no_row ? i : throw "two rows of one legacy number";
    }
    return places;
}();

} // namespace constant_rows

/// The row of a legacy number; null for numbers that the current model does not know.
[[nodiscard]] constexpr const ConstantRow *find_constant(std::int32_t legacy_number) {
    using namespace constant_rows;
    if (legacy_number < 0 || legacy_number > largest_legacy_number())
        return nullptr;
    const std::size_t row = row_of_number[static_cast<std::size_t>(legacy_number)];
    return row == no_row ? nullptr : &rows[row];
}

} // namespace kova_import::legacy
