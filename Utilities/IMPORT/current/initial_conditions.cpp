#include "control/sections/initial_conditions.h"

#include "control/console.h"
#include "control/notices.h"
#include "control/sections/counts.h"
#include "current/sections.h"

namespace kova_import::current {

namespace {

// Hosts have never got the maximum concentrations of this format; they get 0.
InitialSystem read_system(ImportModule &module, std::int32_t system) {
    InitialSystem values = read_initial_system(module.reader);
    if (values.maximum_concentration != 0 && is_awaited(module))
        give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                    "The maximum concentration does not come across; the host gets 0.", system);
    values.maximum_concentration = 0;
    return values;
}

struct InitialConditionCounts {
    std::int32_t systems = 0;
    std::int32_t segments = 0;
};

/// Reads the section and returns its counts.
InitialConditionCounts read_initial_conditions(ImportModule &module, InitialConditionTable &table) {
    RecordReader &reader = module.reader;
    reader.list("heading of the section", unused_text);
    InitialConditionCounts counts;
    counts.systems = read_shared_count(reader, "system count", module.shared.system_count);
    if (counts.systems < module.host_system_count && is_awaited(module))
        give_reason(module, IMPORT_EXPORT_DEFAULTED,
                    "The section has fewer systems than the model; the others get no initial "
                    "conditions.");
    counts.segments = read_shared_count(reader, "segment count", module.shared.segment_count);
    give_fewer_segments(module, counts.segments);
    reader.for_each_record(counts.systems, [&](std::int32_t system) {
        read_system_caption(reader);
        const InitialSystem values = read_system(module, system);
        read_initial_concentrations(module, system, values, counts.segments, table);
    });
    return counts;
}

} // namespace

void initial_conditions_v2(ImportModule &module) {
    console::write_line("Reading Initial Conditions");
    InitialConditionTable table;
    const InitialConditionCounts counts = read_initial_conditions(module, table);
    if (!module.reader.ok())
        return;
    send_initial_condition_line();
    if (module.shared.transport_only == 0)
        send_initial_conditions(module, table, counts.systems, counts.segments);
    console::write_line("Done Reading Initial Conditions");
}

} // namespace kova_import::current
