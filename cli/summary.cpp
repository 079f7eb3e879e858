#include "cli/summary.h"

#include "cli/terminal.h"
#include "cli/text.h"

#include <array>
#include <chrono>
#include <cinttypes>
#include <cmath>
#include <cstdio>

namespace kova_command {

namespace {

using kova_host::ModelSettings;
using Seconds = std::chrono::sys_seconds;

template <class... Number>
std::string formatted(const char *format, Number... numbers) {
    std::array<char, 160> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), format, numbers...));
    return text.data();
}

std::optional<Seconds> start_of(const ModelSettings &settings) {
    const auto [month, day, year] = settings.start_date;
    const auto [hour, minute, second] = settings.start_time;
    constexpr std::int32_t first_year = 1;
    constexpr std::int32_t last_year = 9999;
    const bool in_range = month >= 1 && month <= 12 && day >= 1 && day <= 31 &&
                          year >= first_year && year <= last_year && hour >= 0 && hour <= 24 &&
                          minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
    if (!in_range)
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok())
        return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           std::chrono::seconds(second);
}

std::string time_text(Seconds time) {
    const auto days = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(days);
    const std::chrono::hh_mm_ss clock(time - days);
    return formatted("%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                     static_cast<int>(clock.hours().count()),
                     static_cast<int>(clock.minutes().count()),
                     static_cast<int>(clock.seconds().count()));
}

std::string line(std::string_view label, const std::string &text) {
    constexpr std::size_t label_width = 12;
    std::string result = "  " + std::string(label);
    result.resize(2 + label_width, ' ');
    return result + text + '\n';
}

std::string systems_text(const ImportOutcome &outcome) {
    const auto count = static_cast<std::int64_t>(outcome.systems.size());
    std::string text = std::to_string(count);
    if (outcome.systems_in_file != count)
        text += " of " + std::to_string(outcome.systems_in_file) + " in the file";
    return text;
}

std::string options_text(const ImportOutcome &outcome) {
    return std::string(outcome.transport_only ? "network and transport only" : "everything") +
           (outcome.index_segment_names ? ", segment names with their numbers"
                                        : ", segment names as they are");
}

void append_fact(std::string &text, const Fact &fact) {
    text += (text.empty() ? "" : ", ") + counted(fact.count, fact.singular, fact.plural);
}

Ink ink_of(const ImportOutcome &outcome) {
    if (is_whole(outcome))
        return Ink::help;
    return outcome.verdict == Verdict::imported ? Ink::warning : Ink::error;
}

} // namespace

std::optional<std::string> start_text(const ModelSettings &settings) {
    const std::optional<Seconds> start = start_of(settings);
    if (!start)
        return std::nullopt;
    return time_text(*start);
}

std::string period_text(const ModelSettings &settings) {
    const std::string length =
        decimal(settings.simulation_length) + (settings.simulation_length == 1 ? " day" : " days");
    const std::optional<Seconds> start = start_of(settings);
    if (!start)
        return formatted("month %" PRId32 ", day %" PRId32 ", year %" PRId32 ", %" PRId32
                         ":%02" PRId32 ":%02" PRId32 ", for ",
                         settings.start_date.month, settings.start_date.day,
                         settings.start_date.year, settings.start_time.hour,
                         settings.start_time.minute, settings.start_time.second) +
               length;
    constexpr float longest = 1e6F; // some thousands of years
    constexpr double seconds_of_day = 86400;
    const bool has_end = settings.simulation_length >= 0 && settings.simulation_length <= longest;
    if (!has_end)
        return time_text(*start) + ", for " + length;
    const auto seconds =
        std::llround(static_cast<double>(settings.simulation_length) * seconds_of_day);
    return time_text(*start) + " to " + time_text(*start + std::chrono::seconds(seconds)) + " (" +
           length + ')';
}

