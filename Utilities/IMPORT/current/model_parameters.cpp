#include "control/sections/model_parameters.h"

#include "current/sections.h"

#include <vector>

namespace kova_import::current {

void modelparam_v2(ImportModule &module) {
    RecordReader &reader = module.reader;
    ModelParameters parameters;
    read_header(module, parameters);
    FixedText<80> title;
    reader.unguarded_list("title", title);
    read_period(module, parameters);
    read_options(reader, parameters);
    reader.list("output interval", field("output interval", parameters.output_interval));
    if (!reader.ok())
        return;
    send_parameter_table(parameters,
                         "<span style=\"font-weight: bold;\">KOVA8 Model Parameters</span></td>");

    std::vector<SystemName> systems;
    reader.for_each_record(parameters.system_count, [&](std::int32_t) {
        SystemName system;
        reader.fixed<"(A5,5X,A30)">("system name", field("short name", system.short_name),
                                    field("long name", system.long_name));
        if (reader.ok())
            systems.push_back(system);
    });
    if (!reader.ok())
        return;
    send_period(module, parameters);
    send_systems(parameters.system_count, systems);
    send_options(parameters);
}

} // namespace kova_import::current
