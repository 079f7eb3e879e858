#include "control/sections/system_series.h"

#include <cstddef>

namespace kova_import {

static_assert(send_buffer_size == 170000, "a text below names it");

void read_series_of_system(RecordReader &reader, const SeriesStatements &statements,
                           std::int32_t count, SystemSeriesTable &table) {
    reader.for_each_record(count, [&](std::int32_t) {
        SegmentSeries series;
        reader.list(statements.segment, field(statements.segment, series.segment));
        reader.list(
            statements.breakpoint_count,
            bounded_field(statements.breakpoint_count, series.breakpoint_count,
                          {.largest = send_buffer_size, .expected = "at most 170000 breakpoints"}));
        if (reader.ok())
            table.series.push_back(series);
        read_breakpoints(reader, statements.breakpoint, value_and_time, series.breakpoint_count,
                         table.breakpoints);
    });
}

void SystemSeriesWalk::fill(SendBuffers &buffers, const SegmentSeries &series) {
    for (std::int32_t i = 0; i < series.breakpoint_count; ++i) {
        const Breakpoint &breakpoint = breakpoints_.next();
        buffers.values[static_cast<std::size_t>(i)] = breakpoint.first;
        buffers.times[static_cast<std::size_t>(i)] = breakpoint.second;
    }
}

} // namespace kova_import