std::string verdict_text(const ImportOutcome &outcome) {
    switch (outcome.verdict) {
    case Verdict::imported:
        if (is_whole(outcome))
            return notice_count(outcome) == 0 ? "imported" : "imported, with changes";
        return "imported, with warnings";
    case Verdict::stopped:
        return "stopped before its end";
    case Verdict::not_opened:
        return "cannot be opened";
    case Verdict::cancelled:
        return "not imported: a question got no answer";
    case Verdict::internal_error:
        break;
    }
    return "internal error";
}

std::string brought_text(const SectionOutcome &section) {
    switch (section.status) {
    case SectionStatus::imported:
        break;
    case SectionStatus::left_out:
        return "left out as asked";
    case SectionStatus::failed:
        return "stopped here; nothing more was imported";
    case SectionStatus::not_reached:
        return "not reached";
    }
    std::string text;
    for (const Fact &fact : section.facts)
        if (!fact.is_remark() && fact.count > 0)
            append_fact(text, fact);
    // Of nothing the first says enough.
    if (text.empty() && !section.facts.empty() && !section.facts.front().is_remark())
        append_fact(text, section.facts.front());
    return text;
}

std::string remarks_text(const SectionOutcome &section) {
    std::string text;
    for (const Fact &fact : section.facts)
        if (fact.is_remark() && fact.count > 0)
            append_fact(text, fact);
    return text;
}

std::string section_text(const SectionOutcome &section) {
    const std::string remarks = remarks_text(section);
    return brought_text(section) + (remarks.empty() ? "" : ", ") + remarks;
}

std::string notices_text(const ImportOutcome &outcome) {
    std::string text;
    for (std::size_t row = 0; row < notice_kind_count; ++row) {
        const NoticeKind &kind = notice_kinds()[row];
        if (const std::int64_t count = outcome.notice_counts[row]; count > 0)
            text += (text.empty() ? "" : ", ") + counted(count, kind.singular, kind.plural);
    }
    if (const auto errors = static_cast<std::int64_t>(outcome.internal_errors.size()); errors > 0)
        text += (text.empty() ? "" : ", ") + counted(errors, "internal error", "internal errors");
    return text.empty() ? "none" : text;
}

std::vector<SummaryLine> summary_lines(const ImportOutcome &outcome) {
    std::vector<SummaryLine> lines;
    if (outcome.header_read) {
        lines.push_back({"Model", std::string(model_kind(outcome.model_type)) + " (type " +
                                      std::to_string(outcome.model_type) + ')'});
        lines.push_back({"Format", std::string(format_name(outcome.file_version)) +
                                       ", file version " + std::to_string(outcome.file_version)});
    }
    if (outcome.settings_read) {
        lines.push_back({"Period", period_text(outcome.settings)});
        lines.push_back({"Systems", systems_text(outcome)});
    }
    if (outcome.segments_read)
        lines.push_back({"Segments", std::to_string(outcome.segment_count)});
    if (outcome.header_read)
        lines.push_back({"Asked for", options_text(outcome)});
    return lines;
}

std::string summary_text(const ImportOutcome &outcome, bool colour) {
    std::string text = printable(outcome.path) + ": " +
                       painted(verdict_text(outcome), ink_of(outcome), colour) + '\n';
    for (const SummaryLine &each : summary_lines(outcome))
        text += line(each.label, each.text);
    if (outcome.header_read) {
        text += "  Sections\n";
        for (const SectionOutcome &section : outcome.sections) {
            constexpr std::size_t name_width = 32;
            std::string name = "    " + std::string(section.name);
            name.resize(name_width + 2, ' ');
            text += name + section_text(section) + '\n';
        }
    }
    return text + line("Notices", notices_text(outcome));
}

std::string check_verdict_text(const ImportOutcome &outcome, bool colour) {
    std::string verdict = is_whole(outcome) ? "whole" : "not whole";
    std::string text = printable(outcome.path) + ": " + painted(verdict, ink_of(outcome), colour);
    if (notice_count(outcome) > 0 || !outcome.internal_errors.empty())
        text += " (" + notices_text(outcome) + ')';
    return text + '\n';
}

} // namespace kova_command
