#include "control/sections/constants.h"

#include "control/console.h"
#include "control/notices.h"
#include "control/packed_list.h"
#include "control/sections/counts.h"
#include "control/sections/repeated_numbers.h"
#include "current/sections.h"

#include <utility>

namespace kova_import::current {

namespace {

struct Constant {
    std::int32_t number = 0;
    std::int32_t column = 0;
    float value = 0;
};

struct ConstantTable {
    RecordPlace count_record;
    PackedList<Constant> constants; ///< in the order of the file
};

void read_constants(RecordReader &reader, ConstantTable &table) {
    reader.list("heading of the section", unused_text);
    const std::int32_t count = read_count(reader, "constant count");
    table.count_record = reader.last_record();
    reader.for_each_record(count, [&](std::int32_t) {
        Constant constant;
        reader.fixed<"(7X,I5,11X,I5,18X,F10.0)">(
            "constant", field("constant number", constant.number), field("column", constant.column),
            field("value", constant.value));
        if (reader.ok())
            table.constants.push_back(constant);
    });
}

// Hosts know a constant by its number and column.
void give_replaced(const ImportModule &module, const ConstantTable &table) {
    PackedWalk constants(table.constants);
    const auto next = [&] {
        const Constant constant = constants.next();
        return std::pair(constant.number, constant.column);
    };
    for_each_repeated(table.constants.size(), next, [&](const auto &number_and_column) {
        give_reason_at(module, table.count_record, IMPORT_EXPORT_REPLACED,
                       "Several records have the number and column of this constant; the host "
                       "keeps the last one.",
                       number_and_column.first);
    });
}

void send_constants(const ConstantTable &table) {
    for (PackedWalk constants(table.constants); !constants.at_end();) {
        const Constant constant = constants.next();
        send_constant(constant.number, constant.column);
    }
    send<"PCONSTANTSREFRESH">();
    for (PackedWalk constants(table.constants); !constants.at_end();) {
        const Constant constant = constants.next();
        send_constant_value(constant.number, constant.column, constant.value);
    }
    send<"PCONSTANTSREFRESH">();
}

} // namespace

void constants_v2(ImportModule &module) {
    console::write_line("Reading Constants");
    ConstantTable table;
    read_constants(module.reader, table);
    if (!module.reader.ok())
        return;
    if (module.shared.transport_only == 0) {
        give_replaced(module, table);
        send_constants(table);
    }
    console::write_line("Done Reading Constants");
}

} // namespace kova_import::current
