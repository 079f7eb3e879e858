#pragma once

// Outcomes of imports that never were, for the tests.

#include "cli/import_outcome.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kova_command {

inline Notice read_failure() {
    Notice notice;
    notice.kind = IMPORT_EXPORT_READ_FAILED;
    notice.section = 2;
    notice.section_name = "segments";
    notice.statement = "segment geometry";
    notice.statement_number = 17;
    notice.line = 16;
    notice.column = 5;
    notice.width = 2;
    notice.field = "bottom segment";
    notice.expected = "an integer";
    notice.found = "1x";
    notice.reason = "The value cannot be converted.";
    notice.advice = "Write it with digits only.";
    notice.line_text = "  1 1x 3";
    notice.line_text_column = 1;
    return notice;
}

inline Notice notice_of(std::int32_t kind, std::int32_t section, const std::string &reason,
                        std::int64_t line = 0) {
    Notice notice;
    notice.kind = kind;
    notice.section = section;
    notice.section_name = section_descriptions()[static_cast<std::size_t>(section - 1)].name;
    notice.reason = reason;
    notice.line = line;
    return notice;
}

inline ImportOutcome outcome_with(Verdict verdict) {
    ImportOutcome outcome;
    outcome.path = "river.inp";
    outcome.verdict = verdict;
    for (const SectionDescription &section : section_descriptions())
        outcome.sections.push_back({section.name, SectionStatus::imported, {}});
    return outcome;
}

} // namespace kova_command
