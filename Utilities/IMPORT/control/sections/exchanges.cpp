#include "control/sections/exchanges.h"

#include "control/counting.h"
#include "control/host_link.h"
#include "control/report.h"
#include "control/sections/counts.h"

#include <tuple>

namespace kova_import {

namespace {

constexpr auto exchange_pair_members = std::tuple{
    member("first segment", &ExchangePair::first_segment),
    member("second segment", &ExchangePair::second_segment),
    member("interfacial area", &ExchangePair::interfacial_area),
    member("mixing length", &ExchangePair::mixing_length),
};

constexpr RowCommands<RowCommand<"PJRSEG", &ExchangePair::first_segment>,
                      RowCommand<"PIRSEG", &ExchangePair::second_segment>,
                      RowCommand<"PXAREA", &ExchangePair::interfacial_area>,
                      RowCommand<"PLENGTH", &ExchangePair::mixing_length>>
    exchange_pair_commands;

void read_exchange_function(ImportModule &module, std::int32_t number, ExchangeTable &table) {
    RecordReader &reader = module.reader;
    ExchangeFunction function;
    FixedText<80> line;
    reader.unguarded_fixed<"(A80)">("description of the exchange function", line);
    function.description = kept_description(module, line, number);
    function.pair_count = read_count(reader, "pair count of the exchange function");
    reader.for_each_record(function.pair_count, [&](std::int32_t) {
        ExchangePair pair;
        reader.list("exchange pair", fields_of(pair, exchange_pair_members));
        if (reader.ok())
            table.pairs.push_back(pair);
    });
    function.breakpoint_count = read_count(reader, "breakpoint count of the exchange function");
    if (reader.ok())
        table.functions.push_back(function);
    read_breakpoints(reader, "breakpoint of the exchange function", value_and_time,
                     function.breakpoint_count, table.breakpoints);
}

void send_exchange_function(std::int32_t field_number, std::int32_t number,
                            const ExchangeFunction &function, PackedWalk<ExchangePair> &pairs,
                            RowWalk<Breakpoint> &breakpoints) {
    send<"PEXCHANGEFUNCDESC">(field_number, number, function.description);
    send<"PNORS">(field_number, number, function.pair_count);
    for_each_number(function.pair_count, [&](std::int32_t pair) {
        exchange_pair_commands.send_row(pairs.next(), field_number, number, pair);
    });
    send<"PNOBRKS">(field_number, number, function.breakpoint_count);
    for_each_number(function.breakpoint_count, [&](std::int32_t place) {
        const Breakpoint &breakpoint = breakpoints.next();
        send<"PNORFUNC">(field_number, number, place, breakpoint.first, breakpoint.second);
    });
}

} // namespace

void read_exchange_fields(ImportModule &module, ExchangeTable &table) {
    RecordReader &reader = module.reader;
    table.field_count = read_count(reader, "exchange-field count");
    reader.for_each_record(table.field_count, [&](std::int32_t number) {
        reader.list("heading of the exchange field", unused_text);
        const std::int32_t function_count =
            read_count(reader, "function count of the exchange field");
        if (reader.ok())
            table.function_counts.push_back(function_count);
        if (function_count > 0)
            table.factors.read(module, number);
        reader.for_each_record(function_count, [&](std::int32_t function) {
            read_exchange_function(module, function, table);
        });
    });
    if (reader.ok())
        table.factors.give_replaced(module);
}

void send_exchanges(const ExchangeTable &table) {
    send_report_line("Importing Exchange Information</span></li>");
    send<"PNRFLD">(table.field_count);
    RowWalk function_counts(table.function_counts);
    PackedWalk functions(table.functions);
    PackedWalk pairs(table.pairs);
    RowWalk breakpoints(table.breakpoints);
    for_each_number(table.field_count, [&](std::int32_t number) {
        const std::int32_t function_count = function_counts.next();
        if (function_count < 1)
            return;
        send<"PNTEX">(number, function_count);
        send<"PSCALER">(number, table.factors.scale());
        send<"PCONVR">(number, table.factors.conversion());
        for_each_number(function_count, [&](std::int32_t function) {
            send_exchange_function(number, function, functions.next(), pairs, breakpoints);
        });
    });
    send<"PEXCHANGESREFRESH">();
}

} // namespace kova_import
