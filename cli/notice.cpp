#include "cli/notice.h"

#include <algorithm>
#include <cstring>

namespace kova_command {

namespace {

constexpr std::array<NoticeKind, notice_kind_count> kinds = {{
    {IMPORT_EXPORT_READ_FAILED, "read_failed", Level::error,
     "A read failed; the import stops at its section.", "read failure", "read failures"},
    {IMPORT_EXPORT_OPEN_FAILED, "open_failed", Level::error, "The import file cannot be opened.",
     "file that cannot be opened", "files that cannot be opened"},
    {IMPORT_EXPORT_NOT_IMPORTED, "not_imported", Level::warning,
     "A datum of the file has no counterpart in the current model.", "datum without a counterpart",
     "data without a counterpart"},
    {IMPORT_EXPORT_CONDITION_UNMET, "condition_unmet", Level::warning,
     "What a datum of the file belongs to is not simulated.",
     "datum of something that is not simulated", "data of something that is not simulated"},
    {IMPORT_EXPORT_CONVERTED, "converted", Level::note, "A datum comes across with another value.",
     "datum converted", "data converted"},
    {IMPORT_EXPORT_CUT, "cut", Level::warning, "A text comes across shortened.", "text cut",
     "texts cut"},
    {IMPORT_EXPORT_DEFAULTED, "defaulted", Level::note,
     "The file leaves a datum out; the model gets a default.", "datum given a default",
     "data given a default"},
    {IMPORT_EXPORT_PLACEHOLDER, "placeholder", Level::note,
     "The model gets a datum that stands for \"none\".", "placeholder", "placeholders"},
    {IMPORT_EXPORT_CALL_REFUSED, "call_refused", Level::error,
     "The import library was called while it was at work.", "call refused", "calls refused"},
    {IMPORT_EXPORT_OUT_OF_MEMORY, "out_of_memory", Level::error,
     "There is not enough memory for the import.", "stop for want of memory",
     "stops for want of memory"},
    {IMPORT_EXPORT_HOST_FAILED, "host_failed", Level::error,
     "The host ended a command with an exception.", "failure of the host", "failures of the host"},
    {IMPORT_EXPORT_REPLACED, "replaced", Level::warning,
     "One datum of the file takes the place of another.", "datum replaced by a later one",
     "data replaced by later ones"},
    {0, "other", Level::warning,
     "The import library tells something that this command cannot name.", "other notice",
     "other notices"},
}};

SharedText text_of(const char *text) { return text == nullptr ? SharedText() : SharedText(text); }

SharedText text_of(const char *text, std::size_t length) {
    return text == nullptr ? SharedText() : SharedText(std::string_view(text, length));
}

} // namespace

std::string_view name_of(Level level) {
    switch (level) {
    case Level::note:
        return "note";
    case Level::warning:
        return "warning";
    case Level::error:
        break;
    }
    return "error";
}

const std::array<NoticeKind, notice_kind_count> &notice_kinds() { return kinds; }

std::size_t kind_row(std::int32_t number) {
    for (std::size_t row = 0; row + 1 < kinds.size(); ++row)
        if (kinds[row].number == number)
            return row;
    return kinds.size() - 1;
}

Origin Notice::origin_of_name() const {
    constexpr std::int32_t time_functions = 8;
    return section == time_functions ? Origin::file : Origin::utility;
}

Notice copy_of(const import_export_notice &notice) {
    import_export_notice known{};
    std::memcpy(&known, &notice, std::min(notice.size, sizeof known));
    return {
        .kind = known.kind,
        .section = known.section,
        .section_name = text_of(known.section_name),
        .statement = text_of(known.statement),
        .statement_number = known.statement_number,
        .line = known.line,
        .column = known.column,
        .width = known.width,
        .field = text_of(known.field),
        .expected = text_of(known.expected),
        .found = text_of(known.found, known.found_length),
        .reason = text_of(known.reason),
        .advice = text_of(known.advice),
        .line_text = text_of(known.line_text, known.line_text_length),
        .line_text_column = known.line_text_column,
        .number = known.number,
        .name = text_of(known.name, known.name_length),
    };
}

} // namespace kova_command
