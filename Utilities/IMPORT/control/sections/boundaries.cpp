#include "control/sections/boundaries.h"

#include "control/counting.h"
#include "control/notices.h"
#include "control/report.h"
#include "control/sections/counts.h"

namespace kova_import {

namespace {

constexpr SeriesStatements boundary_statements = {
    .segment = "boundary segment",
    .breakpoint_count = "breakpoint count of the boundary",
    .breakpoint = "breakpoint of the boundary",
};

void send_boundary(SendBuffers &buffers, SystemSeriesWalk &walk, std::int32_t system,
                   std::int32_t number) {
    const SegmentSeries &boundary = walk.next_series();
    send<"PIBC">(system, number, boundary.segment);
    send<"PNBFP">(system, number, boundary.breakpoint_count);
    walk.fill(buffers, boundary);
    send<"PALLBOUNDFUNC">(system, number, AsItStands{buffers.values}, AsItStands{buffers.times});
}

} // namespace

void read_boundaries_of_system(ImportModule &module, std::int32_t system,
                               SystemSeriesTable &table) {
    RecordReader &reader = module.reader;
    SystemSeries boundaries;
    boundaries.series_count = read_count(reader, "boundary count");
    if (boundaries.series_count > 0) {
        float conversion_factor = 0;
        reader.fixed<"(2(F10.0))">("factors of the boundaries",
                                   field("scale factor", boundaries.factor),
                                   field("conversion factor", conversion_factor));
        // Blank columns are 0 like a written 0, and 1 changes nothing.
        if (conversion_factor != 0 && conversion_factor != 1 && table.is_kept && is_awaited(module))
            give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                        "The conversion factor of the boundaries does not come across.", system);
    }
    if (reader.ok())
        table.systems.push_back(boundaries);
    read_series_of_system(reader, boundary_statements, boundaries.series_count, table);
}

void send_boundaries(SendBuffers &buffers, const SystemSeriesTable &table,
                     std::int32_t system_count, void (*before_system)(std::int32_t)) {
    send_report_line("Importing Boundary Information</span></li>");
    send<"PPROGRESS">(std::int32_t{0});
    SystemSeriesWalk walk(table);
    for_each_number(system_count, [&](std::int32_t system) {
        before_system(system);
        send<"PPROGRESS">(coarse_percentage(system, system_count));
        const SystemSeries boundaries = walk.next_system();
        send<"PNOBC">(system, boundaries.series_count);
        if (boundaries.series_count < 1)
            return;
        send<"PSCALB">(system, boundaries.factor);
        for_each_number(boundaries.series_count,
                        [&](std::int32_t number) { send_boundary(buffers, walk, system, number); });
    });
}

} // namespace kova_import
