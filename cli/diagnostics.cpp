#include "cli/diagnostics.h"

#include "cli/terminal.h"
#include "cli/text.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <tuple>
#include <utility>

namespace kova_command {

namespace {

/// A sentence as the rest of another one.
std::string as_phrase(std::string_view sentence) {
    std::string phrase = printable(sentence, Origin::utility);
    if (!phrase.empty() && phrase.back() == '.')
        phrase.pop_back();
    const auto is_capital = [](char character) { return character >= 'A' && character <= 'Z'; };
    const bool is_word = phrase.size() > 1 && is_capital(phrase[0]) && !is_capital(phrase[1]);
    if (is_word)
        phrase[0] = static_cast<char>(phrase[0] - 'A' + 'a');
    return phrase;
}

std::string as_sentence(std::string_view phrase) {
    std::string sentence = printable(phrase, Origin::utility);
    if (!sentence.empty() && sentence[0] >= 'a' && sentence[0] <= 'z')
        sentence[0] = static_cast<char>(sentence[0] - 'a' + 'A');
    if (!sentence.empty() && sentence.back() != '.')
        sentence += '.';
    return sentence;
}

std::string quoted(const Notice &notice) {
    const bool is_cut = static_cast<std::int64_t>(notice.found.size()) < notice.width;
    const std::string_view whole = notice.found;
    const std::string_view found = is_cut ? without_cut_character(whole) : whole;
    return '"' + printable(found) + (is_cut ? "...\"" : "\"");
}

/// Which field, or which number or name, a notice is about, where it says so.
std::string subject_of(const Notice &notice) {
    std::string subject;
    if (notice.has_field())
        subject.append(" (\"").append(printable(notice.field, Origin::utility)).append("\")");
    else if (notice.number > 0)
        subject.append(" (number ").append(number_and_name_of(notice)).append(")");
    else if (!notice.name.empty())
        subject.append(" (").append(number_and_name_of(notice)).append(")");
    return subject;
}

std::string message_of(const Notice &notice) {
    if (notice.kind == IMPORT_EXPORT_READ_FAILED) {
        if (!notice.has_field())
            return "cannot be read";
        return "cannot read \"" + printable(notice.field, Origin::utility) + '"';
    }
    if (notice.kind == IMPORT_EXPORT_OPEN_FAILED)
        return "cannot be opened: " + as_phrase(notice.reason);
    return as_phrase(notice.reason.empty() ? notice.description().sentence
                                           : std::string_view(notice.reason)) +
           subject_of(notice);
}

std::string place_of(const std::string &path, const Notice &notice) {
    std::string place = printable(path);
    if (notice.line > 0) {
        place += ':' + std::to_string(notice.line);
        if (notice.column > 0)
            place += ':' + std::to_string(notice.column);
    }
    return place + ": ";
}

Ink ink_of(Level level) {
    switch (level) {
    case Level::note:
        return Ink::note;
    case Level::warning:
        return Ink::warning;
    case Level::error:
        break;
    }
    return Ink::error;
}

std::string first_line(const std::string &path, const Notice &notice, const std::string &message,
                       const DiagnosticStyle &style) {
    const std::string level = std::string(name_of(notice.level())) + ": ";
    return painted(place_of(path, notice), Ink::strong, style.colour) +
           painted(level, ink_of(notice.level()), style.colour) +
           painted(message, Ink::strong, style.colour) + '\n';
}

/// The line of the file with the mark below it.
std::string excerpt_text(const Notice &notice, const DiagnosticStyle &style) {
    const std::string number = std::to_string(notice.line);
    const std::string gutter = std::string(number.size() < 5 ? 5 - number.size() : 0, ' ') + number;
    constexpr std::string_view separator = " | ";
    const std::size_t used = gutter.size() + separator.size();
    const std::optional<MarkedLine> excerpt =
        excerpt_of(notice, style.width > used ? style.width - used : 0);
    if (!excerpt)
        return {};
    std::string text = gutter + std::string(separator) + excerpt->text + '\n';
    if (!excerpt->mark.empty())
        text += std::string(gutter.size(), ' ') + std::string(separator) +
                painted(excerpt->mark, Ink::mark, style.colour) + '\n';
    return text;
}

std::string details_of(const Notice &notice, const DiagnosticStyle &style) {
    std::string text = excerpt_text(notice, style);
    if (const std::string explanation = explanation_of(notice); !explanation.empty())
        text += "      = " + explanation + '\n';
    if (!notice.advice.empty())
        text += "      = " + painted("help: ", Ink::help, style.colour) +
                printable(notice.advice, Origin::utility) + '\n';
    return text;
}

bool has_number(const Notice *notice) { return notice->number > 0 && !notice->has_field(); }

/// Where the other notices of a group are.
std::string repeats_of(const NoticeGroup &group, const DiagnosticStyle &style) {
    constexpr std::size_t most_places = 5;
    const std::size_t repeats = group.size() - 1;
    std::string text = "      = and " +
                       counted(static_cast<std::int64_t>(repeats), "more like it", "more like it");
    if (std::all_of(group.begin(), group.end(), has_number))
        return text + numbers_of(group, style.all_places ? repeats : most_places) + '\n';
    std::vector<std::string> places;
    for (std::size_t i = 1; i < group.size(); ++i) {
        if (!style.all_places && places.size() == most_places)
            break;
        if (group[i]->line > 0)
            places.push_back(std::to_string(group[i]->line) +
                             (group[i]->column > 0 ? ':' + std::to_string(group[i]->column) : ""));
    }
    if (!places.empty()) {
        const bool is_complete = places.size() == repeats;
        text += places.size() == 1 ? ", in line " : ", in lines ";
        if (!is_complete)
            places.emplace_back("others");
        text += enumerated(places);
    }
    return text + '\n';
}

} // namespace

std::vector<NoticeGroup> group_notices(const NoticeList &notices) {
    std::vector<NoticeGroup> groups;
    std::map<std::tuple<std::int32_t, std::int32_t, std::string_view>, std::size_t> rows;
    for (const Notice &notice : notices) {
        const auto [row, is_new] =
            rows.try_emplace({notice.kind, notice.section, notice.reason}, groups.size());
        if (is_new)
            groups.emplace_back();
        groups[row->second].push_back(&notice);
    }
    return groups;
}

std::string number_and_name_of(const Notice &notice) {
    std::string text = notice.number > 0 ? std::to_string(notice.number) : "";
    if (!notice.name.empty())
        text.append(text.empty() ? "\"" : ", \"")
            .append(printable(notice.name, notice.origin_of_name()))
            .append("\"");
    return text;
}

std::string numbers_of(const NoticeGroup &group, std::size_t count) {
    constexpr std::size_t most_names = 3; // more of them make no line
    const std::size_t repeats = group.size() - 1;
    std::vector<std::string> numbers;
    for (std::size_t i = 1; i <= std::min(count, repeats); ++i) {
        if (!has_number(group[i]))
            continue;
        std::string number = std::to_string(group[i]->number);
        if (repeats <= most_names && !group[i]->name.empty())
            number.append(" (\"")
                .append(printable(group[i]->name, group[i]->origin_of_name()))
                .append("\")");
        numbers.push_back(std::move(number));
    }
    if (numbers.empty())
        return {};
    const std::string_view noun = numbers.size() == 1 && repeats == 1 ? ", number " : ", numbers ";
    if (numbers.size() < repeats)
        numbers.emplace_back("others");
    return std::string(noun) + enumerated(numbers);
}

std::string heading_of(const Notice &notice) {
    std::string heading;
    for (const std::string_view part : {notice.section_name, notice.statement})
        if (!part.empty())
            heading += printable(part, Origin::utility) + ": ";
    return heading + message_of(notice);
}

std::string finding_of(const Notice &notice) {
    const bool has_found = !notice.found.empty();
    const bool has_expected = !notice.expected.empty();
    std::string finding = has_found ? "found " + quoted(notice) : "";
    if (has_expected)
        finding +=
            (has_found ? "; expected " : "expected ") + printable(notice.expected, Origin::utility);
    return finding;
}

std::string explanation_of(const Notice &notice) {
    std::string text;
    if (notice.kind == IMPORT_EXPORT_READ_FAILED && !notice.reason.empty())
        text = as_sentence(notice.reason);
    if (const std::string finding = finding_of(notice); !finding.empty()) {
        text += text.empty() ? "" : " ";
        text += as_sentence(finding);
    }
    return text;
}

std::optional<MarkedLine> excerpt_of(const Notice &notice, std::size_t cells) {
    // Without a place there is nothing to show; at the end of a file there may be no line.
    if (notice.line <= 0 || notice.line_text.empty())
        return std::nullopt;
    std::string_view line = notice.line_text;
    std::int64_t start = std::max<std::int64_t>(1, notice.line_text_column);
    const bool cut_before = start > 1;
    // The cut may have left the tail of a character.
    constexpr int longest_tail = 3;
    for (int i = 0; cut_before && i < longest_tail && !line.empty() &&
                    (static_cast<unsigned char>(line.front()) & 0xC0U) == 0x80U;
         ++i) {
        line.remove_prefix(1);
        ++start;
    }
    const auto offset = static_cast<std::size_t>(std::max<std::int64_t>(0, notice.column - start));
    const auto width = static_cast<std::size_t>(std::max<std::int64_t>(0, notice.width));
    MarkedLine marked = mark_part(line, {offset, width, cut_before}, cells);
    if (notice.column <= 0)
        marked.mark.clear();
    return marked;
}

void write_diagnostics(const TextSink &sink, const ImportOutcome &outcome,
                       const DiagnosticStyle &style) {
    constexpr std::size_t much = std::size_t{64} * 1024;
    std::string text;
    for (const NoticeGroup &group : group_notices(outcome.notices)) {
        const std::size_t shown = style.ungrouped ? group.size() : 1;
        for (std::size_t i = 0; i < shown; ++i) {
            text += first_line(outcome.path, *group[i], heading_of(*group[i]), style) +
                    details_of(*group[i], style);
            if (text.size() > much)
                sink(std::exchange(text, {}));
        }
        if (shown < group.size())
            text += repeats_of(group, style);
    }
    if (const std::int64_t dropped = dropped_notice_count(outcome); dropped > 0)
        text += printable(outcome.path) + ": " + painted("warning: ", Ink::warning, style.colour) +
                counted(dropped, "more notice is", "more notices are") +
                " counted, but not shown\n";
    for (const std::string &error : outcome.internal_errors)
        text += "kova-import: " + painted("internal error: ", Ink::error, style.colour) +
                printable(error) + '\n';
    sink(text);
}

} // namespace kova_command
