#include "control/sections/segments.h"

#include "control/report.h"

#include <charconv>

namespace kova_import {

void read_segment_settings(ImportModule &module, SegmentTable &table) {
    RecordReader &reader = module.reader;
    reader.list("segment count", field("segment count", table.segment_count));
    module.shared.segment_count = table.segment_count;
    reader.list("bed-volume option", field("bed-volume option", table.bed_volume_option));
    reader.list("bed time step", field("bed time step", table.bed_time_step));
    reader.list("volume factors", field("volume scale factor", table.volume_scale_factor),
                field("volume conversion factor", table.volume_conversion_factor));
    FixedText<40> caption;
    reader.fixed<"(A40)">("caption of the segment names", field("caption", caption));
}

void send_segment_settings(const SegmentTable &table) {
    send<"PBEDOPT">(table.bed_volume_option);
    send<"PBEDDT">(table.bed_time_step);
    send<"PSCALV">(table.volume_scale_factor);
    send<"PCONVV">(table.volume_conversion_factor);
    send_report_line("Importing Segment Information</span></li>");
}

std::optional<std::string_view> name_digits(std::int32_t number, FixedText<4> &digits) {
    if (number < 1 || number == 999 || number >= 9999)
        return std::nullopt;
    const char *const end = std::to_chars(digits.data(), digits.data() + digits.width, number).ptr;
    return std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

FixedText<40> with_nul(const FixedText<40> &text) {
    FixedText<40> terminated;
    terminated.assign({text.trimmed(), nul});
    return terminated;
}

} // namespace kova_import
