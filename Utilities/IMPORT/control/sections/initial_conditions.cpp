#include "control/sections/initial_conditions.h"

#include "control/counting.h"
#include "control/host_link.h"
#include "control/notices.h"
#include "control/report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace kova_import {

namespace {

/// A record that stands elsewhere than in the order of the segments. What it leaves out is not a
/// number.
struct NamedConcentration {
    std::int32_t segment = 0;
    InitialConcentration given;
};

void keep(const InitialConcentration &given, InitialConcentration &kept) {
    if (!std::isnan(given.concentration))
        kept.concentration = given.concentration;
    if (!std::isnan(given.dissolved_fraction))
        kept.dissolved_fraction = given.dissolved_fraction;
}

/// The concentrations of one system while they are read. Records name their segment: as long as
/// they come in order they go straight into the table, and no number in the file decides how large
/// it is.
class SystemConcentrations {
  public:
    explicit SystemConcentrations(ChunkedList<InitialConcentration> &table)
        : table_(&table), first_(table.size()) {}

    /// Says whether the segment is known to have had a record before.
    bool add(std::int32_t segment, const InitialConcentration &given) {
        const std::size_t row = row_of(segment);
        const std::size_t end = table_->size();
        if (out_of_order_.size() > 0 || row > end) {
            out_of_order_.push_back({segment, given});
            return row < end;
        }
        if (row == end)
            table_->push_back({});
        keep(given, (*table_)[row]);
        return row < end;
    }

    /// Completes the table, when as many records have been read as there are segments. Says whether
    /// there was one for each.
    bool finish(std::int32_t segment_count) {
        const auto count = static_cast<std::size_t>(std::max(segment_count, 0));
        std::vector<bool> is_named(count, false);
        std::fill_n(is_named.begin(), table_->size() - first_, true);
        while (table_->size() < first_ + count)
            table_->push_back({});
        for (RowWalk rows(out_of_order_); !rows.at_end();) {
            const NamedConcentration &row = rows.next();
            keep(row.given, (*table_)[row_of(row.segment)]);
            is_named[static_cast<std::size_t>(row.segment - 1)] = true;
        }
        return std::find(is_named.begin(), is_named.end(), false) == is_named.end();
    }

  private:
    [[nodiscard]] std::size_t row_of(std::int32_t segment) const {
        return first_ + static_cast<std::size_t>(segment - 1);
    }

    ChunkedList<InitialConcentration> *table_;
    std::size_t first_;
    ChunkedList<NamedConcentration> out_of_order_;
};

void read_concentrations(ImportModule &module, std::int32_t system, std::int32_t segment_count,
                         InitialConditionTable &table) {
    // no file can give this value
    constexpr float left_out = std::numeric_limits<float>::quiet_NaN();
    const Bounds segments = {.smallest = 1,
                             .largest = segment_count,
                             .expected = "a segment number from 1 to the segment count"};
    RecordReader &reader = module.reader;
    SystemConcentrations concentrations(table.concentrations);
    reader.for_each_record(segment_count, [&](std::int32_t) {
        std::int32_t segment = 0;
        InitialConcentration given{left_out, left_out};
        reader.list("initial condition", bounded_field("segment number", segment, segments),
                    field("initial concentration", given.concentration),
                    field("dissolved fraction", given.dissolved_fraction));
        if (reader.ok() && concentrations.add(segment, given) && table.is_kept &&
            is_awaited(module))
            give_reason(module, IMPORT_EXPORT_REPLACED,
                        "The record takes the place of an earlier one of the same segment.",
                        segment);
    });
    if (!reader.ok())
        return;
    if (!concentrations.finish(segment_count) && table.is_kept && is_awaited(module))
        give_reason(module, IMPORT_EXPORT_DEFAULTED,
                    "Some segments are named more than once, and others get 0 since none of the "
                    "records names them.",
                    system);
}

} // namespace

void read_system_caption(RecordReader &reader) {
    FixedText<80> caption;
    reader.unguarded_fixed<"(A80)">("caption of the system", caption);
}

void read_initial_conditions_of_system(ImportModule &module, std::int32_t system,
                                       std::int32_t segment_count, InitialConditionTable &table) {
    RecordReader &reader = module.reader;
    InitialSystem values;
    reader.list("flow field of the system", field("flow field of the system", values.flow_field));
    reader.list("density of the system", field("density of the system", values.density));
    reader.list("maximum concentration of the system",
                field("maximum concentration of the system", values.maximum_concentration));
    FixedText<80> caption;
    reader.unguarded_fixed<"(A80)">("caption of the initial conditions", caption);
    if (reader.ok())
        table.systems.push_back(values);
    read_concentrations(module, system, segment_count, table);
}

void send_initial_condition_notice() {
    send_report_line("Importing Initial Conditions</span></li>");
}

void send_initial_concentrations(std::int32_t system, std::int32_t segment_count,
                                 RowWalk<InitialConcentration> &rows, bool is_in_table) {
    for_each_number(segment_count, [&](std::int32_t segment) {
        const InitialConcentration row = is_in_table ? rows.next() : InitialConcentration{};
        send<"PINITC">(system, segment, row.concentration);
        send<"PFDISS">(system, segment, row.dissolved_fraction);
    });
}

} // namespace kova_import
