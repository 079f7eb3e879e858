#include "control/sections/constants.h"

#include "control/chunked_list.h"
#include "control/counting.h"
#include "control/notices.h"
#include "control/report.h"
#include "control/sections/counts.h"
#include "control/sections/time_functions.h"
#include "legacy/constant_translation.h"
#include "legacy/sections.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>

namespace kova_import::legacy {

namespace {

using Row = ConstantRow;

/// A constant of the current model. The record of a column is where its value comes from.
struct Constant {
    struct Column {
        float value = 0;
        const Row *row = nullptr; ///< of the legacy constant; null: no record gave the value
        RecordPlace place;
    };
    std::int32_t column_count = 0;
    std::array<Column, 3> columns{};
};

/// A constant that is a time function in the current model.
struct ConstantSeries {
    std::int32_t time_function = 0;
    float value = 0;
};

struct ConstantTable {
    /// Far above every number of the current model; keeps the table small for any file.
    static constexpr std::int32_t last_number = 3000;

    std::map<std::int32_t, Constant> constants; ///< by current number
    ChunkedList<std::int32_t> mapped;           ///< current numbers, as sent
    ChunkedList<ConstantSeries> series;
    std::set<std::int32_t> time_functions; ///< of those series
};

// Counts the columns of another constant than the row's own, whose number is that of the constants
// on the list so far. So it has always been: the constants of benthic algae themselves mostly stay
// behind, and the completion note asks users to enter them by hand.
void count_column_by_place(ConstantTable &table) {
    const std::size_t place = table.mapped.size();
    if (place <= static_cast<std::size_t>(ConstantTable::last_number))
        table.constants[static_cast<std::int32_t>(place)].column_count = 1;
}

void apply(const Row &row, float value, RecordPlace place, ConstantTable &table) {
    if (row.role == ConstantRole::time_function) {
        table.series.push_back({row.current_number, value});
        table.time_functions.insert(row.current_number);
        return;
    }
    Constant &constant = table.constants[row.current_number];
    constant.columns[static_cast<std::size_t>(row.column - 1)] = {value, &row, place};
    if (row.column == 1)
        table.mapped.push_back(row.current_number);
    if (row.role == ConstantRole::benthic_algae)
        count_column_by_place(table);
    else
        constant.column_count = row.column;
    if (row.role == ConstantRole::last_on_list && table.mapped.size() > 0)
        table.mapped[table.mapped.size() - 1] = row.current_number;
}

// Tells of a constant that comes across as something else, or takes the place of another.
void give_change(const ImportModule &module, const Row &row, const ConstantTable &table) {
    if (!is_awaited(module))
        return;
    if (row.role == ConstantRole::time_function) {
        give_reason(module, IMPORT_EXPORT_CONVERTED,
                    "The constant becomes a time function that holds its value to the end of the "
                    "simulation.",
                    row.legacy_number);
        if (table.time_functions.count(row.current_number) != 0)
            give_reason(module, IMPORT_EXPORT_REPLACED,
                        "The record takes the place of an earlier one of the same number.",
                        row.legacy_number);
        return;
    }
    const auto constant = table.constants.find(row.current_number);
    if (constant == table.constants.end())
        return;
    const Constant::Column &before =
        constant->second.columns[static_cast<std::size_t>(row.column - 1)];
    if (before.row != nullptr)
        give_named(module, before.place, IMPORT_EXPORT_REPLACED,
                   "A later record of the same number replaces the value.", row.legacy_number,
                   before.row->name);
}

void translate(const ImportModule &module, const import_export_data &conditions,
               std::int32_t legacy_number, float value, ConstantTable &table) {
    const RecordPlace place = module.reader.last_record();
    const Row *const row = find_constant(legacy_number);
    if (row == nullptr) {
        if (is_awaited(module))
            give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                        "The current model has no such constant.", legacy_number);
        return;
    }
    if (!row->condition.holds(conditions)) {
        if (is_awaited(module))
            give_named(module, place, IMPORT_EXPORT_CONDITION_UNMET,
                       "The host does not simulate what the constant belongs to.", legacy_number,
                       row->name);
        return;
    }
    give_change(module, *row, table);
    apply(*row, value, place, table);
}

void read_constants(ImportModule &module, ConstantTable &table) {
    RecordReader &reader = module.reader;
    // as they stand when the section starts: a host may write the data block at any notice
    const import_export_data conditions = module.shared;
    const std::int32_t count = read_count(reader, "constant count");
    reader.for_each_record(count, [&](std::int32_t) {
        std::int32_t legacy_number = 0;
        float value = 0;
        reader.list("constant", field("constant number", legacy_number), field("value", value));
        if (reader.ok())
            translate(module, conditions, legacy_number, value, table);
    });
}

// Tells which values the host does not get although they have a place in the current model, and
// which it gets although no record gives them.
void give_unsent(const ImportModule &module, const ConstantTable &table) {
    std::set<std::int32_t> all_mapped;
    for (RowWalk mapped(table.mapped); !mapped.at_end();)
        all_mapped.insert(mapped.next());
    for (const auto &[number, constant] : table.constants) {
        const bool is_mapped = all_mapped.count(number) != 0;
        const std::int32_t sent_columns = is_mapped ? constant.column_count : 0;
        std::int32_t column_number = 0;
        for (const Constant::Column &column : constant.columns) {
            const bool is_sent = ++column_number <= sent_columns;
            if (column.row != nullptr && !is_sent)
                give_named(module, column.place, IMPORT_EXPORT_NOT_IMPORTED,
                           is_mapped ? "The column is not among those that the host gets."
                                     : "The constant is not on the list that the host gets.",
                           column.row->legacy_number, column.row->name);
            else if (column.row == nullptr && is_sent)
                give_reason_of_send(module, IMPORT_EXPORT_DEFAULTED,
                                    "The host gets 0 for a column that no record gives.", number);
        }
    }
}

/// Calls `visit(constant, column)` for all columns on the list, in its order.
template <class Visit>
void for_each_column(const ConstantTable &table, Visit visit) {
    for (RowWalk mapped(table.mapped); !mapped.at_end();) {
        const std::int32_t number = mapped.next();
        for_each_number(table.constants.at(number).column_count,
                        [&](std::int32_t column) { visit(number, column); });
    }
}

void send_series(const ConstantTable &table, float simulation_length) {
    if (table.series.size() == 0)
        return;
    for (RowWalk all(table.series); !all.at_end();) {
        const ConstantSeries &series = all.next();
        float time = 0;
        send_time_function_series(series.time_function, 1, 2, [&] {
            const Breakpoint breakpoint{time, series.value};
            time = simulation_length;
            return breakpoint;
        });
    }
    send<"PTFSREFRESH">();
}

void send_constants(const ImportModule &module, const ConstantTable &table) {
    send_report_line("Importing Kinetic Constants</span></li>");
    for_each_column(table, send_constant);
    send<"PCONSTANTSREFRESH">();
    for_each_column(table, [&table](std::int32_t number, std::int32_t column) {
        const auto &columns = table.constants.at(number).columns;
        send_constant_value(number, column, columns[static_cast<std::size_t>(column - 1)].value);
    });
    send<"PCONSTANTSREFRESH">();
    send_series(table, module.simulation_length);
}

} // namespace

void constants(ImportModule &module) {
    ConstantTable table;
    read_constants(module, table);
    if (!is_awaited(module))
        return;
    give_unsent(module, table);
    send_constants(module, table);
}

} // namespace kova_import::legacy
