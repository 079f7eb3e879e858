#include "control/sections/model_parameters.h"

#include "control/notices.h"

#include "legacy/sections.h"
#include "legacy/state_variables.h"

#include <algorithm>
#include <array>

namespace kova_import::legacy {

namespace {

using BypassFlags = std::array<std::int32_t, legacy_system_count>;

void read_output_intervals(ImportModule &module, ModelParameters &parameters) {
    RecordReader &reader = module.reader;
    std::int32_t record_count = 0;
    reader.list("output-interval count", field("output-interval count", record_count));
    reader.for_each_record(record_count, [&](std::int32_t) {
        float time = 0;
        reader.list("output interval", field("time", time),
                    field("output interval", parameters.output_interval));
    });
    if (reader.ok() && record_count > 1)
        give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                    "Of several output intervals only the last one comes across.");
}

// Two blocks at the end of the section belong to functions that the model has lost. Each is a count
// and that many records, which nobody looks into.
void skip_block(ImportModule &module, const char *count_name, const char *record_name) {
    RecordReader &reader = module.reader;
    std::int32_t record_count = 0;
    reader.list(count_name, field(count_name, record_count));
    reader.for_each_record(record_count, [&](std::int32_t) { reader.list(record_name); });
    if (reader.ok() && record_count > 0)
        give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                    "The block belongs to a function that the current model does not have.");
}

// Tells which systems of the file the host will not simulate.
void give_dropped_systems(const ImportModule &module, const ModelParameters &parameters,
                          const BypassFlags &bypass_flags) {
    constexpr auto known = static_cast<std::int32_t>(legacy_system_count);
    if (parameters.model_type != eutrophication) {
        if (parameters.system_count > 0)
            give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                        "Only the systems of eutrophication models (type 11) become state "
                        "variables of the current model.");
        return;
    }
    for (std::int32_t system = 1; system <= std::min(parameters.system_count, known); ++system)
        if (bypass_flags[static_cast<std::size_t>(system - 1)] != 0)
            give_reason(module, IMPORT_EXPORT_CONDITION_UNMET,
                        "The system is bypassed and becomes no state variable.", system);
    if (parameters.system_count > known)
        give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                    "Systems from 29 on have no counterpart in the current model.", known + 1);
}

// Makes a state variable of every system of a eutrophication model that is simulated, numbered
// without gaps.
void build_state_variables(ImportModule &module, const ModelParameters &parameters,
                           const BypassFlags &bypass_flags, SystemNames &built) {
    module.shared.state_variable_count = 0;
    if (parameters.model_type != eutrophication)
        return;
    const auto system_count = std::min<std::int64_t>(parameters.system_count, legacy_system_count);
    for (std::int32_t system = 1; system <= system_count; ++system) {
        const auto row = static_cast<std::size_t>(system - 1);
        if (bypass_flags[row] != 0)
            continue;
        const StateVariable &variable = state_variables[row];
        module.system_of_state_variable[built.size()] = system;
        built.push_back({FixedText<5>(variable.short_name), FixedText<30>(variable.long_name)});
        if (variable.presence != nullptr)
            module.shared.*variable.presence = 1;
        if (variable.count != nullptr)
            ++(module.shared.*variable.count);
    }
    module.shared.state_variable_count = static_cast<std::int32_t>(built.size());
}

void read_parameters(ImportModule &module, ModelParameters &parameters) {
    read_header(module, parameters);
    read_period(module, parameters);
    read_options(module, parameters);
    read_output_intervals(module, parameters);
}

void read_systems(ImportModule &module, const ModelParameters &parameters, SystemNames &systems) {
    BypassFlags bypass_flags{};
    module.reader.integers("bypass flags", "bypass flag", parameters.system_count, bypass_flags);
    if (module.reader.ok()) {
        give_dropped_systems(module, parameters, bypass_flags);
        build_state_variables(module, parameters, bypass_flags, systems);
    }
    skip_block(module, "count of the first skipped block", "record of the first skipped block");
    skip_block(module, "count of the second skipped block", "record of the second skipped block");
}

} // namespace

void modelparam(ImportModule &module) {
    ModelParameters parameters;
    read_parameters(module, parameters);
    if (!module.reader.ok())
        return;
    send_parameter_table(parameters,
                         "<span style=\"font-weight: bold;\">KOVA7 Model Parameters</span></td>");
    SystemNames systems;
    read_systems(module, parameters, systems);
    if (!module.reader.ok())
        return;
    send_model(module, parameters, static_cast<std::int32_t>(systems.size()), systems);
}

} // namespace kova_import::legacy
