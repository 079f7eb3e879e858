#include "control/sections/flow_series.h"

#include "current/sections.h"

namespace kova_import::current {

void flows_v2(ImportModule &module) {
    FlowSeriesTable table;
    module.reader.list("heading of the section", unused_text);
    read_flow_series(module, table);
    if (module.reader.ok())
        send_flow_series(module, table);
}

} // namespace kova_import::current
