#include "control/sections/segments.h"

#include "control/counting.h"
#include "current/sections.h"

#include <algorithm>

namespace kova_import::current {

namespace {

constexpr auto more_segment_geometry = std::tuple{
    member("initial surface elevation", &Segment::initial_surface_elevation),
    member("bottom elevation", &Segment::bottom_elevation),
    member("side slope", &Segment::side_slope),
    member("initial depth", &Segment::initial_depth),
    member("weir height", &Segment::weir_height),
    member("weir type", &Segment::weir_type),
};

// The weir type goes to the host although its keyword starts with G; hosts know it by that name.
constexpr auto segment_commands =
    segment_identity_commands + RowCommands<RowCommand<"PIQOPT", &Segment::hydraulic_option>>{} +
    segment_geometry_commands +
    RowCommands<RowCommand<"PINITIALSURFACEELEVATION", &Segment::initial_surface_elevation>,
                RowCommand<"PBOTTOMELEVATION", &Segment::bottom_elevation>,
                RowCommand<"PSIDESLOPE", &Segment::side_slope>,
                RowCommand<"PINITIALDEPTH", &Segment::initial_depth>,
                RowCommand<"PWEIRHEIGHT", &Segment::weir_height>,
                RowCommand<"GWEIRTYPE", &Segment::weir_type>>{};

/// An indexed name has the segment's number before it and hyphens for its blanks; segments whose
/// number has no digits get a blank name then.
FixedText<40> host_name(const FixedText<40> &name, std::int32_t number, bool indexed) {
    const FixedText<40> terminated = with_nul(name);
    if (!indexed)
        return with_nul(terminated);
    FixedText<40> result;
    const ShortText<4> digits = name_digits(number);
    if (digits.view().empty())
        return result;
    result.assign({"Seg-", digits.view(), "-", terminated.view()});
    std::replace(result.data(), result.data() + result.trimmed().size(), ' ', '-');
    return with_nul(result);
}

void read_name(ImportModule &module, std::int32_t number, SegmentTable &table) {
    RecordReader &reader = module.reader;
    std::int32_t segment_number = 0;
    FixedText<40> name;
    reader.fixed<"(I5,5X,A40)">("segment name", field("segment number", segment_number),
                                field("name", name));
    if (!reader.ok())
        return;
    give_other_number(module, segment_number, number);
    add_name(module, table, number, name);
}

void read_segments(ImportModule &module, SegmentTable &table) {
    RecordReader &reader = module.reader;
    reader.list("heading of the section", unused_text);
    read_segment_settings(module, table);
    read_segment_records(
        reader, table, [&](std::int32_t number) { read_name(module, number, table); },
        [&](std::int32_t number, Segment &segment) {
            std::int32_t segment_number = 0;
            reader.fixed<"(4(I5),16(F15.5))">(
                "segment geometry",
                std::tuple_cat(std::tuple{field("segment number", segment_number)},
                               fields_of(segment, segment_identity),
                               std::tuple{field("hydraulic option", segment.hydraulic_option)},
                               fields_of(segment, segment_geometry),
                               fields_of(segment, more_segment_geometry)));
            give_other_number(module, segment_number, number);
        });
    // The flow paths ask for the option of the first segment only.
    if (reader.ok() && table.segments.size() > 0)
        module.flow_option = PackedWalk(table.segments).next().hydraulic_option;
}

void send_segments(const SegmentTable &table) {
    send<"PNUMSEG">(table.segment_count);
    send_segment_settings(table);
    PackedWalk names(table.names);
    PackedWalk segments(table.segments);
    for_each_number(table.segment_count, [&](std::int32_t number) {
        send<"PSEGNAME">(number, host_name(names.next(), number, table.has_indexed_names));
        segment_commands.send_row(segments.next(), number);
    });
    send<"PSEGMENTSREFRESH">();
}

} // namespace

void segments_v2(ImportModule &module) {
    SegmentTable table;
    read_segments(module, table);
    if (!module.reader.ok())
        return;
    module.host_segment_count = table.segment_count;
    send_segments(table);
}

} // namespace kova_import::current
