#include "control/sections/segments.h"

#include "control/console.h"
#include "control/counting.h"
#include "legacy/sections.h"

namespace kova_import::legacy {

namespace {

constexpr auto segment_commands = segment_identity_commands + segment_geometry_commands;

/// An indexed name has the segment's number before it; segments whose number has no digits get a
/// name of NULs then.
FixedText<40> host_name(const FixedText<40> &name, std::int32_t number, bool indexed) {
    const FixedText<40> terminated = with_nul(name);
    if (!indexed)
        return with_nul(terminated);
    FixedText<40> result;
    const ShortText<4> digits = name_digits(number);
    if (digits.view().empty()) {
        result.fill('\0');
        return result;
    }
    result.assign({"Seg-", digits.view(), "-", terminated.view()});
    return with_nul(result);
}

void read_name(ImportModule &module, std::int32_t number, SegmentTable &table) {
    RecordReader &reader = module.reader;
    std::int32_t segment_number = 0;
    FixedText<40> name;
    name.fill('\0');
    reader.list("segment name", field("segment number", segment_number), field("name", name));
    if (!reader.ok())
        return;
    console::write_line("Reading Segment: ", number, " Name: ", content_of(name.view()));
    give_other_number(module, segment_number, number);
    add_name(module, table, number, name);
}

void read_segments(ImportModule &module, SegmentTable &table) {
    RecordReader &reader = module.reader;
    read_segment_settings(module, table);
    read_segment_records(
        reader, table, [&](std::int32_t number) { read_name(module, number, table); },
        [&](std::int32_t number, Segment &segment) {
            std::int32_t segment_number = 0;
            reader.list("segment geometry",
                        std::tuple_cat(std::tuple{field("segment number", segment_number)},
                                       fields_of(segment, segment_identity),
                                       fields_of(segment, segment_geometry)));
            give_other_number(module, segment_number, number);
        });
}

void send_segments(const SegmentTable &table) {
    send<"PNUMSEG">(table.segment_count);
    console::write_line("Setting Number of Segments to: ", table.segment_count);
    send_segment_settings(table);
    PackedWalk names(table.names);
    PackedWalk segments(table.segments);
    for_each_number(table.segment_count, [&](std::int32_t number) {
        const FixedText<40> name = host_name(names.next(), number, table.has_indexed_names);
        console::write_line("Setting Segment Name: ", content_of(name.view()));
        send<"PSEGNAME">(number, name);
        segment_commands.send_row(segments.next(), number);
    });
    send<"PSEGMENTSREFRESH">();
}

} // namespace

void segments(ImportModule &module) {
    SegmentTable table;
    read_segments(module, table);
    if (!module.reader.ok())
        return;
    module.host_segment_count = table.segment_count;
    send_segments(table);
}

} // namespace kova_import::legacy
