#include "cli/section_overview.h"

#include <algorithm>
#include <initializer_list>

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

/// What the notices of a kind are to a section.
struct Words {
    std::int32_t kind = 0;
    std::string_view singular;
    std::string_view plural;
    std::string_view id;
};

/// In the order of the remarks. What a section has no words of its own for.
constexpr std::array<Words, 8> general_words = {{
    {IMPORT_EXPORT_PLACEHOLDER, "placeholder", "placeholders", "placeholders"},
    {IMPORT_EXPORT_REPLACED, "datum replaced by a later one", "data replaced by later ones",
     "data_replaced"},
    {IMPORT_EXPORT_CONDITION_UNMET, "datum of something that is not simulated",
     "data of something that is not simulated", "data_not_simulated"},
    {IMPORT_EXPORT_NOT_IMPORTED, "datum without a counterpart", "data without a counterpart",
     "data_without_counterpart"},
    {IMPORT_EXPORT_CUT, "text cut", "texts cut", "texts_cut"},
    {IMPORT_EXPORT_CONVERTED, "datum converted", "data converted", "data_converted"},
    {IMPORT_EXPORT_DEFAULTED, "datum given a default", "data given a default", "data_defaulted"},
    {0, "other notice", "other notices", "other_notices"},
}};

constexpr Words systems_dropped = {IMPORT_EXPORT_CONDITION_UNMET, "system dropped",
                                   "systems dropped", "systems_dropped"};
constexpr Words factors_dropped = {IMPORT_EXPORT_NOT_IMPORTED, "factor dropped", "factors dropped",
                                   "factors_dropped"};
constexpr Words descriptions_cut = {IMPORT_EXPORT_CUT, "description cut", "descriptions cut",
                                    "descriptions_cut"};
constexpr Words names_cut = {IMPORT_EXPORT_CUT, "name cut", "names cut", "names_cut"};

/// Words of a kind that the section counts for itself.
constexpr Words counted_already(std::int32_t kind) { return {kind, "", "", ""}; }

/// The facts and what the notices tell beside them, in the section's own words where it has any.
std::vector<Fact> with_remarks(std::vector<Fact> facts, const NoticeCounts &notices,
                               std::initializer_list<Words> own_words = {}) {
    for (const Words &general : general_words) {
        const auto *const own =
            std::find_if(own_words.begin(), own_words.end(),
                         [&](const Words &each) { return each.kind == general.kind; });
        const Words &words = own == own_words.end() ? general : *own;
        if (words.id.empty())
            continue;
        const std::size_t row = kind_row(words.kind);
        const bool is_loss = notice_kinds()[row].level != Level::note;
        facts.push_back({notices[row], words.singular, words.plural,
                         is_loss ? FactKind::lost : FactKind::changed, words.id});
    }
    return facts;
}

std::vector<Fact> model_parameters(const Model &model, const NoticeCounts &notices) {
    return with_remarks(
        {{size_of(model.systems), "system", "systems"}}, notices,
        {{IMPORT_EXPORT_CONDITION_UNMET, "system bypassed", "systems bypassed", "systems_bypassed"},
         names_cut});
}

std::vector<Fact> segments(const Model &model, const NoticeCounts &notices) {
    return with_remarks(
        {{size_of(model.segments), "segment", "segments"}}, notices,
        {{IMPORT_EXPORT_NOT_IMPORTED, "name dropped", "names dropped", "names_dropped"},
         names_cut,
         {IMPORT_EXPORT_CONVERTED, "segment renumbered", "segments renumbered",
          "segments_renumbered"}});
}

std::vector<Fact> flow_paths(const Model &model, const NoticeCounts &notices) {
    return with_remarks({fields(model.flow_fields, model.flow_field_count),
                         functions(sum(model.flow_fields, functions_of_field)),
                         pairs(sum_of_functions(model.flow_fields, pairs_of))},
                        notices);
}

std::vector<Fact> flow_series(const Model &model, const NoticeCounts &notices) {
    return with_remarks({points(sum_of_functions(model.flow_fields, breakpoints_of))}, notices);
}

std::vector<Fact> exchanges(const Model &model, const NoticeCounts &notices) {
    return with_remarks({fields(model.exchange_fields, model.exchange_field_count),
                         functions(sum(model.exchange_fields, functions_of_field)),
                         pairs(sum_of_functions(model.exchange_fields, pairs_of)),
                         points(sum_of_functions(model.exchange_fields, breakpoints_of))},
                        notices, {descriptions_cut});
}

