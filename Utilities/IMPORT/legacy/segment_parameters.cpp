#include "control/sections/segment_parameters.h"

#include "control/chunked_list.h"
#include "control/console.h"
#include "control/counting.h"
#include "control/notices.h"
#include "control/report.h"
#include "control/sections/counts.h"
#include "control/sections/model_parameters.h"
#include "control/sections/repeated_numbers.h"
#include "control/sections/segments.h"
#include "legacy/sections.h"
#include "legacy/segment_parameter_translation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace kova_import::legacy {

namespace {

/// A place in the list of parameters. Value records may put another number there: the last counts.
struct ListedParameter {
    std::int32_t legacy_number = 0;
    float scale = 0;
};

struct SegmentValue {
    std::int32_t segment = 0;
    float value = 0;
};

/// The values of a legacy parameter in the order of the segments, of those segments that have one.
/// The last of several in a segment counts.
using ParameterValues = ChunkedList<SegmentValue>;

struct SegmentParameterTable {
    std::int32_t segment_count = 0;
    std::int32_t parameter_count = 0;
    ChunkedList<ListedParameter> list;
    std::array<ParameterValues, last_legacy_parameter + 1> values; ///< by legacy number
};

using Row = SegmentParameterRow;

std::span<const Row> rows_of(std::int32_t legacy_number) {
    struct ByNumber {
        bool operator()(const Row &row, std::int32_t number) const {
            return row.legacy_number < number;
        }
        bool operator()(std::int32_t number, const Row &row) const {
            return number < row.legacy_number;
        }
    };
    const std::span all(segment_parameter_rows::rows);
    const auto [first, last] = std::equal_range(all.begin(), all.end(), legacy_number, ByNumber{});
    return {first, last};
}

// Tells, where a legacy number comes up, that nothing becomes of it there.
void give_untranslated(const ImportModule &module, std::int32_t legacy_number) {
    if (!is_awaited(module))
        return;
    const RecordPlace place = module.reader.last_record();
    const auto rows = rows_of(legacy_number);
    if (module.shared.model_type != eutrophication)
        give_reason(module, IMPORT_EXPORT_CONDITION_UNMET,
                    "Only segment parameters of eutrophication models (type 11) come across.",
                    legacy_number);
    else if (legacy_number == second_water_temperature)
        give_named(module, place, IMPORT_EXPORT_NOT_IMPORTED,
                   "There is only one water temperature time function in the current model.",
                   legacy_number, "Water Temperature Time Function");
    else if (rows.empty())
        give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                    "The current model has no such segment parameter.", legacy_number);
    else if (!rows.front().applies(module.shared))
        give_named(module, place, IMPORT_EXPORT_CONDITION_UNMET,
                   "The host does not simulate what the segment parameter belongs to.",
                   legacy_number, rows.front().name);
}

void read_list(ImportModule &module, SegmentParameterTable &table) {
    RecordReader &reader = module.reader;
    reader.for_each_record(table.parameter_count, [&](std::int32_t) {
        ListedParameter listed;
        reader.list("segment parameter", field("parameter number", listed.legacy_number),
                    field("scale factor", listed.scale));
        give_untranslated(module, listed.legacy_number);
        if (reader.ok())
            table.list.push_back(listed);
    });
}

void keep_value(const ImportModule &module, std::int32_t segment, std::int32_t legacy_number,
                float value, SegmentParameterTable &table) {
    if (legacy_number < 0 || legacy_number > last_legacy_parameter)
        return;
    ParameterValues &values = table.values[static_cast<std::size_t>(legacy_number)];
    if (values.size() > 0 && values[values.size() - 1].segment == segment) {
        if (is_awaited(module) && !rows_of(legacy_number).empty())
            give_reason(module, IMPORT_EXPORT_REPLACED,
                        "The value replaces an earlier one of the same parameter and segment.",
                        legacy_number);
        values[values.size() - 1].value = value;
    } else {
        values.push_back({segment, value});
    }
}

