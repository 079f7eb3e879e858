#include "control/sections/model_parameters.h"

#include "legacy/sections.h"
#include "legacy/state_variables.h"

#include <algorithm>
#include <array>
#include <vector>

namespace kova_import::legacy {

namespace {

using BypassFlags = std::array<std::int32_t, legacy_system_count>;

void read_output_intervals(RecordReader &reader, ModelParameters &parameters) {
    std::int32_t record_count = 0;
    reader.list("output-interval count", field("output-interval count", record_count));
    reader.for_each_record(record_count, [&](std::int32_t) {
        float time = 0;
        reader.list("output interval", field("time", time),
                    field("output interval", parameters.output_interval));
    });
}

// Two blocks at the end of the section belong to functions that the model has lost. Each is a count
// and that many records, which nobody looks into.
void skip_block(RecordReader &reader, const char *count_name, const char *record_name) {
    std::int32_t record_count = 0;
    reader.list(count_name, field(count_name, record_count));
    reader.for_each_record(record_count, [&](std::int32_t) { reader.list(record_name); });
}

// Makes a state variable of every system of a eutrophication model that is simulated, numbered
// without gaps.
std::vector<SystemName> build_state_variables(ImportModule &module,
                                              const ModelParameters &parameters,
                                              const BypassFlags &bypass_flags) {
    std::vector<SystemName> built;
    module.shared.state_variable_count = 0;
    if (parameters.model_type != eutrophication)
        return built;
    built.reserve(legacy_system_count);
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
    return built;
}

} // namespace

void modelparam(ImportModule &module) {
    RecordReader &reader = module.reader;
    ModelParameters parameters;
    read_header(module, parameters);
    read_period(module, parameters);
    read_options(reader, parameters);
    read_output_intervals(reader, parameters);
    if (!reader.ok())
        return;
    send_parameter_table(parameters,
                         "<span style=\"font-weight: bold;\">KOVA7 Model Parameters</span></td>");

    BypassFlags bypass_flags{};
    reader.integers("bypass flags", "bypass flag", parameters.system_count, bypass_flags);
    if (!reader.ok())
        return;
    const std::vector<SystemName> systems = build_state_variables(module, parameters, bypass_flags);
    skip_block(reader, "first scratch count", "first scratch record");
    skip_block(reader, "second scratch count", "second scratch record");
    if (!reader.ok())
        return;
    send_period(module, parameters);
    send_systems(static_cast<std::int32_t>(systems.size()), systems);
    send_options(parameters);
}

} // namespace kova_import::legacy
