#pragma once

// Outcomes of imports that never were, for the tests.

#include "cli/diagnostics.h"
#include "cli/import_outcome.h"
#include "cli/json_output.h"
#include "cli/sarif_output.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kova_command {

/// What `write(sink)` writes, joined.
template <class Write>
std::string written_by(Write write) {
    std::string text;
    write([&text](std::string_view piece) { text += piece; });
    return text;
}

inline std::string import_json(const ImportOutcome &outcome,
                               const kova_host::Model *model = nullptr) {
    return written_by([&](const TextSink &sink) { import_json(sink, outcome, model); });
}

inline std::string check_json(const std::vector<ImportOutcome> &outcomes, int exit_status) {
    return written_by([&](const TextSink &sink) { check_json(sink, outcomes, exit_status); });
}

inline std::string check_sarif(const std::vector<ImportOutcome> &outcomes, int exit_status) {
    return written_by([&](const TextSink &sink) { check_sarif(sink, outcomes, exit_status); });
}

inline std::string diagnostics_text(const ImportOutcome &outcome, const DiagnosticStyle &style) {
    return written_by([&](const TextSink &sink) { write_diagnostics(sink, outcome, style); });
}

inline Notice read_failure() {
    Notice notice;
    notice.kind = IMPORT_EXPORT_READ_FAILED;
    notice.section = 2;
    notice.section_name = "segments";
    notice.statement = "segment geometry";
    notice.statement_number = 17;
    notice.line = 16;
    notice.column = 5;
    notice.width = 2;
    notice.field = "bottom segment";
    notice.expected = "an integer";
    notice.found = "1x";
    notice.reason = "The value cannot be converted.";
    notice.advice = "Write it with digits only.";
    notice.line_text = "  1 1x 3";
    notice.line_text_column = 1;
    return notice;
}

inline Notice notice_of(std::int32_t kind, std::int32_t section, const std::string &reason,
                        std::int64_t line = 0) {
    Notice notice;
    notice.kind = kind;
    notice.section = section;
    notice.section_name = section_descriptions()[static_cast<std::size_t>(section - 1)].name;
    notice.reason = reason;
    notice.line = line;
    return notice;
}

inline ImportOutcome outcome_with(Verdict verdict) {
    ImportOutcome outcome;
    outcome.path = "river.inp";
    outcome.verdict = verdict;
    for (const SectionDescription &section : section_descriptions())
        outcome.sections.push_back({section.name, SectionStatus::imported, {}});
    return outcome;
}

inline kova_host::Load load_of(std::int32_t segment, std::vector<kova_host::Breakpoint> series) {
    kova_host::Load load;
    load.segment = segment;
    load.breakpoint_count = static_cast<std::int32_t>(series.size());
    load.times_announced = 1;
    load.series = std::move(series);
    return load;
}

/// What a host holds of a system without loads.
inline kova_host::System system_without_loads(const std::string &name) {
    kova_host::System system;
    system.long_name = name;
    system.has_no_load_factors = true;
    system.loads = {load_of(1, {{0, 0}, {0, 0}})};
    return system;
}

inline kova_host::Boundary boundary_of(std::int32_t segment,
                                       std::vector<kova_host::Breakpoint> series) {
    kova_host::Boundary boundary;
    boundary.segment = segment;
    boundary.breakpoint_count = static_cast<std::int32_t>(series.size());
    boundary.series = std::move(series);
    return boundary;
}

/// A model with one datum of each kind at least; every number differs from its neighbours.
inline kova_host::Model small_model() {
    kova_host::Model model;
    model.segment_count = 2;
    model.segments.resize(2);
    model.segments[0].flow_option = 3;
    model.segments[1].flow_option = 3;
    model.settings.hydrodynamic_file = "river.hyd";
    model.settings.load_option = 1;
    model.settings.non_point_source_file = "runoff\xB0.nps"; // Windows-1252
    model.flow_field_count = 2;
    model.flow_fields.resize(2);
    model.flow_fields[0].function_count = 1;
    model.flow_fields[0].scale_factor = 0.1F;
    model.flow_fields[0].conversion_factor = 2.5F;
    model.flow_fields[0].functions = {
        {"Creek", 2, {{0, 1, 1}, {1, 2, 0.75F}}, 3, {{10, 0}, {11, 1}, {12, 2.5F}}}};
    model.exchange_field_count = 3; // those without functions are told by the count only
    model.exchange_fields.resize(1);
    model.exchange_fields[0].function_count = 1;
    model.exchange_fields[0].scale_factor = 0.2F;
    model.exchange_fields[0].conversion_factor = 3.5F;
    model.exchange_fields[0].functions = {
        {"Wind", 1, {{1, 2, 40.5F, 50.25F}}, 2, {{0, 1e-9F}, {365, 2e-9F}}}};
    kova_host::System salinity;
    salinity.long_name = "Salinity";
    salinity.boundary_count = 2;
    salinity.boundary_scale_factor = 1.25F;
    salinity.boundaries = {boundary_of(1, {{0, 30}, {365, 31}}), boundary_of(2, {{0, 32}})};
    salinity.load_conversion_factor = 4.5F;
    salinity.loads = {load_of(2, {{0, 7}, {100, 8}, {365, 9}})};
    salinity.loads[0].times_announced = 3;
    salinity.has_initial_settings = true;
    salinity.maximum_concentration = 1e8F;
    salinity.density = 1.5F;
    salinity.flow_field = 3;
    salinity.initial_conditions = {{33.5F, 1}, {34.5F, 0.75F}};
    model.systems = {salinity, system_without_loads("Ammonia")};
    model.system_count = 2;
    model.time_functions = {{17, false, {{2, {{0, 5.5F}, {365, 6.5F}}}, {1, {{0, 7.5F}}}}},
                            {37, true, {{2, {{0, 15}, {365, 15}}}}}};
    model.segment_parameters = {{41, 1, 2.5F, {0.25F, 0.5F}}, {3, 2, 1, {1, 2, 3}}};
    model.constants = {{64, 1, 0.125F, 1}, {64, 2, 0.375F, 1}, {5, 1, 8, 0}};
    return model;
}

/// The facts of all sections, as an import has them.
inline void describe(ImportOutcome &outcome, const kova_host::Model &model) {
    for (std::size_t i = 0; i < section_count; ++i)
        outcome.sections[i].facts =
            section_descriptions()[i].facts(model, outcome.section_notice_counts[i]);
}

} // namespace kova_command
