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

/// A record far ahead in the order of the segments. What it leaves out is not a number.
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

/// The concentrations of one system while they are read. Records name their segment: those of the
/// first segments go straight into the table, which may run some way ahead of the records, and
/// those far ahead wait. No number in the file decides how large the table is.
class SystemConcentrations {
  public:
    explicit SystemConcentrations(ChunkedList<InitialConcentration> &table)
        : table_(&table), first_(table.size()) {}

    /// Says whether the segment is known to have had a record before.
    bool add(std::int32_t segment, const InitialConcentration &given) {
        ++record_count_;
        const auto place = static_cast<std::size_t>(segment - 1);
        const bool is_repeated = place < is_named_.size() && is_named_[place];
        if (place < lowest_waiting_ && place < record_count_ + most_ahead) {
            put(place, given);
        } else {
            waiting_.push_back({segment, given});
            lowest_waiting_ = std::min(lowest_waiting_, place);
        }
        return is_repeated;
    }

    /// Completes the table, when as many records have been read as there are segments. Says whether
    /// there was one for each.
    bool finish(std::int32_t segment_count) {
        for (RowWalk rows(waiting_); !rows.at_end();) {
            const NamedConcentration &row = rows.next();
            put(static_cast<std::size_t>(row.segment - 1), row.given);
        }
        grow(static_cast<std::size_t>(std::max(segment_count, 0)));
        return std::find(is_named_.begin(), is_named_.end(), false) == is_named_.end();
    }

  private:
    static constexpr std::size_t most_ahead = 1000; ///< segments

    void grow(std::size_t size) {
        while (is_named_.size() < size) {
            table_->push_back({});
            is_named_.push_back(false);
        }
    }

    void put(std::size_t place, const InitialConcentration &given) {
        grow(place + 1);
        keep(given, (*table_)[first_ + place]);
        is_named_[place] = true;
    }

    ChunkedList<InitialConcentration> *table_;
    std::size_t first_;          ///< row of the system's first segment
    std::vector<bool> is_named_; ///< of each row
    std::size_t record_count_ = 0;
    ChunkedList<NamedConcentration> waiting_; ///< later records of their segments wait behind them
    std::size_t lowest_waiting_ = std::numeric_limits<std::size_t>::max();
};

} // namespace

void read_system_caption(RecordReader &reader) {
    FixedText<80> caption;
    reader.unguarded_fixed<"(A80)">("caption of the system", caption);
}

InitialSystem read_initial_system(RecordReader &reader) {
    InitialSystem values;
    reader.list("flow field of the system", field("flow field of the system", values.flow_field));
    reader.list("density of the system", field("density of the system", values.density));
    reader.list("maximum concentration of the system",
                field("maximum concentration of the system", values.maximum_concentration));
    return values;
}

void read_initial_concentrations(ImportModule &module, std::int32_t system,
                                 const InitialSystem &values, std::int32_t segment_count,
                                 InitialConditionTable &table) {
    // no file can give this value
    constexpr float left_out = std::numeric_limits<float>::quiet_NaN();
    const Bounds segments = {.smallest = 1,
                             .largest = segment_count,
                             .expected = "a segment number from 1 to the segment count"};
    RecordReader &reader = module.reader;
    FixedText<80> caption;
    reader.unguarded_fixed<"(A80)">("caption of the initial conditions", caption);
    if (reader.ok())
        table.systems.push_back(values);
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

void give_fewer_segments(const ImportModule &module, std::int32_t segment_count) {
    if (segment_count < module.host_segment_count && is_awaited(module))
        give_reason(module, IMPORT_EXPORT_DEFAULTED,
                    "The section has fewer segments than the model; the others get no initial "
                    "conditions.");
}

void send_initial_condition_line() { send_report_line("Importing Initial Conditions</span></li>"); }

void send_initial_conditions(const ImportModule &module, const InitialConditionTable &table,
                             std::int32_t system_count, std::int32_t segment_count) {
    RowWalk systems(table.systems);
    RowWalk concentrations(table.concentrations);
    for_each_number(system_count, [&](std::int32_t number) {
        const bool is_in_table = !systems.at_end();
        if (!is_in_table)
            give_reason_of_send(module, IMPORT_EXPORT_DEFAULTED,
                                "The section does not hold the system of the state variable, which "
                                "gets 0.",
                                number);
        const InitialSystem system = is_in_table ? systems.next() : InitialSystem{};
        send<"PCMAX">(number, system.maximum_concentration);
        send<"PDENSITY">(number, system.density);
        send<"PIFIELD">(number, system.flow_field);
        for_each_number(segment_count, [&](std::int32_t segment) {
            const InitialConcentration row =
                is_in_table ? concentrations.next() : InitialConcentration{};
            send<"PINITC">(number, segment, row.concentration);
            send<"PFDISS">(number, segment, row.dissolved_fraction);
        });
    });
}

} // namespace kova_import
