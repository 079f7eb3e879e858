#include "cli/report_notices.h"

#include "cli/diagnostics.h"
#include "cli/html.h"
#include "cli/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace kova_command {

namespace {

constexpr std::array<Level, 3> levels = {Level::error, Level::warning, Level::note};

std::string badge_of(Level level) {
    const std::string tag = "span class=\"badge " + std::string(name_of(level)) + '"';
    switch (level) {
    case Level::note:
        return element(tag, "Note");
    case Level::warning:
        return element(tag, "Warning");
    case Level::error:
        break;
    }
    return element(tag, "Error");
}

/// "line 27, column 3"; empty when the notice has no place.
std::string place_of(const Notice &notice) {
    if (notice.line <= 0)
        return {};
    std::string place = "line " + std::to_string(notice.line);
    if (notice.column > 0)
        place += ", column " + std::to_string(notice.column);
    return place;
}

std::string excerpt_html(const Notice &notice) {
    constexpr std::size_t cells = 96;
    const std::optional<MarkedLine> excerpt = excerpt_of(notice, cells);
    if (!excerpt)
        return {};
    const std::string number = std::to_string(notice.line);
    const auto gutter = [](const std::string &text) {
        return element("span class=\"gutter\"", text + " | ");
    };
    std::string html = gutter(number) + html_of(excerpt->text);
    // The place is named above; a mark made of characters is nothing to be read aloud.
    if (!excerpt->mark.empty()) {
        html += '\n';
        html += element("span aria-hidden=\"true\"",
                        gutter(std::string(number.size(), ' ')) +
                            element("span class=\"mark\"", html_of(excerpt->mark)));
    }
    return element(
        "pre tabindex=\"0\" role=\"group\" aria-label=\"Line " + number + " of the file\"", html);
}

/// The first notice of a group in full.
std::string article_start(const ImportOutcome &outcome, const NoticeGroup &group) {
    const Notice &notice = *group.front();
    std::string html =
        element("div class=\"heading\"",
                badge_of(notice.level()) + element("h3", html_of(heading_of(*group.front()))));
    if (const std::string place = place_of(notice); !place.empty())
        html += element("p class=\"place\"", html_of_bytes(outcome.path) + ", " + html_of(place));
    html += excerpt_html(notice);
    if (const std::string text = explanation_of(notice); !text.empty())
        html += element("p", element("bdi", html_of(text)));
    if (!notice.advice.empty())
        html += element("p class=\"help\"", element("strong", "Help: ") +
                                                html_of(printable(notice.advice, Origin::utility)));
    return html;
}

std::string cell_of(std::string_view tag, std::int64_t number) {
    return element(tag, number > 0 ? std::to_string(number) : "\u2013");
}

std::string repeat_row(const Notice &notice) {
    std::string what = printable(notice.statement, Origin::utility);
    const std::string number = number_and_name_of(notice);
    if (notice.has_field())
        what += (what.empty() ? "" : ": ") + printable(notice.field, Origin::utility);
    else if (!number.empty())
        what +=
            (what.empty() ? "" : ": ") + std::string(notice.number > 0 ? "number " : "") + number;
    return element("tr", cell_of("th scope=\"row\" class=\"number\"", notice.line) +
                             cell_of("td class=\"number\"", notice.column) +
                             element("td", html_of(what)) +
                             element("td", html_of_bytes(without_cut_character(notice.found)))) +
           '\n';
}

/// Where the other notices of a group are. `count` of them are shown.
std::string repeats_html(const NoticeGroup &group, std::size_t count) {
    const auto repeats = static_cast<std::int64_t>(group.size() - 1);
    std::string caption = counted(repeats, "more like it", "more like it");
    const bool have_places = std::any_of(group.begin() + 1, group.end(),
                                         [](const Notice *notice) { return notice->line > 0; });
    if (!have_places)
        return element("p", "And " + html_of(caption + numbers_of(group, count)) + '.');
    if (count < group.size() - 1)
        caption += "; the first " + std::to_string(count) + " are listed";
    std::string rows;
    for (std::size_t i = 1; i <= count; ++i)
        rows += repeat_row(*group[i]);
    return element(
        "div class=\"places\" tabindex=\"0\" role=\"group\" aria-label=\"" + html_of(caption) + '"',
        element(
            "table class=\"list\"",
            element("caption", html_of(caption)) +
                element("thead",
                        element("tr", element("th scope=\"col\" class=\"number\"", "Line") +
                                          element("th scope=\"col\" class=\"number\"", "Column") +
                                          element("th scope=\"col\"", "Datum") +
                                          element("th scope=\"col\"", "Found"))) +
                element("tbody", rows)));
}

} // namespace

std::string notices_html(const ImportOutcome &outcome) {
    std::string html;
    for (const std::string &error : outcome.internal_errors)
        html += element("article class=\"error\"",
                        element("div class=\"heading\"",
                                element("span class=\"badge error\"", "Internal error") +
                                    element("h3", html_of(printable(error))))) +
                '\n';
    const std::vector<NoticeGroup> groups = group_notices(outcome.notices);
    std::size_t room = most_reported_notices;
    std::int64_t left_out = dropped_notice_count(outcome);
    for (const Level level : levels)
        for (const NoticeGroup &group : groups) {
            if (group.front()->level() != level)
                continue;
            if (room == 0) {
                left_out += static_cast<std::int64_t>(group.size());
                continue;
            }
            const std::size_t repeats = std::min(group.size() - 1, --room);
            std::string article = article_start(outcome, group);
            if (group.size() > 1)
                article += repeats_html(group, repeats);
            room -= repeats;
            left_out += static_cast<std::int64_t>(group.size() - 1 - repeats);
            html += element("article class=\"" + std::string(name_of(level)) + '"', article) + '\n';
        }
    if (left_out > 0)
        html += element("article class=\"warning\"",
                        element("p", counted(left_out, "more notice is", "more notices are") +
                                         " counted, but not shown here."));
    return html.empty() ? element("p", "None: everything of the file came across as it is.") : html;
}

} // namespace kova_command