std::vector<Fact> boundaries(const Model &model, const NoticeCounts &notices) {
    const auto boundaries_of = [](const auto &system) { return size_of(system.boundaries); };
    const auto points_of = [](const auto &system) {
        return sum(system.boundaries, points_of_series);
    };
    return with_remarks({{sum(model.systems, boundaries_of), "boundary", "boundaries"},
                         points(sum(model.systems, points_of))},
                        notices, {systems_dropped, factors_dropped});
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
    return with_remarks({real, real_points, placeholders, replaced}, notices,
                        {counted_already(IMPORT_EXPORT_PLACEHOLDER),
                         counted_already(IMPORT_EXPORT_REPLACED), systems_dropped,
                         factors_dropped});
}

std::vector<Fact> time_functions(const Model &model, const NoticeCounts &notices) {
    Fact all = functions(0);
    Fact series{0, "series", "series"};
    Fact all_points = points(0);
    for (const kova_host::TimeFunction &function : model.time_functions) {
        if (function.follows_constants)
            continue;
        ++all.count;
        series.count += size_of(function.series);
        all_points.count += sum(function.series, breakpoints_of);
    }
    return with_remarks(
        {all, series, all_points}, notices,
        {{IMPORT_EXPORT_PLACEHOLDER, "empty series", "empty series", "empty_series"},
         {IMPORT_EXPORT_REPLACED, "function replaced by a later one",
          "functions replaced by later ones", "functions_replaced"},
         {IMPORT_EXPORT_CONDITION_UNMET, "function of something that is not simulated",
          "functions of something that is not simulated", "functions_not_simulated"},
         {IMPORT_EXPORT_NOT_IMPORTED, "function without a counterpart",
          "functions without a counterpart", "functions_without_counterpart"},
         names_cut,
         {IMPORT_EXPORT_CONVERTED, "function converted", "functions converted",
          "functions_converted"}});
}

std::vector<Fact> segment_parameters(const Model &model, const NoticeCounts &notices) {
    const auto values_of = [](const auto &parameter) { return size_of(parameter.values); };
    return with_remarks(
        {{size_of(model.segment_parameters), "parameter", "parameters"},
         {sum(model.segment_parameters, values_of), "value", "values"}},
        notices,
        {{IMPORT_EXPORT_REPLACED, "value replaced by a later one", "values replaced by later ones",
          "values_replaced"},
         {IMPORT_EXPORT_CONDITION_UNMET, "parameter of something that is not simulated",
          "parameters of something that is not simulated", "parameters_not_simulated"},
         {IMPORT_EXPORT_NOT_IMPORTED, "parameter without a counterpart",
          "parameters without a counterpart", "parameters_without_counterpart"},
         {IMPORT_EXPORT_CONVERTED, "parameter converted", "parameters converted",
          "parameters_converted"}});
}

std::vector<Fact> constants(const Model &model, const NoticeCounts &notices) {
    const auto series =
        std::count_if(model.time_functions.begin(), model.time_functions.end(),
                      [](const auto &function) { return function.follows_constants; });
    return with_remarks(
        {{size_of(model.constants), "constant", "constants"},
         {series, "time function", "time functions", FactKind::brought, "time_functions"}},
        notices,
        {{IMPORT_EXPORT_REPLACED, "constant replaced by a later one",
          "constants replaced by later ones", "constants_replaced"},
         {IMPORT_EXPORT_CONDITION_UNMET, "constant of something that is not simulated",
          "constants of something that is not simulated", "constants_not_simulated"},
         {IMPORT_EXPORT_NOT_IMPORTED, "constant without a counterpart",
          "constants without a counterpart", "constants_without_counterpart"},
         {IMPORT_EXPORT_CONVERTED, "constant converted", "constants converted",
          "constants_converted"}});
}

std::vector<Fact> initial_conditions(const Model &model, const NoticeCounts &notices) {
    const auto systems =
        std::count_if(model.systems.begin(), model.systems.end(),
                      [](const auto &system) { return system.has_initial_settings; });
    const auto concentrations_of = [](const auto &system) {
        return size_of(system.initial_conditions);
    };
    return with_remarks(
        {{systems, "system", "systems"},
         {sum(model.systems, concentrations_of), "concentration", "concentrations"}},
        notices,
        {{IMPORT_EXPORT_REPLACED, "concentration replaced by a later one",
          "concentrations replaced by later ones", "concentrations_replaced"},
         systems_dropped,
         {IMPORT_EXPORT_NOT_IMPORTED, "maximum concentration dropped",
          "maximum concentrations dropped", "maximum_concentrations_dropped"}});
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
