#include "control/sections/boundaries.h"

#include "control/console.h"
#include "control/sections/counts.h"
#include "current/sections.h"

namespace kova_import::current {

namespace {

/// Reads the section and returns its system count.
std::int32_t read_boundaries(ImportModule &module, SystemSeriesTable &table) {
    RecordReader &reader = module.reader;
    reader.list("heading of the section", unused_text);
    if (reader.ok())
        console::write_line("Reading Boundary Information");
    const std::int32_t system_count =
        read_shared_count(reader, "system count", module.shared.system_count);
    read_boundary_systems(
        module, system_count, system_count, [](const FixedText<80> &) {},
        [&](std::int32_t system) { read_boundaries_of_system(module, system, table); });
    return system_count;
}

} // namespace

void boundary_v2(ImportModule &module) {
    SystemSeriesTable table;
    const std::int32_t system_count = read_boundaries(module, table);
    if (!module.reader.ok())
        return;
    console::write_line("Done Reading Boundary Information");
    if (module.shared.transport_only == 0)
        send_boundaries(module.send_buffers, table, system_count, [](std::int32_t) {});
}

} // namespace kova_import::current
