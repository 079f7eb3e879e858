#include "control/sections/segment_parameters.h"

#include "control/chunked_list.h"
#include "control/console.h"
#include "control/counting.h"
#include "control/notices.h"
#include "control/packed_list.h"
#include "control/report.h"
#include "control/sections/counts.h"
#include "control/sections/repeated_numbers.h"
#include "control/sections/segments.h"
#include "current/sections.h"

#include <cstddef>
#include <utility>

namespace kova_import::current {

namespace {

/// The parameters in the order of the list.
struct SegmentParameterTable {
    std::int32_t segment_count = 0;
    std::int32_t parameter_count = 0;
    RecordPlace count_record;
    /// As the list gives them, or the records of the last segment, which write over it.
    PackedList<ParameterIdentity> identities;
    PackedList<float> scales;
    ChunkedList<float> values; ///< of all parameters in the first segment, then in the second, ...

    [[nodiscard]] float value(std::int32_t segment, std::size_t parameter) const {
        return values[static_cast<std::size_t>(segment - 1) * scales.size() + parameter];
    }
};

void read_list(RecordReader &reader, SegmentParameterTable &table) {
    reader.list("heading of the parameter list", unused_text);
    reader.for_each_record(table.parameter_count, [&](std::int32_t) {
        ParameterIdentity parameter;
        float scale = 0;
        reader.fixed<"(7X,I5,11X,I3,8X,F10.0)">(
            "segment parameter", field("parameter number", parameter.number),
            field("class", parameter.class_index), field("scale factor", scale));
        if (!reader.ok())
            return;
        table.identities.push_back(parameter);
        table.scales.push_back(scale);
    });
}

void read_value(ImportModule &module, ParameterIdentity before, SegmentParameterTable &table) {
    RecordReader &reader = module.reader;
    ParameterIdentity parameter;
    float value = 0;
    reader.fixed<"(11X,I5,16X,I3,19X,F10.0)">(
        "value of the segment parameter", field("parameter number", parameter.number),
        field("class", parameter.class_index), field("value", value));
    if (!reader.ok())
        return;
    if (parameter != before && is_awaited(module))
        give_reason(module, IMPORT_EXPORT_CONVERTED,
                    "The record bears another number or class than the one before it in its place; "
                    "the last one counts.",
                    parameter.number);
    table.identities.push_back(parameter);
    table.values.push_back(value);
}

void read_segment(ImportModule &module, std::int32_t segment, SegmentParameterTable &table) {
    RecordReader &reader = module.reader;
    std::int32_t segment_number = 0;
    reader.list("segment of the parameter values",
                field("segment of the parameter values", segment_number));
    if (is_awaited(module))
        give_other_number(module, segment_number, segment);
    PackedList<ParameterIdentity> before;
    before.swap(table.identities);
    PackedWalk identities(before);
    reader.for_each_record(table.parameter_count,
                           [&](std::int32_t) { read_value(module, identities.next(), table); });
}

void read_segment_parameters(ImportModule &module, SegmentParameterTable &table) {
    RecordReader &reader = module.reader;
    reader.list("heading of the section", unused_text);
    table.segment_count = read_shared_count(reader, "segment count", module.shared.segment_count);
    table.parameter_count = read_count(reader, "segment-parameter count");
    table.count_record = reader.last_record();
    read_list(reader, table);
    if (table.parameter_count <= 0)
        return;
    reader.list("heading of the parameter values", unused_text);
    reader.for_each_record(table.segment_count,
                           [&](std::int32_t segment) { read_segment(module, segment, table); });
}

// Hosts know a parameter by its number and class.
void give_replaced(const ImportModule &module, const SegmentParameterTable &table) {
    PackedWalk identities(table.identities);
    const auto next = [&] {
        const ParameterIdentity parameter = identities.next();
        return std::pair(parameter.number, parameter.class_index);
    };
    for_each_repeated(table.identities.size(), next, [&](const auto &number_and_class) {
        give_reason_at(module, table.count_record, IMPORT_EXPORT_REPLACED,
                       "Several places of the list have the number and class of this parameter; "
                       "the host keeps the last one.",
                       number_and_class.first);
    });
}

void send_segment_parameters(const SegmentParameterTable &table) {
    if (table.parameter_count >= 1) {
        send_report_line("Importing Segment Parameter Information</span></li>");
        PackedWalk scales(table.scales);
        for (PackedWalk identities(table.identities); !identities.at_end();)
            send_parameter(identities.next(), scales.next());
        send<"PPARAMSREFRESH">();
        std::size_t place = 0;
        for (PackedWalk identities(table.identities); !identities.at_end(); ++place) {
            const ParameterIdentity parameter = identities.next();
            for_each_number(table.segment_count, [&](std::int32_t segment) {
                send_parameter_value(segment, parameter, table.value(segment, place));
            });
        }
    }
    send<"PPARAMSREFRESH">();
}

} // namespace

void seg_parameters_v2(ImportModule &module) {
    console::write_line("Reading Segment Parameters");
    SegmentParameterTable table;
    read_segment_parameters(module, table);
    if (!module.reader.ok())
        return;
    if (module.shared.transport_only == 0) {
        give_replaced(module, table);
        send_segment_parameters(table);
    }
    console::write_line("Done Reading Segment Parameters");
}

} // namespace kova_import::current
