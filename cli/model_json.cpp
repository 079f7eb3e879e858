#include "cli/model_json.h"

#include "cli/text.h"

#include <array>
#include <cmath>
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

/// A list of what `convert` makes of each entry.
template <class List, class Convert>
Json list_json(const List &list, Convert convert) {
    Json json = Json::array();
    for (const auto &each : list)
        json.push_back(convert(each));
    return json;
}

/// A list of one number of each entry.
template <class Record>
Json column_json(const std::vector<Record> &list, float Record::*member) {
    return list_json(list, [member](const Record &each) { return number_json(each.*member); });
}

template <class Field, class Convert>
Json fields_json(const std::vector<Field> &fields, Convert convert_function) {
    return list_json(fields, [&](const Field &field) {
        Json json;
        json["function_count"] = field.function_count;
        json["functions"] = list_json(field.functions, convert_function);
        return json;
    });
}

/// The factors before the functions.
template <class Field, class Convert>
Json scaled_fields_json(const std::vector<Field> &fields, Convert convert_function) {
    return list_json(fields, [&](const Field &field) {
        Json json;
        json["function_count"] = field.function_count;
        json["scale_factor"] = number_json(field.scale_factor);
        json["conversion_factor"] = number_json(field.conversion_factor);
        json["functions"] = list_json(field.functions, convert_function);
        return json;
    });
}

void put_series(Json &json, const std::vector<kova_host::Breakpoint> &series) {
    json["times"] = column_json(series, &kova_host::Breakpoint::time);
    json["values"] = column_json(series, &kova_host::Breakpoint::value);
}

Json flow_path_json(const kova_host::FlowFunction &function) {
    Json json;
    json["description"] = text_json(function.description);
    json["pair_count"] = function.pair_count;
    json["pairs"] = list_json(function.pairs, [](const kova_host::FlowPair &pair) {
        Json entry;
        entry["first_segment"] = pair.first_segment;
        entry["second_segment"] = pair.second_segment;
        entry["routing_fraction"] = number_json(pair.routing_fraction);
        return entry;
    });
    return json;
}

Json flow_paths_json(const Model &model) {
    Json json;
    json["flow_options"] = list_json(
        model.segments, [](const kova_host::Segment &segment) { return segment.flow_option; });
    json["hydrodynamic_file"] = file_json(model.settings.hydrodynamic_file);
    json["field_count"] = model.flow_field_count;
    json["fields"] = fields_json(model.flow_fields, flow_path_json);
    return json;
}

Json flow_series_json(const kova_host::FlowFunction &function) {
    Json json;
    json["breakpoint_count"] = function.breakpoint_count;
    json["first_values"] =
        column_json(function.breakpoints, &kova_host::FlowBreakpoint::first_value);
    json["second_values"] =
        column_json(function.breakpoints, &kova_host::FlowBreakpoint::second_value);
    return json;
}

Json flow_time_series_json(const Model &model) {
    Json json;
    json["field_count"] = model.flow_field_count;
    json["fields"] = scaled_fields_json(model.flow_fields, flow_series_json);
    return json;
}

Json exchange_json(const kova_host::ExchangeFunction &function) {
    Json json;
    json["description"] = text_json(function.description);
    json["pair_count"] = function.pair_count;
    json["pairs"] = list_json(function.pairs, [](const kova_host::ExchangePair &pair) {
        Json entry;
        entry["first_segment"] = pair.first_segment;
        entry["second_segment"] = pair.second_segment;
        entry["interfacial_area"] = number_json(pair.interfacial_area);
        entry["mixing_length"] = number_json(pair.mixing_length);
        return entry;
    });
    json["breakpoint_count"] = function.breakpoint_count;
    put_series(json, function.breakpoints);
    return json;
}

Json exchanges_json(const Model &model) {
    Json json;
    json["field_count"] = model.exchange_field_count;
    json["fields"] = scaled_fields_json(model.exchange_fields, exchange_json);
    return json;
}

Json boundary_conditions_json(const Model &model) {
    Json json;
    json["systems"] = list_json(model.systems, [](const kova_host::System &system) {
        Json entry;
        entry["name"] = text_json(system.long_name);
        entry["boundary_count"] = system.boundary_count;
        entry["scale_factor"] = number_json(system.boundary_scale_factor);
        entry["boundaries"] = list_json(system.boundaries, [](const kova_host::Boundary &boundary) {
            Json each;
            each["segment"] = boundary.segment;
            each["breakpoint_count"] = boundary.breakpoint_count;
            put_series(each, boundary.series);
            return each;
        });
        return entry;
    });
    return json;
}