void read_value(ImportModule &module, std::int32_t segment, ListedParameter &listed,
                SegmentParameterTable &table) {
    // what a record leaves out stays as it is; no file can give this value
    constexpr float left_out = std::numeric_limits<float>::quiet_NaN();
    RecordReader &reader = module.reader;
    const std::int32_t number_in_list = listed.legacy_number;
    float value = left_out;
    reader.list("value of the segment parameter", field("parameter number", listed.legacy_number),
                field("value", value));
    if (!reader.ok())
        return;
    if (listed.legacy_number != number_in_list && is_awaited(module)) {
        give_reason(module, IMPORT_EXPORT_CONVERTED,
                    "The record bears another number than the list; the last one counts.",
                    listed.legacy_number);
        give_untranslated(module, listed.legacy_number);
    }
    if (!std::isnan(value))
        keep_value(module, segment, listed.legacy_number, value, table);
}

void read_segments(ImportModule &module, SegmentParameterTable &table) {
    RecordReader &reader = module.reader;
    reader.for_each_record(table.segment_count, [&](std::int32_t segment) {
        std::int32_t segment_number = 0;
        reader.list("segment of the parameter values",
                    field("segment of the parameter values", segment_number));
        if (is_awaited(module))
            give_other_number(module, segment_number, segment);
        reader.for_each_record(table.parameter_count, [&](std::int32_t place) {
            read_value(module, segment, table.list[static_cast<std::size_t>(place - 1)], table);
        });
    });
}

// The two parameters of the air temperature go to all segments, also where no record backs their
// number.
Bounds parameter_count_bounds(const ImportModule &module, std::int32_t segment_count) {
    if (module.shared.tf10_present != 0 && module.shared.transport_only == 0 &&
        segment_count > most_unbacked_segments)
        return {.smallest = 1, .expected = "at least 1 parameter, with more than 100000 segments"};
    return {};
}

void read_parameters(ImportModule &module, SegmentParameterTable &table) {
    RecordReader &reader = module.reader;
    table.segment_count = read_shared_count(reader, "segment count", module.shared.segment_count);
    reader.list("segment-parameter count",
                bounded_field("segment-parameter count", table.parameter_count,
                              parameter_count_bounds(module, table.segment_count)));
    if (table.parameter_count <= 0)
        return;
    read_list(module, table);
    read_segments(module, table);
}

/// What the host gets of the list, under the conditions that hold when the section has been read:
/// its passes must agree, whatever a host writes into the data block between them.
/// A number can become several parameters: they are found again for each pass over the list, since
/// a table of them would take many times the room of the list.
class TranslatedParameters {
  public:
    TranslatedParameters(const import_export_data &conditions, const SegmentParameterTable &table)
        : conditions_(conditions), list_(&table.list) {}

    /// Calls `visit(row, scale)` for each parameter, in the order in which they are sent.
    template <class Visit>
    void for_each(Visit visit) const {
        for_each_listed([&](const ListedParameter &listed) {
            for (const Row &row : rows_of(listed.legacy_number))
                if (row.applies(conditions_))
                    visit(row, row.is_one ? 1.0F : listed.scale);
        });
        if (conditions_.tf10_present != 0)
            for (const Row &row : segment_parameter_rows::air_temperature_rows)
                visit(row, 1.0F);
    }

    /// Calls `visit(listed)` for each place of the list, if the model has parameters that come
    /// across.
    template <class Visit>
    void for_each_listed(Visit visit) const {
        if (conditions_.model_type == eutrophication)
            for (RowWalk list(*list_); !list.at_end();)
                visit(list.next());
    }

    /// Whether a place of the list with this number becomes a parameter.
    [[nodiscard]] bool translates(std::int32_t legacy_number) const {
        const auto rows = rows_of(legacy_number);
        return conditions_.model_type == eutrophication && !rows.empty() &&
               rows.front().applies(conditions_);
    }

