#pragma once

// Notices for people, in the manner of a compiler: place, what is wrong, the line, a mark under the
// field, and advice.

#include "cli/import_outcome.h"

#include <cstddef>
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
/// Sections that the library does not import make one group.
[[nodiscard]] std::vector<NoticeGroup> group_notices(const std::vector<Notice> &notices);

/// What a notice says, without its place: `segments: segment geometry: cannot read "bottom
/// segment"`.
[[nodiscard]] std::string heading_of(const Notice &notice);

/// What stood there and what was expected; empty when the notice says nothing about it.
[[nodiscard]] std::string finding_of(const Notice &notice);

/// All notices and internal errors of an import, as lines.
[[nodiscard]] std::string diagnostics_text(const ImportOutcome &outcome,
                                           const DiagnosticStyle &style);

} // namespace kova_command