Json load_json(const kova_host::System &system, const kova_host::Load &load) {
    Json json;
    json["segment"] = load.segment;
    json["placeholder"] = kova_host::is_placeholder(system, load);
    json["replaced"] = kova_host::replaced_count(load);
    json["breakpoint_count"] = load.breakpoint_count;
    put_series(json, load.series);
    return json;
}

Json loads_json(const Model &model) {
    Json json;
    json["load_option"] = model.settings.load_option;
    json["non_point_source_file"] = file_json(model.settings.non_point_source_file);
    json["systems"] = list_json(model.systems, [](const kova_host::System &system) {
        const bool has_none = system.has_no_load_factors;
        Json entry;
        entry["name"] = text_json(system.long_name);
        entry["conversion_factor"] = number_json(system.load_conversion_factor);
        entry["scale_factor_without_loads"] =
            has_none ? number_json(system.no_load_scale_factor) : Json();
        entry["conversion_factor_without_loads"] =
            has_none ? number_json(system.no_load_conversion_factor) : Json();
        entry["loads"] = list_json(system.loads,
                                   [&system](const auto &load) { return load_json(system, load); });
        return entry;
    });
    return json;
}

Json time_function_json(const kova_host::TimeFunction &function) {
    Json json;
    json["number"] = function.number;
    json["series"] = list_json(function.series, [](const kova_host::TimeFunctionSeries &series) {
        Json entry;
        entry["breakpoint_count"] = series.breakpoint_count;
        put_series(entry, series.breakpoints);
        return entry;
    });
    return json;
}

/// The time functions of their own section, or the constants that are time functions.
Json time_functions_json(const Model &model, bool follow_constants) {
    Json json = Json::array();
    for (const kova_host::TimeFunction &function : model.time_functions)
        if (function.follows_constants == follow_constants)
            json.push_back(time_function_json(function));
    return json;
}

Json time_function_section_json(const Model &model) {
    Json json;
    json["functions"] = time_functions_json(model, false);
    return json;
}

Json segment_parameters_json(const Model &model) {
    Json json;
    json["parameters"] =
        list_json(model.segment_parameters, [](const kova_host::SegmentParameter &parameter) {
            Json entry;
            entry["number"] = parameter.number;
            entry["class_index"] = parameter.class_index;
            entry["scale_factor"] = number_json(parameter.scale_factor);
            entry["values"] = list_json(parameter.values, number_json);
            return entry;
        });
    return json;
}

Json constants_json(const Model &model) {
    Json json;
    json["constants"] = list_json(model.constants, [](const kova_host::Constant &constant) {
        Json entry;
        entry["number"] = constant.number;
        entry["column"] = constant.column;
        entry["value"] = number_json(constant.value);
        entry["used"] = constant.used;
        return entry;
    });
    json["time_functions"] = time_functions_json(model, true);
    return json;
}

Json initial_conditions_json(const Model &model) {
    using kova_host::InitialCondition;
    Json json;
    json["systems"] = list_json(model.systems, [](const kova_host::System &system) {
        Json entry;
        entry["name"] = text_json(system.long_name);
        entry["maximum_concentration"] = number_json(system.maximum_concentration);
        entry["density"] = number_json(system.density);
        entry["flow_field"] = system.flow_field;
        entry["concentrations"] =
            column_json(system.initial_conditions, &InitialCondition::concentration);
        entry["dissolved_fractions"] =
            column_json(system.initial_conditions, &InitialCondition::dissolved_fraction);
        return entry;
    });
    return json;
}

struct Row {
    std::size_t section; ///< from 0
    std::string_view name;
    Json (*data)(const Model &);
};

constexpr std::array rows = {
    Row{2, "flow_paths", flow_paths_json},
    Row{3, "flow_time_series", flow_time_series_json},
    Row{4, "exchanges", exchanges_json},
    Row{5, "boundary_conditions", boundary_conditions_json},
    Row{6, "loads", loads_json},
    Row{7, "environmental_time_functions", time_function_section_json},
    Row{8, "segment_parameters", segment_parameters_json},
    Row{9, "kinetic_constants", constants_json},
    Row{10, "initial_conditions", initial_conditions_json},
};

} // namespace

Json number_json(float number) {
    return std::isfinite(number) ? Json(std::stod(decimal(number))) : Json();
}

Json data_json(const ImportOutcome &outcome, const Model &model) {
    Json json;
    for (const Row &row : rows) {
        const bool is_imported = row.section < outcome.sections.size() &&
                                 outcome.sections[row.section].status == SectionStatus::imported;
        json[std::string(row.name)] = is_imported ? row.data(model) : Json();
    }
    return json;
}

} // namespace kova_command
