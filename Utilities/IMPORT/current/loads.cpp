#include "control/sections/loads.h"

#include "control/console.h"
#include "current/sections.h"

namespace kova_import::current {

void loads_v2(ImportModule &module) {
    RecordReader &reader = module.reader;
    LoadTable table;
    reader.list("heading of the section", unused_text);
    const std::int32_t system_count = read_load_settings(module, table);
    reader.for_each_record(system_count, [&](std::int32_t system) {
        read_load_heading(reader);
        read_loads_of_system(module, system, table.loads);
    });
    if (!reader.ok())
        return;
    if (module.shared.transport_only == 0)
        send_loads(module, table, system_count);
    console::write_line("Done reading Loads");
}

} // namespace kova_import::current
