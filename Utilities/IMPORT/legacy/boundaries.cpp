#include "control/sections/boundaries.h"

#include "control/console.h"
#include "control/sections/counts.h"
#include "legacy/sections.h"
#include "legacy/simulated_systems.h"

namespace kova_import::legacy {

namespace {

void read_boundaries(ImportModule &module, const SimulatedSystems &simulated,
                     SystemSeriesTable &table) {
    const std::int32_t system_count =
        read_shared_count(module.reader, "system count", module.shared.system_count);
    read_boundary_systems(
        module, system_count, simulated.count(),
        [](const FixedText<80> &heading) { console::write_line(content_of(heading.view())); },
        [&](std::int32_t system) {
            simulated.read_system(
                module, system, table, read_boundaries_of_system,
                "The host does not simulate the system; its boundaries do not come across.");
        });
}

} // namespace

void boundary(ImportModule &module) {
    const SimulatedSystems simulated(module);
    SystemSeriesTable table;
    read_boundaries(module, simulated, table);
    if (!module.reader.ok())
        return;
    console::write_line("Done Reading Boundary Information");
    if (module.shared.transport_only != 0)
        return;
    send_boundaries(module.send_buffers, table, simulated.count(),
                    [](std::int32_t system) { console::write_line("Boundary System: ", system); });
}

} // namespace kova_import::legacy
