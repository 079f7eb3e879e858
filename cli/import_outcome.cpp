#include "cli/import_outcome.h"

#include <numeric>

namespace kova_command {

bool count_notice(ImportOutcome &outcome, std::int32_t kind, std::int32_t section) {
    const std::size_t row = kind_row(kind);
    ++outcome.notice_counts[row];
    if (section >= 1 && section <= static_cast<std::int32_t>(section_count))
        ++outcome.section_notice_counts[static_cast<std::size_t>(section - 1)][row];
    // An error is kept whatever stands before it; there are few of them.
    return outcome.notices.size() < most_notices || notice_kinds()[row].level == Level::error;
}

void add_notice(ImportOutcome &outcome, const Notice &notice) {
    if (count_notice(outcome, notice.kind, notice.section))
        outcome.notices.push_back(notice);
}

std::int64_t notice_count(const ImportOutcome &outcome) {
    return std::accumulate(outcome.notice_counts.begin(), outcome.notice_counts.end(),
                           std::int64_t{0});
}

std::int64_t notice_count(const ImportOutcome &outcome, Level level) {
    std::int64_t count = 0;
    for (std::size_t row = 0; row < notice_kind_count; ++row)
        if (notice_kinds()[row].level == level)
            count += outcome.notice_counts[row];
    return count;
}

std::int64_t kind_count(const ImportOutcome &outcome, std::int32_t kind) {
    return outcome.notice_counts[kind_row(kind)];
}

std::int64_t dropped_notice_count(const ImportOutcome &outcome) {
    return notice_count(outcome) - static_cast<std::int64_t>(outcome.notices.size());
}

std::string_view id_of(Verdict verdict) {
    switch (verdict) {
    case Verdict::imported:
        return "imported";
    case Verdict::stopped:
        return "stopped";
    case Verdict::not_opened:
        return "not_opened";
    case Verdict::cancelled:
        return "cancelled";
    case Verdict::internal_error:
        break;
    }
    return "internal_error";
}

std::string_view id_of(SectionStatus status) {
    switch (status) {
    case SectionStatus::imported:
        return "imported";
    case SectionStatus::left_out:
        return "left_out";
    case SectionStatus::failed:
        return "failed";
    case SectionStatus::not_reached:
        break;
    }
    return "not_reached";
}

int exit_status_of(Verdict verdict) {
    switch (verdict) {
    case Verdict::imported:
        return exit_status::success;
    case Verdict::stopped:
        return exit_status::stopped;
    case Verdict::not_opened:
        return exit_status::not_opened;
    case Verdict::cancelled:
        return exit_status::wrong_use;
    case Verdict::internal_error:
        break;
    }
    return exit_status::internal_error;
}

bool is_whole(const ImportOutcome &outcome) {
    return outcome.verdict == Verdict::imported &&
           notice_count(outcome) == notice_count(outcome, Level::note);
}

std::string_view model_kind(std::int32_t model_type) {
    constexpr std::int32_t eutrophication = 11;
    constexpr std::int32_t toxicant = 8;
    if (model_type == eutrophication)
        return "eutrophication";
    return model_type == toxicant ? "toxicant" : "unknown kind";
}

std::string_view format_name(std::int32_t file_version) {
    constexpr std::int32_t first_current_version = 3;
    return file_version >= first_current_version ? "current (version 8)" : "legacy (version 7)";
}

} // namespace kova_command
