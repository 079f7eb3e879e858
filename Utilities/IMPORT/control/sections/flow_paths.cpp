#include "control/sections/flow_paths.h"

#include "control/counting.h"
#include "control/host_link.h"
#include "control/notices.h"
#include "control/report.h"
#include "control/sections/counts.h"
#include "control/sections/fields.h"

#include <tuple>

namespace kova_import {

namespace {

constexpr auto flow_pair_members = std::tuple{
    member("first segment", &FlowPair::first_segment),
    member("second segment", &FlowPair::second_segment),
    member("routing fraction", &FlowPair::routing_fraction),
};

constexpr RowCommands<RowCommand<"PJQ", &FlowPair::first_segment>,
                      RowCommand<"PIQ", &FlowPair::second_segment>,
                      RowCommand<"PBQ", &FlowPair::routing_fraction>>
    flow_pair_commands;

// Only the first field has one.
bool has_hydrodynamic_file(const ImportModule &module, std::int32_t field_number) {
    return field_number == 1 && module.flow_option == hydrodynamic_linkage;
}

void read_flow_function(ImportModule &module, std::int32_t function_number, FlowPathTable &table) {
    RecordReader &reader = module.reader;
    FlowFunction function;
    FixedText<80> line;
    reader.fixed<"(A80)">("description of the flow function", field("description", line));
    function.description = kept_description(module, line, function_number);
    function.pair_count = read_count(reader, "pair count of the flow function");
    if (reader.ok())
        table.functions.push_back(function);
    reader.for_each_record(function.pair_count, [&](std::int32_t) {
        FlowPair pair;
        reader.list("flow pair", fields_of(pair, flow_pair_members));
        if (reader.ok())
            table.pairs.push_back(pair);
    });
}

void read_hydrodynamic_file(ImportModule &module, FlowPathTable &table) {
    RecordReader &reader = module.reader;
    reader.fixed<"(A512)">("hydrodynamic file", field("file name", table.hydrodynamic_file));
    give_cut_file_name(module);
}

void send_flow_function(std::int32_t field_number, std::int32_t function_number,
                        const FlowFunction &function, PackedWalk<FlowPair> &pairs) {
    send<"PNOQS">(field_number, function_number, function.pair_count);
    send<"PFLOWFUNCDESC">(field_number, function_number, function.description);
    for_each_number(function.pair_count, [&](std::int32_t pair) {
        flow_pair_commands.send_row(pairs.next(), field_number, function_number, pair);
    });
}

} // namespace

void read_flow_fields(ImportModule &module, FlowPathTable &table) {
    RecordReader &reader = module.reader;
    table.field_count =
        read_shared_count(reader, "flow-field count", module.shared.flow_field_count);
    reader.for_each_record(table.field_count, [&](std::int32_t field_number) {
        FixedText<80> caption;
        reader.unguarded_fixed<"(A80)">("caption of the flow field", caption);
        if (has_hydrodynamic_file(module, field_number))
            read_hydrodynamic_file(module, table);
        const std::int32_t function_count = read_count(reader, "function count of the flow field");
        if (reader.ok())
            module.inflow_count.push_back(function_count);
        reader.for_each_record(function_count, [&](std::int32_t function_number) {
            read_flow_function(module, function_number, table);
        });
    });
}

void send_flow_paths(const ImportModule &module, const FlowPathTable &table) {
    send_report_line("Importing Flow Path Information</span></li>");
    // All segments get the one option, which hosts keep for each.
    for_each_number(table.segment_count,
                    [&](std::int32_t segment) { send<"PFLOWTYPE">(segment, module.flow_option); });
    send<"PNFIELD">(table.field_count);
    RowWalk function_counts(module.inflow_count);
    PackedWalk functions(table.functions);
    PackedWalk pairs(table.pairs);
    for_each_number(table.field_count, [&](std::int32_t field_number) {
        if (has_hydrodynamic_file(module, field_number))
            send<"PHYDROFILE">(table.hydrodynamic_file);
        const std::int32_t function_count = function_counts.next();
        send<"PNINQ">(field_number, function_count);
        for_each_number(function_count, [&](std::int32_t function_number) {
            send_flow_function(field_number, function_number, functions.next(), pairs);
        });
    });
}

} // namespace kova_import
