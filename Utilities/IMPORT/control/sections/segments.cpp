#include "control/sections/segments.h"

#include "control/notices.h"
#include "control/report.h"
#include "control/sections/counts.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace kova_import {

namespace {

/// Whether a name as the host gets it ends in the name of the file, hyphens for blanks.
bool ends_alike(std::string_view sent, std::string_view wanted) {
    return sent.size() >= wanted.size() &&
           std::equal(wanted.begin(), wanted.end(),
                      sent.end() - static_cast<std::ptrdiff_t>(wanted.size()),
                      [](char in_file, char at_host) {
                          return in_file == at_host || (in_file == ' ' && at_host == '-');
                      });
}

// Tells when a segment reaches the host without its name or with a shorter one. `name` is the name
// in the file, of which a part may have been cut already.
void give_lost_name(const ImportModule &module, std::int32_t number, const FixedText<40> &name,
                    const FixedText<40> &host_name) {
    const std::string_view wanted = content_of(name.view());
    const std::string_view sent = content_of(host_name.view());
    if (sent.empty() && !wanted.empty())
        give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                    "Segments 999 and from 9999 on have no name where names get their number.",
                    number);
    else if (module.reader.text_was_cut() || !ends_alike(sent, wanted))
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

std::optional<std::string_view> name_digits(std::int32_t number, FixedText<4> &digits) {
    if (number < 1 || number == 999 || number >= 9999)
        return std::nullopt;
    const char *const end = std::to_chars(digits.data(), digits.data() + digits.width, number).ptr;
    return std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
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
              const FixedText<40> &name, HostName *host_name) {
    give_lost_name(module, number, name, host_name(name, number, table.has_indexed_names));
    table.names.push_back(name);
}

FixedText<40> with_nul(const FixedText<40> &text) {
    FixedText<40> terminated;
    terminated.assign({text.trimmed(), nul});
    return terminated;
}

} // namespace kova_import
