#pragma once

// What came out of one import, as plain data: the summary, the diagnostics, JSON, SARIF and reports
// are made from it.

#include "cli/information_pane.h"
#include "cli/notice.h"
#include "cli/section_overview.h"
#include "host/model.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kova_command {

/// How an import ended.
enum class Verdict : std::uint8_t {
    imported,       ///< to the end of the file
    stopped,        ///< at a read error or for want of memory
    not_opened,     ///< the file cannot be opened
    cancelled,      ///< a question got no answer
    internal_error, ///< the library or the host broke a rule
};

/// Exit statuses of the program.
namespace exit_status {
inline constexpr int success = 0;
inline constexpr int stopped = 1; ///< check: a file would not come across whole
inline constexpr int wrong_use = 2;
inline constexpr int not_opened = 3;
inline constexpr int internal_error = 70; ///< also an installation that is broken
inline constexpr int output_failed = 74;  ///< the results cannot be written
} // namespace exit_status

enum class SectionStatus : std::uint8_t {
    imported,
    left_out,    ///< read, but only the network and transport were asked for
    failed,      ///< the import stopped here
    not_reached, ///< the import stopped before
};

struct SectionOutcome {
    std::string_view name;
    SectionStatus status = SectionStatus::not_reached;
    std::vector<Fact> facts; ///< of an imported section
};

struct ImportOutcome {
    std::string path; ///< bytes, as given
    Verdict verdict = Verdict::internal_error;
    bool transport_only = false;
    bool index_segment_names = true;

    bool header_read = false; ///< the two numbers below mean something
    std::int32_t model_type = 0;
    std::int32_t file_version = 0;
    bool settings_read = false; ///< the members below mean something
    std::int32_t systems_in_file = 0;
    kova_host::ModelSettings settings;
    std::vector<SharedText> systems; ///< long names as the host has them, bytes
    bool segments_read = false;
    std::int32_t segment_count = 0;

    std::vector<SectionOutcome> sections; ///< all eleven, in order
    NoticeList notices;                   ///< in order of arrival, up to `most_notices`
    NoticeCounts notice_counts{};         ///< of all
    /// Of each section; those that belong to no section are in none.
    std::array<NoticeCounts, section_count> section_notice_counts{};
    std::vector<std::string> internal_errors; ///< one sentence each

    InformationPane information_pane; ///< where it was asked for
    std::string console;              ///< lines that the utility printed, where they were asked for
    std::uint64_t command_count = 0;
};

/// A file can make a notice of every record. What is beyond this is counted and not kept.
inline constexpr std::size_t most_notices = 100000;

/// Counts a notice of a kind in a section, and says whether it is one to be kept.
[[nodiscard]] bool count_notice(ImportOutcome &outcome, std::int32_t kind, std::int32_t section);
/// Counts a notice and keeps it if it is one to be kept.
void add_notice(ImportOutcome &outcome, const Notice &notice);

[[nodiscard]] std::int64_t notice_count(const ImportOutcome &outcome);
[[nodiscard]] std::int64_t notice_count(const ImportOutcome &outcome, Level level);
[[nodiscard]] std::int64_t kind_count(const ImportOutcome &outcome, std::int32_t kind);
/// Notices that were counted and not kept.
[[nodiscard]] std::int64_t dropped_notice_count(const ImportOutcome &outcome);

/// "imported", "stopped", ..., for programs.
[[nodiscard]] std::string_view id_of(Verdict verdict);
[[nodiscard]] std::string_view id_of(SectionStatus status);
[[nodiscard]] int exit_status_of(Verdict verdict);

/// Whether everything that the file says reaches the model. Data that are converted, get a default
/// or a placeholder do; data that are cut, replaced or have no counterpart do not.
[[nodiscard]] bool is_whole(const ImportOutcome &outcome);

/// "eutrophication", "toxicant" or "unknown kind".
[[nodiscard]] std::string_view model_kind(std::int32_t model_type);
/// "legacy (version 7)" or "current (version 8)".
[[nodiscard]] std::string_view format_name(std::int32_t file_version);

} // namespace kova_command
