#include "cli/section_overview.h"

namespace kova_command {

namespace {

using kova_host::Model;

template <class List>
std::int64_t size_of(const List &list) {
    return static_cast<std::int64_t>(list.size());
}

template <class List, class Count>
std::int64_t sum(const List &list, Count count) {
    std::int64_t total = 0;
    for (const auto &each : list)
        total += count(each);
    return total;
}

/// Sum over the functions of all fields.
template <class Fields, class Count>
std::int64_t sum_of_functions(const Fields &fields, Count count) {
    return sum(fields, [&](const auto &field) { return sum(field.functions, count); });
}

constexpr auto pairs = [](const auto &each) { return size_of(each.pairs); };
constexpr auto breakpoints = [](const auto &each) { return size_of(each.breakpoints); };
constexpr auto points_of_series = [](const auto &each) { return size_of(each.series); };

Fact functions(std::int64_t count) { return {count, "function", "functions"}; }
Fact points(std::int64_t count) { return {count, "breakpoint", "breakpoints"}; }

std::vector<Fact> model_parameters(const Model &model) {
    return {{size_of(model.systems), "system", "systems"}};
}

std::vector<Fact> segments(const Model &model) {
    return {{size_of(model.segments), "segment", "segments"}};
}

std::vector<Fact> flow_paths(const Model &model) {
    return {{size_of(model.flow_fields), "field", "fields"},
            functions(
                sum(model.flow_fields, [](const auto &field) { return size_of(field.functions); })),
            {sum_of_functions(model.flow_fields, pairs), "path", "paths"}};
}

std::vector<Fact> flow_series(const Model &model) {
    return {points(sum_of_functions(model.flow_fields, breakpoints))};
}

std::vector<Fact> exchanges(const Model &model) {
    return {{size_of(model.exchange_fields), "field", "fields"},
            functions(sum(model.exchange_fields,
                          [](const auto &field) { return size_of(field.functions); })),
            {sum_of_functions(model.exchange_fields, pairs), "pair", "pairs"},
            points(sum_of_functions(model.exchange_fields, breakpoints))};
}

std::vector<Fact> boundaries(const Model &model) {
    return {{sum(model.systems, [](const auto &system) { return size_of(system.boundaries); }),
             "boundary", "boundaries"},
            points(sum(model.systems, [](const auto &system) {
                return sum(system.boundaries, points_of_series);
            }))};
}

std::vector<Fact> loads(const Model &model) {
    return {{sum(model.systems, [](const auto &system) { return size_of(system.loads); }), "load",
             "loads"},
            points(sum(model.systems,
                       [](const auto &system) { return sum(system.loads, points_of_series); }))};
}

std::vector<Fact> time_functions(const Model &model) {
    return {functions(size_of(model.time_functions)),
            {sum(model.time_functions, points_of_series), "series", "series"},
            points(sum(model.time_functions,
                       [](const auto &function) { return sum(function.series, breakpoints); }))};
}

std::vector<Fact> segment_parameters(const Model &model) {
    return {{size_of(model.segment_parameters), "parameter", "parameters"},
            {sum(model.segment_parameters,
                 [](const auto &parameter) { return size_of(parameter.values); }),
             "value", "values"}};
}

std::vector<Fact> constants(const Model &model) {
    return {{size_of(model.constants), "constant", "constants"}};
}

std::vector<Fact> initial_conditions(const Model &model) {
    return {
        {sum(model.systems, [](const auto &system) { return size_of(system.initial_conditions); }),
         "concentration", "concentrations"}};
}

constexpr std::array<SectionDescription, section_count> descriptions = {{
    {"model parameters", true, model_parameters},
    {"segments", true, segments},
    {"flow paths", true, flow_paths},
    {"flow time series", true, flow_series},
    {"exchanges", true, exchanges},
    {"boundary conditions", false, boundaries},
    {"loads", false, loads},
    {"environmental time functions", false, time_functions},
    {"segment parameters", false, segment_parameters},
    {"kinetic constants", false, constants},
    {"initial conditions", false, initial_conditions},
}};

} // namespace

const std::array<SectionDescription, section_count> &section_descriptions() { return descriptions; }

} // namespace kova_command