    [[nodiscard]] bool empty() const {
        bool is_empty = true;
        for_each([&](const Row &, float) { is_empty = false; });
        return is_empty;
    }

  private:
    import_export_data conditions_;
    const ChunkedList<ListedParameter> *list_;
};

// Tells of values that no parameter carries, since their number left the list again, and of
// parameters that lack the value of a segment.
void give_odd_values(const ImportModule &module, const SegmentParameterTable &table,
                     const TranslatedParameters &translated) {
    std::array<bool, last_legacy_parameter + 1> is_carried{};
    translated.for_each([&](const Row &row, float) {
        is_carried[static_cast<std::size_t>(row.legacy_number)] = true;
    });
    const auto segment_count = static_cast<std::size_t>(std::max(table.segment_count, 0));
    for (std::int32_t number = 1; number <= last_legacy_parameter; ++number) {
        const auto place = static_cast<std::size_t>(number);
        const std::size_t value_count = table.values[place].size();
        const auto rows = rows_of(number);
        if (is_carried[place] && value_count < segment_count)
            give_named(module, {}, IMPORT_EXPORT_DEFAULTED,
                       "The parameter has no value in some segments, which get 0.", number,
                       rows.front().name);
        else if (!is_carried[place] && value_count > 0 && translated.translates(number))
            give_named(module, {}, IMPORT_EXPORT_NOT_IMPORTED,
                       "The parameter is not on the list in the end; its values stay behind.",
                       number, rows.front().name);
    }
}

// Hosts get a parameter as often as the list has its number, each time with the same values.
void give_replaced_scales(const ImportModule &module, const SegmentParameterTable &table,
                          const TranslatedParameters &translated) {
    RowWalk list(table.list);
    for_each_repeated(
        table.list.size(), [&] { return list.next().legacy_number; },
        [&](std::int32_t legacy_number) {
            if (translated.translates(legacy_number))
                give_named(module, {}, IMPORT_EXPORT_REPLACED,
                           "Several places of the list have the number of this parameter; the host "
                           "keeps the last scale factor.",
                           legacy_number, rows_of(legacy_number).front().name);
        });
}

void send_ones(const Row &row, std::int32_t segment_count) {
    for_each_number(segment_count,
                    [&](std::int32_t segment) { send_parameter_value(segment, row.parameter, 1); });
}

void send_values(const Row &row, const SegmentParameterTable &table) {
    const ParameterValues &values = table.values[static_cast<std::size_t>(row.legacy_number)];
    std::size_t next = 0;
    for_each_number(table.segment_count, [&](std::int32_t segment) {
        const bool is_here = next < values.size() && values[next].segment == segment;
        send_parameter_value(segment, row.parameter, is_here ? values[next++].value : 0);
    });
}

void send_parameters(const TranslatedParameters &translated, const SegmentParameterTable &table) {
    translated.for_each_listed([](const ListedParameter &listed) {
        if (listed.legacy_number == second_water_temperature)
            send_report_line(
                "There is only 1 Water Temperature Time Function in KOVA8</span></li>");
    });
    if (!translated.empty()) {
        send_report_line("Importing Segment Parameter Information</span></li>");
        translated.for_each(
            [](const Row &row, float scale) { send_parameter(row.parameter, scale); });
        send<"PPARAMSREFRESH">();
        translated.for_each([&](const Row &row, float) {
            if (row.is_one)
                send_ones(row, table.segment_count);
            else
                send_values(row, table);
        });
    }
    send<"PPARAMSREFRESH">();
}

} // namespace

void seg_parameters(ImportModule &module) {
    console::write_line("Reading Segment Parameters");
    SegmentParameterTable table;
    read_parameters(module, table);
    if (!module.reader.ok() || module.shared.transport_only != 0)
        return;
    const TranslatedParameters translated(module.shared, table);
    give_odd_values(module, table, translated);
    give_replaced_scales(module, table, translated);
    send_parameters(translated, table);
}

} // namespace kova_import::legacy
