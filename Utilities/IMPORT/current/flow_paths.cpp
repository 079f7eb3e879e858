#include "control/sections/flow_paths.h"

#include "current/sections.h"

namespace kova_import::current {

// The flow option is the hydraulic option of segment 1, which the segments have left: hosts get it
// for every segment, although each has an option of its own.
void flowpath_v2(ImportModule &module) {
    FlowPathTable table;
    table.segment_count = module.shared.segment_count;
    module.reader.list("first heading", unused_text);
    module.reader.list("second heading", unused_text);
    read_flow_fields(module, table);
    if (module.reader.ok())
        send_flow_paths(module, table);
}

} // namespace kova_import::current
