#include "control/sections/flow_series.h"

#include "legacy/sections.h"

namespace kova_import::legacy {

void flows(ImportModule &module) {
    FlowSeriesTable table;
    read_flow_series(module, table);
    if (module.reader.ok())
        send_flow_series(module, table);
}

} // namespace kova_import::legacy
