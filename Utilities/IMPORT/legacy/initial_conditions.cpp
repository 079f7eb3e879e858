#include "control/sections/initial_conditions.h"

#include "control/console.h"
#include "control/sections/counts.h"
#include "legacy/sections.h"
#include "legacy/simulated_systems.h"

#include <cstdint>

namespace kova_import::legacy {

namespace {

// Every state variable has a concentration in every segment, also where no record backs the number
// of segments.
Bounds segment_count_bounds(const ImportModule &module, const SimulatedSystems &simulated,
                            std::int32_t system_count) {
    if (system_count <= 0 && simulated.count() > 0 && module.shared.transport_only == 0)
        return {.largest = most_unbacked_segments,
                .expected = "at most 100000 segments, without any system"};
    return {};
}

/// Reads the section and returns its segment count.
std::int32_t read_initial_conditions(ImportModule &module, const SimulatedSystems &simulated,
                                     InitialConditionTable &table) {
    RecordReader &reader = module.reader;
    const std::int32_t system_count =
        read_shared_count(reader, "system count", module.shared.system_count);
    reader.list("segment count",
                bounded_field("segment count", module.shared.segment_count,
                              segment_count_bounds(module, simulated, system_count)));
    const std::int32_t segment_count = module.shared.segment_count;
    if (simulated.count() > 0)
        give_fewer_segments(module, segment_count);
    reader.for_each_record(system_count, [&](std::int32_t system) {
        read_system_caption(reader);
        simulated.read_system(
            module, system, table,
            [segment_count](ImportModule &into, std::int32_t number,
                            InitialConditionTable &system_table) {
                const InitialSystem values = read_initial_system(into.reader);
                read_initial_concentrations(into, number, values, segment_count, system_table);
            },
            "The host does not simulate the system; its initial conditions do not come across.");
    });
    return segment_count;
}

} // namespace

void initial_conditions(ImportModule &module) {
    console::write_line("Reading Initial Conditions");
    const SimulatedSystems simulated(module);
    InitialConditionTable table;
    const std::int32_t segment_count = read_initial_conditions(module, simulated, table);
    if (!module.reader.ok())
        return;
    send_initial_condition_line();
    if (module.shared.transport_only == 0)
        send_initial_conditions(module, table, simulated.count(), segment_count);
}

} // namespace kova_import::legacy
