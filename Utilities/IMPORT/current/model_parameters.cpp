#include "control/sections/model_parameters.h"

#include "control/notices.h"

#include "current/sections.h"

namespace kova_import::current {

namespace {

void read_parameters(ImportModule &module, ModelParameters &parameters) {
    RecordReader &reader = module.reader;
    read_header(module, parameters);
    FixedText<80> title;
    if (!reader.unguarded_list("title", title))
        give_reason(module, IMPORT_EXPORT_DEFAULTED,
                    "The title cannot be read; it counts as one line.");
    read_period(module, parameters);
    read_options(module, parameters);
    reader.list("output interval", field("output interval", parameters.output_interval));
}

void read_systems(ImportModule &module, std::int32_t count, SystemNames &systems) {
    RecordReader &reader = module.reader;
    reader.for_each_record(count, [&](std::int32_t number) {
        SystemName system;
        reader.fixed<"(A5,5X,A30)">("system name", field("short name", system.short_name),
                                    field("long name", system.long_name));
        if (!reader.ok())
            return;
        if (reader.text_was_cut())
            give_reason(module, IMPORT_EXPORT_CUT,
                        "The name of the system is cut at 30 characters.", number);
        systems.push_back(system);
    });
}

} // namespace

void modelparam_v2(ImportModule &module) {
    ModelParameters parameters;
    read_parameters(module, parameters);
    if (!module.reader.ok())
        return;
    send_parameter_table(parameters,
                         "<span style=\"font-weight: bold;\">KOVA8 Model Parameters</span></td>");
    SystemNames systems;
    read_systems(module, parameters.system_count, systems);
    if (!module.reader.ok())
        return;
    send_model(module, parameters, parameters.system_count, systems);
}

} // namespace kova_import::current
