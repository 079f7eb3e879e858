#include "control/sections/flow_series.h"

#include "control/counting.h"
#include "control/host_link.h"
#include "control/notices.h"
#include "control/report.h"
#include "control/sections/counts.h"

#include <cstddef>
#include <tuple>

namespace kova_import {

namespace {

constexpr auto flow_breakpoint_members = std::tuple{
    member("first value", &Breakpoint::first),
    member("second value", &Breakpoint::second),
};

// Hosts that got a larger count with the flow paths may drop the fields and functions above this
// one.
void give_other_count(const ImportModule &module, std::int32_t of_paths, std::int32_t of_series,
                      const char *reason, std::int32_t number) {
    if (module.reader.ok() && of_series != of_paths)
        give_reason(module, IMPORT_EXPORT_REPLACED, reason, number);
}

// Reads how many functions a field has into its place in the list that the flow paths have left,
// which this section replaces from its front.
std::int32_t read_function_count(ImportModule &module, std::int32_t field_number) {
    RecordReader &reader = module.reader;
    const auto row = static_cast<std::size_t>(field_number - 1);
    const bool is_known = row < module.inflow_count.size();
    const std::int32_t of_paths = is_known ? module.inflow_count[row] : 0;
    std::int32_t function_count = of_paths;
    reader.list("function count of the flow field",
                field("function count of the flow field", function_count));
    give_other_count(module, of_paths, function_count,
                     "The field has another number of functions here than in the flow paths; this "
                     "one replaces it.",
                     field_number);
    if (!reader.ok())
        return 0;
    if (is_known)
        module.inflow_count[row] = function_count;
    else
        module.inflow_count.push_back(function_count);
    return function_count;
}

void read_series_of_function(ImportModule &module, FlowSeriesTable &table) {
    RecordReader &reader = module.reader;
    FixedText<80> caption;
    reader.fixed<"(A80)">("caption of the flow function", field("caption", caption));
    const std::int32_t breakpoint_count =
        read_count(reader, "breakpoint count of the flow function");
    if (reader.ok())
        table.breakpoint_counts.push_back(breakpoint_count);
    read_breakpoints(reader, "breakpoint of the flow function", flow_breakpoint_members,
                     breakpoint_count, table.breakpoints);
}

} // namespace

void read_flow_series(ImportModule &module, FlowSeriesTable &table) {
    RecordReader &reader = module.reader;
    const std::int32_t of_paths = module.shared.flow_field_count;
    table.field_count =
        read_shared_count(reader, "flow-field count", module.shared.flow_field_count);
    give_other_count(
        module, of_paths, table.field_count,
        "There is another number of fields here than in the flow paths; this one replaces it.", 0);
    reader.for_each_record(table.field_count, [&](std::int32_t number) {
        FixedText<80> caption;
        reader.fixed<"(A80)">("caption of the flow field", field("caption", caption));
        const std::int32_t function_count = read_function_count(module, number);
        if (function_count > 0)
            table.factors.read(module, number);
        reader.for_each_record(function_count,
                               [&](std::int32_t) { read_series_of_function(module, table); });
    });
    if (reader.ok())
        table.factors.give_replaced(module);
}

void send_flow_series(const ImportModule &module, const FlowSeriesTable &table) {
    send_report_line("Importing Flow Time Series</span></li>");
    send<"PNFIELD">(table.field_count);
    RowWalk function_counts(module.inflow_count);
    RowWalk breakpoint_counts(table.breakpoint_counts);
    RowWalk breakpoints(table.breakpoints);
    for_each_number(table.field_count, [&](std::int32_t number) {
        const std::int32_t function_count = function_counts.next();
        send<"PNINQ">(number, function_count);
        if (function_count > 0) {
            send<"PSCALEQ">(number, table.factors.scale());
            send<"PCONVQ">(number, table.factors.conversion());
        }
        for_each_number(function_count, [&](std::int32_t function) {
            const std::int32_t breakpoint_count = breakpoint_counts.next();
            send<"PNBRKQ">(number, function, breakpoint_count);
            for_each_number(breakpoint_count, [&](std::int32_t place) {
                const Breakpoint &breakpoint = breakpoints.next();
                send<"PNOQFUNC">(number, function, place, breakpoint.first, breakpoint.second);
            });
        });
    });
    send<"PFLOWSREFRESH">();
}

} // namespace kova_import
