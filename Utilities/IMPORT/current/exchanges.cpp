#include "control/sections/exchanges.h"

#include "current/sections.h"

namespace kova_import::current {

void exchanges_v2(ImportModule &module) {
    ExchangeTable table;
    module.reader.list("heading of the section", unused_text);
    read_exchange_fields(module, table);
    if (module.reader.ok())
        send_exchanges(table);
}

} // namespace kova_import::current
