#include "cli/model_json.h"

#include "cli/text.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kova_command {

namespace {

using kova_host::Model;

Json text_json(const std::string &text) { return to_utf8(text); }

Json file_json(const std::string &path) { return path.empty() ? Json() : Json(to_utf8(path)); }

/// A member that is a list of one number of each entry.
template <class Record>
void write_column(JsonWriter &out, std::string_view name, const std::vector<Record> &list,
                  float Record::*member) {
    out.key(name);
    out.list(list, [&](const Record &each) { out.number(each.*member); });
}

template <class Field, class Write>
void write_fields(JsonWriter &out, const std::vector<Field> &fields, Write write_function) {
    out.key("fields");
    out.list(fields, [&](const Field &field) {
        out.open_object();
        out.member("function_count", field.function_count);
        out.key("functions");
        out.list(field.functions, [&](const auto &function) { write_function(out, function); });
        out.close();
    });
}

/// The factors before the functions.
template <class Field, class Write>
void write_scaled_fields(JsonWriter &out, const std::vector<Field> &fields, Write write_function) {
    out.key("fields");
    out.list(fields, [&](const Field &field) {
        out.open_object();
        out.member("function_count", field.function_count);
        out.member("scale_factor", number_json(field.scale_factor));
        out.member("conversion_factor", number_json(field.conversion_factor));
        out.key("functions");
        out.list(field.functions, [&](const auto &function) { write_function(out, function); });
        out.close();
    });
}

void write_series(JsonWriter &out, const std::vector<kova_host::Breakpoint> &series) {
    write_column(out, "times", series, &kova_host::Breakpoint::time);
    write_column(out, "values", series, &kova_host::Breakpoint::value);
}

void write_flow_path(JsonWriter &out, const kova_host::FlowFunction &function) {
    out.open_object();
    out.member("description", text_json(function.description));
    out.member("pair_count", function.pair_count);
    out.key("pairs");
    out.list(function.pairs, [&](const kova_host::FlowPair &pair) {
        Json entry;
        entry["first_segment"] = pair.first_segment;
        entry["second_segment"] = pair.second_segment;
        entry["routing_fraction"] = number_json(pair.routing_fraction);
        out.value(entry);
    });
    out.close();
}

void write_flow_paths(JsonWriter &out, const Model &model) {
    out.key("flow_options");
    out.list(model.segments,
             [&](const kova_host::Segment &segment) { out.value(segment.flow_option); });
    out.member("hydrodynamic_file", file_json(model.settings.hydrodynamic_file));
    out.member("field_count", model.flow_field_count);
    write_fields(out, model.flow_fields, write_flow_path);
}

void write_flow_function_series(JsonWriter &out, const kova_host::FlowFunction &function) {
    out.open_object();
    out.member("breakpoint_count", function.breakpoint_count);
    write_column(out, "first_values", function.breakpoints,
                 &kova_host::FlowBreakpoint::first_value);
    write_column(out, "second_values", function.breakpoints,
                 &kova_host::FlowBreakpoint::second_value);
    out.close();
}

void write_flow_time_series(JsonWriter &out, const Model &model) {
    out.member("field_count", model.flow_field_count);
    write_scaled_fields(out, model.flow_fields, write_flow_function_series);
}

void write_exchange(JsonWriter &out, const kova_host::ExchangeFunction &function) {
    out.open_object();
    out.member("description", text_json(function.description));
    out.member("pair_count", function.pair_count);
    out.key("pairs");
    out.list(function.pairs, [&](const kova_host::ExchangePair &pair) {
        Json entry;
        entry["first_segment"] = pair.first_segment;
        entry["second_segment"] = pair.second_segment;
        entry["interfacial_area"] = number_json(pair.interfacial_area);
        entry["mixing_length"] = number_json(pair.mixing_length);
        out.value(entry);
    });
    out.member("breakpoint_count", function.breakpoint_count);
    write_series(out, function.breakpoints);
    out.close();
}

void write_exchanges(JsonWriter &out, const Model &model) {
    out.member("field_count", model.exchange_field_count);
    write_scaled_fields(out, model.exchange_fields, write_exchange);
}

void write_boundary_conditions(JsonWriter &out, const Model &model) {
    out.key("systems");
    out.list(model.systems, [&](const kova_host::System &system) {
        out.open_object();
        out.member("name", text_json(system.long_name));
        out.member("boundary_count", system.boundary_count);
        out.member("scale_factor", number_json(system.boundary_scale_factor));
        out.key("boundaries");
        out.list(system.boundaries, [&](const kova_host::Boundary &boundary) {
            out.open_object();
            out.member("segment", boundary.segment);
            out.member("breakpoint_count", boundary.breakpoint_count);
            write_series(out, boundary.series);
            out.close();
        });
        out.close();
    });
}

void write_load(JsonWriter &out, const kova_host::System &system, const kova_host::Load &load) {
    out.open_object();
    out.member("segment", load.segment);
    out.member("placeholder", kova_host::is_placeholder(system, load));
    out.member("replaced", kova_host::replaced_count(load));
    out.member("breakpoint_count", load.breakpoint_count);
    write_series(out, load.series);
    out.close();
}

void write_loads(JsonWriter &out, const Model &model) {
    out.member("load_option", model.settings.load_option);
    out.member("non_point_source_file", file_json(model.settings.non_point_source_file));
    out.key("systems");
    out.list(model.systems, [&](const kova_host::System &system) {
        const bool has_none = system.has_no_load_factors;
        out.open_object();
        out.member("name", text_json(system.long_name));
        out.member("conversion_factor", number_json(system.load_conversion_factor));
        out.member("scale_factor_without_loads",
                   has_none ? number_json(system.no_load_scale_factor) : Json());
        out.member("conversion_factor_without_loads",
                   has_none ? number_json(system.no_load_conversion_factor) : Json());
        out.key("loads");
        out.list(system.loads, [&](const kova_host::Load &load) { write_load(out, system, load); });
        out.close();
    });
}

void write_time_function(JsonWriter &out, const kova_host::TimeFunction &function) {
    out.open_object();
    out.member("number", function.number);
    out.key("series");
    out.list(function.series, [&](const kova_host::TimeFunctionSeries &series) {
        out.open_object();
        out.member("breakpoint_count", series.breakpoint_count);
        write_series(out, series.breakpoints);
        out.close();
    });
    out.close();
}

/// The time functions of their own section, or the constants that are time functions.
void write_time_functions(JsonWriter &out, const Model &model, bool follow_constants) {
    out.list(model.time_functions, [&](const kova_host::TimeFunction &function) {
        if (function.follows_constants == follow_constants)
            write_time_function(out, function);
    });
}

void write_time_function_section(JsonWriter &out, const Model &model) {
    out.key("functions");
    write_time_functions(out, model, false);
}

void write_segment_parameters(JsonWriter &out, const Model &model) {
    out.key("parameters");
    out.list(model.segment_parameters, [&](const kova_host::SegmentParameter &parameter) {
        out.open_object();
        out.member("number", parameter.number);
        out.member("class_index", parameter.class_index);
        out.member("scale_factor", number_json(parameter.scale_factor));
        out.key("values");
        out.list(parameter.values, [&](float value) { out.number(value); });
        out.close();
    });
}

void write_constants(JsonWriter &out, const Model &model) {
    out.key("constants");
    out.list(model.constants, [&](const kova_host::Constant &constant) {
        Json entry;
        entry["number"] = constant.number;
        entry["column"] = constant.column;
        entry["value"] = number_json(constant.value);
        entry["used"] = constant.used;
        out.value(entry);
    });
    out.key("time_functions");
    write_time_functions(out, model, true);
}

void write_initial_conditions(JsonWriter &out, const Model &model) {
    using kova_host::InitialCondition;
    out.key("systems");
    out.list(model.systems, [&](const kova_host::System &system) {
        out.open_object();
        out.member("name", text_json(system.long_name));
        out.member("maximum_concentration", number_json(system.maximum_concentration));
        out.member("density", number_json(system.density));
        out.member("flow_field", system.flow_field);
        write_column(out, "concentrations", system.initial_conditions,
                     &InitialCondition::concentration);
        write_column(out, "dissolved_fractions", system.initial_conditions,
                     &InitialCondition::dissolved_fraction);
        out.close();
    });
}

struct Row {
    std::size_t section; ///< from 0
    std::string_view name;
    void (*write)(JsonWriter &, const Model &); ///< its members
};

constexpr std::array rows = {
    Row{2, "flow_paths", write_flow_paths},
    Row{3, "flow_time_series", write_flow_time_series},
    Row{4, "exchanges", write_exchanges},
    Row{5, "boundary_conditions", write_boundary_conditions},
    Row{6, "loads", write_loads},
    Row{7, "environmental_time_functions", write_time_function_section},
    Row{8, "segment_parameters", write_segment_parameters},
    Row{9, "kinetic_constants", write_constants},
    Row{10, "initial_conditions", write_initial_conditions},
};

} // namespace

void write_data(JsonWriter &out, const ImportOutcome &outcome, const Model &model) {
    out.open_object();
    for (const Row &row : rows) {
        const bool is_imported = row.section < outcome.sections.size() &&
                                 outcome.sections[row.section].status == SectionStatus::imported;
        out.key(row.name);
        if (is_imported) {
            out.open_object();
            row.write(out, model);
            out.close();
        } else {
            out.value({});
        }
    }
    out.close();
}

} // namespace kova_command
