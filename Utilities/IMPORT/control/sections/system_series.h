#pragma once

// What boundary conditions and loads have in common: each system has some series, each series
// belongs to a segment, and a whole series goes to the host at once.

#include "control/chunked_list.h"
#include "control/import_module.h"
#include "control/sections/series.h"
#include "control/send_buffers.h"

#include <cstdint>

namespace kova_import {

/// The boundaries or loads of one system.
struct SystemSeries {
    std::int32_t series_count = 0;
    float factor = 0; ///< the first of the factor record, which alone goes to the host
};

/// One boundary or load.
struct SegmentSeries {
    std::int32_t segment = 0;
    std::int32_t breakpoint_count = 0;
};

/// The lists hold the rows of all systems and series one behind the other; the counts say where one
/// ends. The systems stand in the order in which the host numbers them.
struct SystemSeriesTable {
    /// False for systems that are only checked: what stays behind of them need not be told one by
    /// one.
    bool is_kept = true;
    ChunkedList<SystemSeries> systems;
    ChunkedList<SegmentSeries> series;
    Breakpoints breakpoints;

    [[nodiscard]] bool holds_data() const { return series.size() > 0; }
};

/// What the read statements of a series are called.
struct SeriesStatements {
    const char *segment = "";
    const char *breakpoint_count = "";
    const char *breakpoint = "";
};

/// Reads the `count` series of a system. A series with more breakpoints than a send buffer has
/// entries cannot reach the host: the record that announces it is a failed read.
void read_series_of_system(RecordReader &reader, const SeriesStatements &statements,
                           std::int32_t count, SystemSeriesTable &table);

/// Takes a table's rows in the order in which they are sent.
class SystemSeriesWalk {
  public:
    explicit SystemSeriesWalk(const SystemSeriesTable &table)
        : systems_(table.systems), series_(table.series), breakpoints_(table.breakpoints) {}

    /// A system that the section does not hold has no series.
    [[nodiscard]] SystemSeries next_system() {
        return systems_.at_end() ? SystemSeries{} : systems_.next();
    }

    /// There are as many as the counts of the systems say.
    [[nodiscard]] const SegmentSeries &next_series() { return series_.next(); }

    /// Puts the breakpoints of the series that was taken last at the front of the buffers. What
    /// stands behind them stays.
    void fill(SendBuffers &buffers, const SegmentSeries &series);

  private:
    RowWalk<SystemSeries> systems_;
    RowWalk<SegmentSeries> series_;
    RowWalk<Breakpoint> breakpoints_;
};

} // namespace kova_import
