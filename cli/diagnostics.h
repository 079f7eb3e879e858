#pragma once

// Notices for people, in the manner of a compiler: place, what is wrong, the line, a mark under the
// field, and advice.

#include "cli/import_outcome.h"
#include "cli/marked_line.h"
#include "cli/output.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kova_command {

struct DiagnosticStyle {
    bool colour = false;
    std::size_t width = 100;
    bool ungrouped = false;  ///< every notice in full
    bool all_places = false; ///< grouped, but with the place of each
};

/// Notices that say the same of different places. The first one stands for all.
using NoticeGroup = std::vector<const Notice *>;

/// Groups notices of the same kind, section and reason, in the order of the first of each group.
[[nodiscard]] std::vector<NoticeGroup> group_notices(const NoticeList &notices);

/// The number that a notice is about and what it is called: `10, "Wind Speed"`, or one of the two.
[[nodiscard]] std::string number_and_name_of(const Notice &notice);

/// Numbers of the notices 1 .. `count` of a group: ", numbers 3, 5 and others"; those of a few with
/// their names. Empty when they have none.
[[nodiscard]] std::string numbers_of(const NoticeGroup &group, std::size_t count);

/// What a notice says, without its place: `segments: segment geometry: cannot read "bottom
/// segment"`.
[[nodiscard]] std::string heading_of(const Notice &notice);

/// What stood there and what was expected; empty when the notice says nothing about it.
[[nodiscard]] std::string finding_of(const Notice &notice);

/// Why it is so, where the heading does not say it, and the finding: none, one or two sentences.
[[nodiscard]] std::string explanation_of(const Notice &notice);

/// The line of the file that a notice is about, in at most `cells` columns of a terminal; no mark
/// when the notice is about the whole line. Nothing when there is no line to show.
[[nodiscard]] std::optional<MarkedLine> excerpt_of(const Notice &notice, std::size_t cells);

/// Writes all notices and internal errors of an import, as lines.
void write_diagnostics(const TextSink &sink, const ImportOutcome &outcome,
                       const DiagnosticStyle &style);

} // namespace kova_command
