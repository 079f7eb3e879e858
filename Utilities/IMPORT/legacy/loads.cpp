#include "control/sections/loads.h"

#include "legacy/sections.h"
#include "legacy/simulated_systems.h"

namespace kova_import::legacy {

void loads(ImportModule &module) {
    const SimulatedSystems simulated(module);
    LoadTable table;
    const std::int32_t system_count = read_load_settings(module, table);
    module.reader.for_each_record(system_count, [&](std::int32_t system) {
        read_load_heading(module.reader);
        simulated.read_system(
            module, system, table.loads, read_loads_of_system,
            "The host does not simulate the system; its loads do not come across.");
    });
    if (module.reader.ok() && module.shared.transport_only == 0)
        send_loads(module, table, simulated.count());
}

} // namespace kova_import::legacy
