#include "control/sections/time_functions.h"

#include "control/console.h"
#include "control/notices.h"
#include "control/sections/counts.h"
#include "control/sections/repeated_numbers.h"
#include "current/sections.h"

namespace kova_import::current {

namespace {

struct TimeFunction {
    std::int32_t number = 0;
    std::int32_t breakpoint_count = 0;
};

/// The breakpoints of all functions lie one behind the other; the counts say where one ends.
struct TimeFunctionTable {
    RecordPlace count_record;
    ChunkedList<TimeFunction> functions;
    Breakpoints breakpoints; ///< time (days), value
};

void read_time_function(RecordReader &reader, TimeFunctionTable &table) {
    TimeFunction function;
    reader.list("number of the time function",
                field("number of the time function", function.number));
    function.breakpoint_count = read_count(reader, "breakpoint count of the time function");
    if (reader.ok())
        table.functions.push_back(function);
    read_breakpoints(reader, "breakpoint of the time function", time_and_value,
                     function.breakpoint_count, table.breakpoints);
}

void read_time_functions(RecordReader &reader, TimeFunctionTable &table) {
    reader.list("heading of the section", unused_text);
    const std::int32_t count = read_count(reader, "time-function count");
    table.count_record = reader.last_record();
    if (reader.ok())
        console::write_line("Reading Time Functions");
    reader.for_each_record(count, [&](std::int32_t) { read_time_function(reader, table); });
}

// The series of a function stand in the file as records of the same number, and each goes to the
// host as the first: it keeps the last one.
void give_replaced(const ImportModule &module, const TimeFunctionTable &table) {
    RowWalk functions(table.functions);
    const auto next = [&] { return functions.next().number; };
    for_each_repeated(table.functions.size(), next, [&](std::int32_t number) {
        give_reason_at(module, table.count_record, IMPORT_EXPORT_REPLACED,
                       "Several records have the number of this time function; the host keeps the "
                       "last one.",
                       number);
    });
}

void send_time_functions(const TimeFunctionTable &table) {
    constexpr std::int32_t series = 1;
    RowWalk breakpoints(table.breakpoints);
    for (RowWalk functions(table.functions); !functions.at_end();) {
        const TimeFunction &function = functions.next();
        send_time_function_series(function.number, series, function.breakpoint_count,
                                  [&] { return breakpoints.next(); });
    }
}

} // namespace

void timefunctions_v2(ImportModule &module) {
    TimeFunctionTable table;
    read_time_functions(module.reader, table);
    if (!module.reader.ok())
        return;
    if (module.shared.transport_only == 0) {
        give_replaced(module, table);
        send_time_functions(table);
    }
    send<"PTFSREFRESH">();
    console::write_line("Done Reading Time Functions");
}

} // namespace kova_import::current
