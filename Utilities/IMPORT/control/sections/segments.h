#pragma once

// The segment network: names, what lies beneath, volumes and hydraulic geometry.

#include "control/fixed_text.h"
#include "control/host_link.h"
#include "control/import_module.h"
#include "control/packed_list.h"
#include "control/short_text.h"

#include <cstdint>
#include <tuple>

namespace kova_import {

/// Values pass to the host as they stand. Units are those of a model whose volume factors are 1;
/// multipliers and exponents are those of velocity and depth as powers of the flow (m3/s).
struct Segment {
    std::int32_t bottom_segment = 0;
    std::int32_t type = 0;
    std::int32_t hydraulic_option = 0; ///< current format; likewise the last six members
    float volume = 0;                  ///< m3
    float velocity_multiplier = 0;
    float velocity_exponent = 0;
    float depth_multiplier = 0;
    float depth_exponent = 0;
    float length = 0; ///< m
    float slope = 0;
    float width = 0; ///< m
    float roughness = 0;
    float minimum_depth = 0;             ///< m
    float initial_surface_elevation = 0; ///< m
    float bottom_elevation = 0;          ///< m
    float side_slope = 0;
    float initial_depth = 0; ///< m
    float weir_height = 0;   ///< m
    float weir_type = 0;     ///< a real in the current format
};

struct SegmentTable {
    std::int32_t segment_count = 0; ///< as read; negative counts are sent, and count as none
    std::int32_t bed_volume_option = 0;
    float bed_time_step = 0; ///< days
    float volume_scale_factor = 0;
    float volume_conversion_factor = 0;
    bool has_indexed_names = false; ///< whether hosts get names with the segment's number
    /// As the file has them: a number in each would make the rows of blank ones long.
    PackedList<FixedText<40>> names;
    PackedList<Segment> segments;
};

/// The members that a geometry record of both formats fills, in its order.
inline constexpr auto segment_identity = std::tuple{
    member("bottom segment", &Segment::bottom_segment),
    member("segment type", &Segment::type),
};
inline constexpr auto segment_geometry = std::tuple{
    member("volume", &Segment::volume),
    member("velocity multiplier", &Segment::velocity_multiplier),
    member("velocity exponent", &Segment::velocity_exponent),
    member("depth multiplier", &Segment::depth_multiplier),
    member("depth exponent", &Segment::depth_exponent),
    member("length", &Segment::length),
    member("slope", &Segment::slope),
    member("width", &Segment::width),
    member("roughness", &Segment::roughness),
    member("minimum depth", &Segment::minimum_depth),
};

/// The order in which they reach the host: slope before length, unlike the record.
inline constexpr RowCommands<RowCommand<"PBOTSEG", &Segment::bottom_segment>,
                             RowCommand<"PSEGTYPE", &Segment::type>>
    segment_identity_commands;
inline constexpr RowCommands<
    RowCommand<"PVOLUME", &Segment::volume>, RowCommand<"PVMULT", &Segment::velocity_multiplier>,
    RowCommand<"PVEXP", &Segment::velocity_exponent>,
    RowCommand<"PDMULT", &Segment::depth_multiplier>, RowCommand<"PDEXP", &Segment::depth_exponent>,
    RowCommand<"PSEGSLOPE", &Segment::slope>, RowCommand<"PSEGLENGTH", &Segment::length>,
    RowCommand<"PSEGWIDTH", &Segment::width>, RowCommand<"PSEGROUGH", &Segment::roughness>,
    RowCommand<"PSEGMINDEPTH", &Segment::minimum_depth>>
    segment_geometry_commands;

/// Reads the segment count, the bed-volume settings and the volume factors, and the caption of
/// the names. Later sections share the count.
void read_segment_settings(ImportModule &module, SegmentTable &table);

/// Reads the records of all segments: those of the names by `read_name(number)`, which adds them to
/// the table, and, behind a caption that nobody guards, those of the geometry by
/// `read_geometry(number, segment)`. The order of the records counts, not the numbers that they
/// bear.
template <class ReadName, class ReadGeometry>
void read_segment_records(RecordReader &reader, SegmentTable &table, ReadName read_name,
                          ReadGeometry read_geometry) {
    reader.for_each_record(table.segment_count, read_name);
    FixedText<40> caption;
    reader.unguarded_fixed<"(A40)">("caption of the segment geometry", caption);
    reader.for_each_record(table.segment_count, [&](std::int32_t number) {
        Segment segment;
        read_geometry(number, segment);
        if (reader.ok())
            table.segments.push_back(segment);
    });
}

/// Tells when a record bears another number than its place in the order of the records, which is
/// what counts. A record without a number is no contradiction.
void give_other_number(const ImportModule &module, std::int32_t number_in_file,
                       std::int32_t number);

/// Adds the name that was read last, and tells when it does not reach the host whole.
void add_name(const ImportModule &module, SegmentTable &table, std::int32_t number,
              const FixedText<40> &name);

/// Sends what `read_segment_settings` has read, the count apart, and the section's report line.
void send_segment_settings(const SegmentTable &table);

/// The digits of a segment's number in its name. Numbers 999 and from 9999 on have none: models
/// that were imported long ago know those segments by an empty name.
[[nodiscard]] ShortText<4> name_digits(std::int32_t number);

/// `text` without its trailing blanks and with a NUL behind, where there is room.
[[nodiscard]] FixedText<40> with_nul(const FixedText<40> &text);

} // namespace kova_import
