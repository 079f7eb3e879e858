#pragma once

// The model that the host commands build, as plain data. Lists hold number 1 first: segment 5 is
// `segments[4]`. Counts are kept as they were announced, whatever the lists hold. A value that no
// command has set is 0 or empty. Texts end at their first NUL and have no trailing blanks; their
// bytes are those of the import file.

#include <cstdint>
#include <string>
#include <vector>

namespace kova_host {

struct Date {
    std::int32_t month = 0;
    std::int32_t day = 0;
    std::int32_t year = 0;
};

struct TimeOfDay {
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;
};

/// A point of a time series; times are days from the start.
struct Breakpoint {
    float time = 0;
    float value = 0;
};

struct ModelSettings {
    std::string file_name;
    std::int32_t model_type = 0;
    Date start_date;
    TimeOfDay start_time;
    Date hydrodynamic_skip_date;
    TimeOfDay hydrodynamic_skip_time;
    float simulation_length = 0; ///< days
    std::int32_t solution_type = 0;
    std::int32_t negative_solution_option = 0;
    std::int32_t icrd_option = 0;
    std::int32_t intyp_option = 0;
    float maximum_time_step_fraction = 0;
    float minimum_time_step = 0;
    float maximum_time_step = 0;
    float output_interval = 0;
    std::int32_t bed_volume_option = 0;
    float bed_volume_time_step = 0;
    float volume_scale_factor = 0;
    float volume_conversion_factor = 0;
    std::string hydrodynamic_file;
    std::int32_t load_option = 0;
    std::string non_point_source_file;
};

struct Segment {
    std::string name;
    std::int32_t bottom_segment = 0;
    std::int32_t type = 0;
    std::int32_t hydraulic_option = 0;
    std::int32_t flow_option = 0;
    float volume = 0;
    float velocity_multiplier = 0;
    float velocity_exponent = 0;
    float depth_multiplier = 0;
    float depth_exponent = 0;
    float length = 0;
    float slope = 0;
    float width = 0;
    float roughness = 0;
    float minimum_depth = 0;
    float initial_surface_elevation = 0;
    float bottom_elevation = 0;
    float side_slope = 0;
    float initial_depth = 0;
    float weir_height = 0;
    float weir_type = 0;
};

struct Boundary {
    std::int32_t segment = 0;
    std::int32_t breakpoint_count = 0;
    std::vector<Breakpoint> series;
};

/// The load of a system into a segment. No command tells two loads of a system into one segment
/// apart, so a later one takes the place of an earlier one.
struct Load {
    std::int32_t segment = 0;
    std::int32_t breakpoint_count = 0;
    std::int64_t times_announced = 0; ///< all but the last were replaced
    std::vector<Breakpoint> series;
};

struct InitialCondition {
    float concentration = 0;
    float dissolved_fraction = 0;
};

struct System {
    std::string long_name;
    std::string short_name;
    std::int32_t boundary_count = 0;
    float boundary_scale_factor = 0;
    std::vector<Boundary> boundaries;
    float load_conversion_factor = 0;
    bool has_no_load_factors = false;    ///< at least one of the two below was set
    float no_load_scale_factor = 0;      ///< of a system without loads
    float no_load_conversion_factor = 0; ///< of a system without loads
    std::vector<Load> loads;             ///< in order of arrival
    bool has_initial_settings = false;   ///< at least one of the three below was set
    float maximum_concentration = 0;
    float density = 0;
    std::int32_t flow_field = 0;
    std::vector<InitialCondition> initial_conditions; ///< by segment
};

/// Where a flow goes: a fraction of it leaves one segment for another.
struct FlowPair {
    std::int32_t first_segment = 0;
    std::int32_t second_segment = 0;
    float routing_fraction = 0;
};

/// A point of a flow series, in the order of the import file.
struct FlowBreakpoint {
    float first_value = 0;
    float second_value = 0;
};

struct FlowFunction {
    std::string description;
    std::int32_t pair_count = 0;
    std::vector<FlowPair> pairs;
    std::int32_t breakpoint_count = 0;
    std::vector<FlowBreakpoint> breakpoints;
};

struct FlowField {
    std::int32_t function_count = 0;
    float scale_factor = 0;
    float conversion_factor = 0;
    std::vector<FlowFunction> functions;
};

struct ExchangePair {
    std::int32_t first_segment = 0;
    std::int32_t second_segment = 0;
    float interfacial_area = 0;
    float mixing_length = 0;
};

struct ExchangeFunction {
    std::string description;
    std::int32_t pair_count = 0;
    std::vector<ExchangePair> pairs;
    std::int32_t breakpoint_count = 0;
    std::vector<Breakpoint> breakpoints;
};

struct ExchangeField {
    std::int32_t function_count = 0;
    float scale_factor = 0;
    float conversion_factor = 0;
    std::vector<ExchangeFunction> functions;
};

struct TimeFunctionSeries {
    std::int32_t breakpoint_count = 0;
    std::vector<Breakpoint> breakpoints;
};

struct TimeFunction {
    std::int32_t number = 0;
    bool follows_constants = false; ///< announced after the constants, being one in the file
    std::vector<TimeFunctionSeries> series;
};

struct SegmentParameter {
    std::int32_t number = 0;
    std::int32_t class_index = 0;
    float scale_factor = 0;
    std::vector<float> values; ///< by segment
};

struct Constant {
    std::int32_t number = 0;
    std::int32_t column = 0;
    float value = 0;
    std::int32_t used = 0;
};

/// How often the host was told that a group of data is complete.
struct RefreshCounts {
    std::int64_t systems = 0;
    std::int64_t segments = 0;
    std::int64_t flows = 0;
    std::int64_t exchanges = 0;
    std::int64_t time_functions = 0;
    std::int64_t segment_parameters = 0;
    std::int64_t constants = 0;
};

/// Everything that the host commands say about the model. Time functions, segment parameters and
/// constants bear numbers that an import file chooses freely, so they are lists in order of arrival
/// whose members know their number.
struct Model {
    ModelSettings settings;
    std::int32_t system_count = 0;
    std::vector<System> systems;
    std::int32_t segment_count = 0;
    std::vector<Segment> segments;
    std::int32_t flow_field_count = 0;
    std::vector<FlowField> flow_fields;
    std::int32_t exchange_field_count = 0;
    std::vector<ExchangeField> exchange_fields;
    std::vector<TimeFunction> time_functions;
    std::vector<SegmentParameter> segment_parameters;
    std::vector<Constant> constants;
    RefreshCounts refreshes;
};

/// Whether a load of a system stands for "none" and is no datum of a file: a system without loads
/// gets the factors that only such a system has, and a load of 0 on segment 1 with two breakpoints.
/// A load of the file may look the same, but then its system has no such factors.
[[nodiscard]] inline bool is_placeholder(const System &system, const Load &load) {
    const auto is_zero = [](const Breakpoint &each) { return each.time == 0 && each.value == 0; };
    return system.has_no_load_factors && load.segment == 1 && load.breakpoint_count == 2 &&
           load.series.size() == 2 && is_zero(load.series[0]) && is_zero(load.series[1]);
}

/// How many loads of a system into one segment a later one has replaced.
[[nodiscard]] inline std::int64_t replaced_count(const Load &load) {
    return load.times_announced > 1 ? load.times_announced - 1 : 0;
}

} // namespace kova_host
