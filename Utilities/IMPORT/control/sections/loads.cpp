#include "control/sections/loads.h"

#include "control/counting.h"
#include "control/host_link.h"
#include "control/notices.h"
#include "control/report.h"
#include "control/sections/counts.h"
#include "control/sections/repeated_numbers.h"

#include <algorithm>
#include <cstddef>

namespace kova_import {

namespace {

constexpr SeriesStatements load_statements = {
    .segment = "load segment",
    .breakpoint_count = "breakpoint count of the load",
    .breakpoint = "breakpoint of the load",
};

// Hosts know a load by its segment. Tells, at the heading of the system, of the loads that a later
// one on the same segment replaces.
void give_replaced_loads(const ImportModule &module, RecordPlace heading,
                         const ChunkedList<SegmentSeries> &loads, std::size_t first) {
    const auto next = [&] { return loads[first++].segment; };
    for_each_repeated(loads.size() - first, next, [&](std::int32_t segment) {
        give_reason_at(module, heading, IMPORT_EXPORT_REPLACED,
                       "The system has several loads on the segment; the host keeps the last one.",
                       segment);
    });
}

// A system without loads is shown to the host by a load that adds nothing.
void send_placeholder(ImportModule &module, std::int32_t system) {
    constexpr float none = 0;
    constexpr std::int32_t first_segment = 1;
    constexpr std::int32_t breakpoint_count = 2;
    SendBuffers &buffers = module.send_buffers;
    send<"PSCALW">(system, none);
    send<"PCONVW">(system, none);
    send<"PNBWK">(system, first_segment, breakpoint_count);
    std::fill_n(buffers.values.begin(), breakpoint_count, none);
    std::fill_n(buffers.times.begin(), breakpoint_count, none);
    send<"PALLLOADFUNC">(system, first_segment, AsItStands{buffers.values},
                         AsItStands{buffers.times});
    give_reason_of_send(module, IMPORT_EXPORT_PLACEHOLDER,
                        "The host gets a load of 0 on segment 1 for a system without loads.",
                        system);
}

void send_load(SendBuffers &buffers, SystemSeriesWalk &walk, std::int32_t system) {
    const SegmentSeries &load = walk.next_series();
    send<"PNBWK">(system, load.segment, load.breakpoint_count);
    walk.fill(buffers, load);
    send<"PALLLOADFUNC">(system, load.segment, AsItStands{buffers.values},
                         AsItStands{buffers.times});
}

} // namespace

std::int32_t read_load_settings(ImportModule &module, LoadTable &table) {
    RecordReader &reader = module.reader;
    reader.list("load option", field("load option", table.load_option));
    if (table.load_option > 0) {
        reader.fixed<"(A512)">("non-point-source file",
                               field("file name", table.non_point_source_file));
        if (is_awaited(module))
            give_cut_file_name(module);
    }
    return read_shared_count(reader, "system count", module.shared.system_count);
}

void read_load_heading(RecordReader &reader) { reader.list("heading of the loads", unused_text); }

void read_loads_of_system(ImportModule &module, std::int32_t system, SystemSeriesTable &table) {
    RecordReader &reader = module.reader;
    const RecordPlace heading = reader.last_record();
    SystemSeries loads;
    loads.series_count = read_count(reader, "load count");
    if (loads.series_count > 0) {
        float second_factor = 1; // of which nobody hears: the default changes nothing
        reader.list("factors of the loads", field("first factor", loads.factor),
                    field("second factor", second_factor));
        if (second_factor != 1 && table.is_kept && is_awaited(module))
            give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                        "The second factor of the loads does not come across.", system);
    }
    if (reader.ok())
        table.systems.push_back(loads);
    const std::size_t first = table.series.size();
    read_series_of_system(reader, load_statements, loads.series_count, table);
    if (table.is_kept && is_awaited(module))
        give_replaced_loads(module, heading, table.series, first);
}

void send_loads(ImportModule &module, const LoadTable &table, std::int32_t system_count) {
    send_report_line("Importing Loading Information</span></li>");
    send<"PLOPT">(table.load_option);
    if (table.load_option > 0)
        send<"PNPSFILE">(table.non_point_source_file);
    SystemSeriesWalk walk(table.loads);
    for_each_number(system_count, [&](std::int32_t system) {
        const SystemSeries loads = walk.next_system();
        if (loads.series_count < 1) {
            send_placeholder(module, system);
            return;
        }
        // Systems with loads get this factor alone, those without the two of the placeholder.
        send<"PCONVB">(system, loads.factor);
        for_each_number(loads.series_count,
                        [&](std::int32_t) { send_load(module.send_buffers, walk, system); });
    });
}

} // namespace kova_import
