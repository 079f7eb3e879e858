#include "control/notices.h"

#include "control/section.h"
#include "control/short_text.h"

#include <string_view>

namespace kova_import {

namespace {

bool is_empty_file(const ReadFailure &failure) {
    return failure.kind == ReadFailureKind::end_of_file && failure.place.line == 1 &&
           failure.place.column == 1;
}

const char *reason_of(const ReadFailure &failure) {
    if (is_empty_file(failure))
        return "The file is empty.";
    switch (failure.kind) {
    case ReadFailureKind::none:
        break;
    case ReadFailureKind::bad_value:
        return "The value cannot be converted.";
    case ReadFailureKind::out_of_range:
        return "The value is out of range.";
    case ReadFailureKind::end_of_file:
        return "The file ends here, but the section is not complete.";
    case ReadFailureKind::open_delimiter:
        return "The quoted text that starts here has no end.";
    case ReadFailureKind::system_error:
        return "The system could not read the file any further.";
    case ReadFailureKind::not_open:
        return "There is no open import file.";
    case ReadFailureKind::wide_text:
        return "The file is written in UTF-16 or UTF-32, not as plain text.";
    }
    return "";
}

const char *advice_of(const ReadFailure &failure) {
    if (is_empty_file(failure))
        return "";
    switch (failure.kind) {
    case ReadFailureKind::end_of_file:
        if (failure.line_text.view().find('\r') != std::string_view::npos)
            return "Its lines end in CR alone; save it with LF or CR LF.";
        return "Check that the file was copied whole and that the counts before this place are "
               "right.";
    case ReadFailureKind::open_delimiter:
        return "Close the text with the quote that opens it.";
    case ReadFailureKind::not_open:
        return "Call importexport, which opens the file and runs the sections.";
    case ReadFailureKind::wide_text:
        return "Save it as plain text or UTF-8.";
    case ReadFailureKind::none:
    case ReadFailureKind::bad_value:
    case ReadFailureKind::out_of_range:
    case ReadFailureKind::system_error:
        break;
    }
    return failure.advice;
}

} // namespace

import_export_notice start_notice(const ImportModule &module, import_export_notice_kind kind) {
    import_export_notice notice{};
    notice.size = sizeof notice;
    notice.kind = kind;
    notice.section = module.section_number;
    notice.section_name = module.section_name;
    notice.statement = module.reader.statement();
    notice.statement_number = module.reader.line_counter();
    notice.field = "";
    notice.expected = "";
    notice.found = "";
    notice.reason = "";
    notice.advice = "";
    notice.line_text = "";
    notice.path = module.path.c_str();
    notice.name = "";
    return notice;
}

void give(const ImportModule &module, const import_export_notice &notice) {
    if (module.shared.notice == nullptr)
        return;
    try {
        module.shared.notice(module.shared.notice_context, &notice);
    } catch (...) {
        // What a host does with a notice must not change what it is sent.
        return;
    }
}

void give_read_failure(const ImportModule &module) {
    const ReadFailure &failure = module.reader.failure();
    import_export_notice notice = start_notice(module, IMPORT_EXPORT_READ_FAILED);
    notice.statement = failure.statement;
    notice.statement_number = failure.statement_number;
    notice.line = failure.place.line;
    notice.column = failure.place.column;
    notice.width = failure.width;
    notice.field = failure.field;
    notice.expected = failure.expected;
    notice.found = failure.found.c_str();
    notice.found_length = failure.found.view().size();
    notice.reason = reason_of(failure);
    notice.advice = advice_of(failure);
    notice.line_text = failure.line_text.c_str();
    notice.line_text_length = failure.line_text.view().size();
    notice.line_text_column = failure.line_text_column;
    give(module, notice);
}

void give_left_out(void *module, const char *field, FilePlace place) {
    const ImportModule &import_module = *static_cast<const ImportModule *>(module);
    // The first section reads the header again, and tells what it leaves out. Of a system that
    // stays behind nobody misses a value.
    if (import_module.section_number == 0 || import_module.drops_system)
        return;
    // With the network alone, nobody gets the data from the boundaries on.
    constexpr auto first_beside_network =
        static_cast<std::int32_t>(SectionNumber::boundary_conditions);
    if (import_module.section_number >= first_beside_network &&
        import_module.shared.transport_only != 0)
        return;
    import_export_notice notice = start_notice(import_module, IMPORT_EXPORT_DEFAULTED);
    notice.line = place.line;
    notice.column = place.column;
    notice.field = field;
    notice.reason = "The record leaves the value out; it is 0 or blank, or keeps an earlier value.";
    give(import_module, notice);
}

bool is_awaited(const ImportModule &module) {
    return module.reader.ok() && module.shared.transport_only == 0;
}

void give_cut_file_name(const ImportModule &module) {
    if (module.reader.ok() && module.reader.text_was_cut())
        give_reason(module, IMPORT_EXPORT_CUT, "The file name is cut at 512 characters.");
}

void give_reason_of_send(const ImportModule &module, import_export_notice_kind kind,
                         const char *reason, std::int64_t number) {
    give_reason_at(module, {}, kind, reason, number);
}

void give_reason_at(const ImportModule &module, RecordPlace place, import_export_notice_kind kind,
                    const char *reason, std::int64_t number) {
    give_named(module, place, kind, reason, number, "");
}

void give_named(const ImportModule &module, RecordPlace place, import_export_notice_kind kind,
                const char *reason, std::int64_t number, std::string_view name) {
    constexpr std::size_t longest_name = 60;
    ShortText<longest_name> terminated;
    terminated.assign(name);
    import_export_notice notice = start_notice(module, kind);
    notice.statement = place.statement;
    notice.statement_number = 0;
    notice.line = place.line;
    notice.reason = reason;
    notice.number = number;
    notice.name = terminated.c_str();
    notice.name_length = terminated.view().size();
    give(module, notice);
}

void give_reason(const ImportModule &module, import_export_notice_kind kind, const char *reason,
                 std::int64_t number) {
    import_export_notice notice = start_notice(module, kind);
    if (module.section_number != 0)
        notice.line = module.reader.last_record().line;
    notice.reason = reason;
    notice.number = number;
    give(module, notice);
}

} // namespace kova_import
