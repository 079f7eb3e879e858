// Imports a file with the library and writes the model that the reference host then holds, one
// datum a line: "segments[5].volume 1200". Rows are counted from 1. A number has as many digits as
// tell it from its neighbours.
//
//     dump_model SCOPE INDEX-NAMES FILE DUMP
//
// SCOPE is "all" or "transport", INDEX-NAMES "yes" or "no".

#include "host/reference_host.h"
#include "import_export.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iomanip>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

// The names of a record's members are given once. One that is left out does not compile, so no
// datum of the host can be forgotten here.
#define KOVA_PUT_MEMBERS_OF(Record, ...)                                                           \
    void put(const kova_host::Record &record) {                                                    \
        const auto &[__VA_ARGS__] = record;                                                        \
        put_members(#__VA_ARGS__, __VA_ARGS__);                                                    \
    }                                                                                              \
    static_assert(true)

class Dump {
  public:
    explicit Dump(std::ostream &out) : out_(out) {}

    KOVA_PUT_MEMBERS_OF(Date, month, day, year);
    KOVA_PUT_MEMBERS_OF(TimeOfDay, hour, minute, second);
    KOVA_PUT_MEMBERS_OF(Breakpoint, time, value);
    KOVA_PUT_MEMBERS_OF(ModelSettings, file_name, model_type, start_date, start_time,
                        hydrodynamic_skip_date, hydrodynamic_skip_time, simulation_length,
                        solution_type, negative_solution_option, icrd_option, intyp_option,
                        maximum_time_step_fraction, minimum_time_step, maximum_time_step,
                        output_interval, bed_volume_option, bed_volume_time_step,
                        volume_scale_factor, volume_conversion_factor, hydrodynamic_file,
                        load_option, non_point_source_file);
    KOVA_PUT_MEMBERS_OF(Segment, name, bottom_segment, type, hydraulic_option, flow_option, volume,
                        velocity_multiplier, velocity_exponent, depth_multiplier, depth_exponent,
                        length, slope, width, roughness, minimum_depth, initial_surface_elevation,
                        bottom_elevation, side_slope, initial_depth, weir_height, weir_type);
    KOVA_PUT_MEMBERS_OF(Boundary, segment, breakpoint_count, series);
    KOVA_PUT_MEMBERS_OF(Load, segment, breakpoint_count, times_announced, series);
    KOVA_PUT_MEMBERS_OF(InitialCondition, concentration, dissolved_fraction);
    KOVA_PUT_MEMBERS_OF(System, long_name, short_name, boundary_count, boundary_scale_factor,
                        boundaries, load_conversion_factor, has_no_load_factors,
                        no_load_scale_factor, no_load_conversion_factor, loads,
                        has_initial_settings, maximum_concentration, density, flow_field,
                        initial_conditions);
    KOVA_PUT_MEMBERS_OF(FlowPair, first_segment, second_segment, routing_fraction);
    KOVA_PUT_MEMBERS_OF(FlowBreakpoint, first_value, second_value);
    KOVA_PUT_MEMBERS_OF(FlowFunction, description, pair_count, pairs, breakpoint_count,
                        breakpoints);
    KOVA_PUT_MEMBERS_OF(FlowField, function_count, scale_factor, conversion_factor, functions);
    KOVA_PUT_MEMBERS_OF(ExchangePair, first_segment, second_segment, interfacial_area,
                        mixing_length);
    KOVA_PUT_MEMBERS_OF(ExchangeFunction, description, pair_count, pairs, breakpoint_count,
                        breakpoints);
    KOVA_PUT_MEMBERS_OF(ExchangeField, function_count, scale_factor, conversion_factor, functions);
    KOVA_PUT_MEMBERS_OF(TimeFunctionSeries, breakpoint_count, breakpoints);
    KOVA_PUT_MEMBERS_OF(TimeFunction, number, follows_constants, series);
    KOVA_PUT_MEMBERS_OF(SegmentParameter, number, class_index, scale_factor, values);
    KOVA_PUT_MEMBERS_OF(Constant, number, column, value, used);
    KOVA_PUT_MEMBERS_OF(RefreshCounts, systems, segments, flows, exchanges, time_functions,
                        segment_parameters, constants);
    KOVA_PUT_MEMBERS_OF(Model, settings, system_count, systems, segment_count, segments,
                        flow_field_count, flow_fields, exchange_field_count, exchange_fields,
                        time_functions, segment_parameters, constants, refreshes);

  private:
    void put(std::int32_t number) { put_line(std::to_string(number)); }
    void put(std::int64_t number) { put_line(std::to_string(number)); }
    void put(bool flag) { put_line(flag ? "true" : "false"); }

    void put(float number) {
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%.9g", static_cast<double>(number));
        put_line(text.data());
    }

    void put(const std::string &text) { out_ << path_ << ' ' << std::quoted(text) << '\n'; }

    template <class Record>
    void put(const std::vector<Record> &list) {
        std::size_t row = 0;
        for (const Record &record : list)
            put_at("[" + std::to_string(++row) + "]", record);
    }

    /// `names` are those of the members, with commas between them.
    template <class... Members>
    void put_members(std::string_view names, const Members &...members) {
        (put_at((path_.empty() ? "" : ".") + take_name(names), members), ...);
    }

    static std::string take_name(std::string_view &names) {
        const std::size_t end = names.find(',');
        std::string name(names.substr(0, end));
        names.remove_prefix(end == std::string_view::npos ? names.size() : end + 2);
        return name;
    }

    template <class Value>
    void put_at(const std::string &step, const Value &value) {
        const std::size_t length = path_.size();
        path_ += step;
        put(value);
        path_.resize(length);
    }

    void put_line(std::string_view text) { out_ << path_ << ' ' << text << '\n'; }

    std::ostream &out_;
    std::string path_;
};

bool is_first(std::string_view argument, std::string_view first, std::string_view second) {
    if (argument != first && argument != second)
        throw std::invalid_argument(std::string(argument));
    return argument == first;
}

void dump(const std::vector<std::string> &arguments) {
    kova_host::DialogSettings answers;
    answers.scope = is_first(arguments[0], "transport", "all") ? kova_host::first_button
                                                               : kova_host::second_button;
    answers.index_segment_names =
        is_first(arguments[1], "yes", "no") ? kova_host::first_button : kova_host::second_button;
    kova_host::ReferenceHost host;
    host.answer_dialogs(answers);
    host.set_import_file(arguments[2]);
    {
        const kova_host::Connection connection = host.connect();
        importexport();
    }
    if (host.violation_count() != 0)
        throw std::runtime_error(host.violations().front().sentence);
    if (IMPORT_EXPORT.import_error != 0 || host.progress().empty())
        throw std::runtime_error(arguments[2] + " is not imported whole");
    std::ofstream file(arguments[3], std::ios::binary);
    Dump(file).put(host.model());
    if (!file.flush())
        throw std::runtime_error("cannot write " + arguments[3]);
}

} // namespace

int main(int count, char **arguments) {
    if (count != 5) {
        std::fputs("usage: dump_model all|transport yes|no FILE DUMP\n", stderr);
        return 2;
    }
    try {
        dump({arguments + 1, arguments + count});
    } catch (const std::exception &error) {
        std::fprintf(stderr, "dump_model: %s\n", error.what());
        return 1;
    }
    return 0;
}
