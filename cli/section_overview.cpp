#include "cli/section_overview.h"

#include <algorithm>

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

constexpr auto functions_of_field = [](const auto &field) { return size_of(field.functions); };
constexpr auto pairs_of = [](const auto &each) { return size_of(each.pairs); };
constexpr auto breakpoints_of = [](const auto &each) { return size_of(each.breakpoints); };
constexpr auto points_of_series = [](const auto &each) { return size_of(each.series); };

/// A field of which nothing but the count of all is told counts, too.
template <class Fields>
Fact fields(const Fields &list, std::int32_t announced) {
    return {std::max<std::int64_t>(size_of(list), announced), "field", "fields"};
}
Fact functions(std::int64_t count) { return {count, "function", "functions"}; }
Fact pairs(std::int64_t count) { return {count, "pair", "pairs"}; }
Fact points(std::int64_t count) { return {count, "breakpoint", "breakpoints"}; }

std::int64_t told(const NoticeCounts &notices, std::int32_t kind) {
    return notices[kind_row(kind)];
}

Fact cut_descriptions(const NoticeCounts &notices) {
    return {told(notices, IMPORT_EXPORT_CUT), "description cut", "descriptions cut", FactKind::lost,
            "descriptions_cut"};
}

Fact replaced(const NoticeCounts &notices) {
    return {told(notices, IMPORT_EXPORT_REPLACED), "datum replaced by a later one",
            "data replaced by later ones", FactKind::lost, "data_replaced"};
}

Fact dropped_systems(const NoticeCounts &notices) {
    return {told(notices, IMPORT_EXPORT_CONDITION_UNMET), "system dropped", "systems dropped",
            FactKind::lost, "systems_dropped"};
}

Fact dropped_factors(const NoticeCounts &notices) {
    return {told(notices, IMPORT_EXPORT_NOT_IMPORTED), "factor dropped", "factors dropped",
            FactKind::lost, "factors_dropped"};
}

std::vector<Fact> model_parameters(const Model &model, const NoticeCounts &) {
    return {{size_of(model.systems), "system", "systems"}};
}

std::vector<Fact> segments(const Model &model, const NoticeCounts &) {
    return {{size_of(model.segments), "segment", "segments"}};
}

std::vector<Fact> flow_paths(const Model &model, const NoticeCounts &notices) {
    return {fields(model.flow_fields, model.flow_field_count),
            functions(sum(model.flow_fields, functions_of_field)),
            pairs(sum_of_functions(model.flow_fields, pairs_of)), cut_descriptions(notices)};
}

std::vector<Fact> flow_series(const Model &model, const NoticeCounts &notices) {
    return {points(sum_of_functions(model.flow_fields, breakpoints_of)), replaced(notices)};
}

std::vector<Fact> exchanges(const Model &model, const NoticeCounts &notices) {
    return {fields(model.exchange_fields, model.exchange_field_count),
            functions(sum(model.exchange_fields, functions_of_field)),
            pairs(sum_of_functions(model.exchange_fields, pairs_of)),
            points(sum_of_functions(model.exchange_fields, breakpoints_of)),
            replaced(notices),
            cut_descriptions(notices)};
}

std::vector<Fact> boundaries(const Model &model, const NoticeCounts &notices) {
    return {
        {sum(model.systems, [](const auto &system) { return size_of(system.boundaries); }),
         "boundary", "boundaries"},
        points(sum(model.systems,
                   [](const auto &system) { return sum(system.boundaries, points_of_series); })),
        dropped_systems(notices),
        dropped_factors(notices)};
}

std::vector<Fact> loads(const Model &model, const NoticeCounts &notices) {
    Fact real{0, "load", "loads"};
    Fact real_points = points(0);
    Fact placeholders{0, "placeholder", "placeholders", FactKind::changed};
    Fact replaced{0, "load replaced by a later one", "loads replaced by later ones", FactKind::lost,
                  "loads_replaced"};
    for (const kova_host::System &system : model.systems)
        for (const kova_host::Load &load : system.loads) {
            replaced.count += kova_host::replaced_count(load);
            if (kova_host::is_placeholder(system, load)) {
                ++placeholders.count;
                continue;
            }
            ++real.count;
            real_points.count += points_of_series(load);
        }
    return {real,
            real_points,
            placeholders,
            replaced,
            dropped_systems(notices),
            dropped_factors(notices)};
}

std::vector<Fact> time_functions(const Model &model, const NoticeCounts &) {
    return {functions(size_of(model.time_functions)),
            {sum(model.time_functions, points_of_series), "series", "series"},
            points(sum(model.time_functions,
                       [](const auto &function) { return sum(function.series, breakpoints_of); }))};
}

std::vector<Fact> segment_parameters(const Model &model, const NoticeCounts &) {
    return {{size_of(model.segment_parameters), "parameter", "parameters"},
            {sum(model.segment_parameters,
                 [](const auto &parameter) { return size_of(parameter.values); }),
             "value", "values"}};
}

std::vector<Fact> constants(const Model &model, const NoticeCounts &) {
    return {{size_of(model.constants), "constant", "constants"}};
}

std::vector<Fact> initial_conditions(const Model &model, const NoticeCounts &) {
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
