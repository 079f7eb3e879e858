#include "control/sections/flow_paths.h"

#include "legacy/sections.h"

namespace kova_import::legacy {

void flowpath(ImportModule &module) {
    FlowPathTable table;
    table.segment_count = module.shared.segment_count;
    module.reader.list("flow option", field("flow option", module.flow_option));
    read_flow_fields(module, table);
    if (module.reader.ok())
        send_flow_paths(module, table);
}

} // namespace kova_import::legacy
