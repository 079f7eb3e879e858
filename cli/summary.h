#pragma once

#include "cli/import_outcome.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kova_command {

/// The simulated period, as "2019-01-01 00:00:00 to 2020-01-01 00:00:00 (365 days)". Dates that are
/// no days of the calendar are shown as they were read, and have no end.
[[nodiscard]] std::string period_text(const kova_host::ModelSettings &settings);

/// "2019-01-01 00:00:00", or nothing when there is no such time.
[[nodiscard]] std::optional<std::string> start_text(const kova_host::ModelSettings &settings);

/// "imported", "imported, with warnings", ... for people.
[[nodiscard]] std::string verdict_text(const ImportOutcome &outcome);

/// What came across with a section, or why nothing did, without the remarks.
[[nodiscard]] std::string brought_text(const SectionOutcome &section);

/// What did not come across, or not as the file has it: "2 systems dropped"; empty when there is
/// nothing to say.
[[nodiscard]] std::string remarks_text(const SectionOutcome &section);

/// What a section brought and the remarks, or why it brought nothing.
[[nodiscard]] std::string section_text(const SectionOutcome &section);

/// "1 read failure, 2 texts cut", or "none".
[[nodiscard]] std::string notices_text(const ImportOutcome &outcome);

/// One line of a summary.
struct SummaryLine {
    std::string_view label;
    std::string text;
};

/// Model, format, period and the like, as far as they were read, and what was asked for.
[[nodiscard]] std::vector<SummaryLine> summary_lines(const ImportOutcome &outcome);

/// The summary of an import: a dozen lines.
[[nodiscard]] std::string summary_text(const ImportOutcome &outcome, bool colour);

/// The verdict of a check in one line.
[[nodiscard]] std::string check_verdict_text(const ImportOutcome &outcome, bool colour);

} // namespace kova_command
