#include "control/sections/segments.h"

#include "control/notices.h"
#include "control/report.h"
#include "control/sections/counts.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kova_import {

namespace {

// Tells when a segment reaches the host without its name or with a shorter one. `name` is the name
// in the file, of which a part may have been cut already.
void give_lost_name(const ImportModule &module, const SegmentTable &table, std::int32_t number,
                    const FixedText<40> &name) {
    const std::string_view content = content_of(name.view());
    std::size_t size = content.size();
    if (table.has_indexed_names && !content.empty()) {
        const ShortText<4> digits = name_digits(number);
        if (digits.view().empty()) {
            give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                        "Segments 999 and from 9999 on have no name where names get their number.",
                        number);
            return;
        }
        size += std::string_view("Seg--").size() + digits.view().size();
    }
    if (module.reader.text_was_cut() || size > name.width)
        give_reason(module, IMPORT_EXPORT_CUT, "The name of the segment is cut at 40 characters.",
                    number);
}

} // namespace

void read_segment_settings(ImportModule &module, SegmentTable &table) {
    RecordReader &reader = module.reader;
    table.segment_count = read_shared_count(reader, "segment count", module.shared.segment_count);
    reader.list("bed-volume option", field("bed-volume option", table.bed_volume_option));
    reader.list("bed time step", field("bed time step", table.bed_time_step));
    reader.list("volume factors", field("volume scale factor", table.volume_scale_factor),
                field("volume conversion factor", table.volume_conversion_factor));
    table.has_indexed_names = module.shared.index_segment_names != 0;
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

ShortText<4> name_digits(std::int32_t number) {
    ShortText<4> digits;
    if (number == 999 || number >= 9999)
        return digits;
    digits.assign(std::to_string(number));
    return digits;
}

void give_other_number(const ImportModule &module, std::int32_t number_in_file,
                       std::int32_t number) {
    if (module.reader.ok() && number_in_file != 0 && number_in_file != number)
        give_reason(
            module, IMPORT_EXPORT_CONVERTED,
            "The record bears the number of another segment; the order of the records counts.",
            number);
}

void add_name(const ImportModule &module, SegmentTable &table, std::int32_t number,
              const FixedText<40> &name) {
    give_lost_name(module, table, number, name);
    table.names.push_back(name);
}

FixedText<40> with_nul(const FixedText<40> &text) {
    FixedText<40> terminated;
    terminated.assign({text.trimmed(), nul});
    return terminated;
}

} // namespace kova_import
