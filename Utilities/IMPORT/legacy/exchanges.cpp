#include "control/sections/exchanges.h"

#include "legacy/sections.h"

namespace kova_import::legacy {

void exchanges(ImportModule &module) {
    ExchangeTable table;
    read_exchange_fields(module, table);
    if (module.reader.ok())
        send_exchanges(table);
}

} // namespace kova_import::legacy
