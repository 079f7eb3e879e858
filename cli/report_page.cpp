#include "cli/report_page.h"

#include "cli/html.h"
#include "cli/pane_html.h"
#include "cli/report_notices.h"
#include "cli/report_style.h"
#include "cli/summary.h"
#include "cli/text.h"

#include <algorithm>
#include <string_view>

namespace kova_command {

namespace {

/// How a state is marked: by a class, a sign and words, so that no colour is needed.
struct Mark {
    std::string_view tone;
    std::string_view sign;
};

std::string badge(const Mark &mark, std::string_view words) {
    return element("span class=\"badge " + std::string(mark.tone) + '"',
                   element("span aria-hidden=\"true\"", std::string(mark.sign) + ' ') +
                       html_of(words));
}

constexpr Mark good_mark = {"good", "\u2713"};
constexpr Mark warning_mark = {"warning", "!"};
constexpr Mark error_mark = {"error", "\u2715"};
constexpr Mark quiet_mark = {"quiet", "\u2013"};

Mark mark_of(const ImportOutcome &outcome) {
    if (is_whole(outcome))
        return good_mark;
    return outcome.verdict == Verdict::imported ? warning_mark : error_mark;
}

std::string_view explanation_of(const ImportOutcome &outcome) {
    switch (outcome.verdict) {
    case Verdict::imported:
        if (!is_whole(outcome))
            return "The import came to the end of the file, but not everything of it reached the "
                   "model.";
        return notice_count(outcome) == 0
                   ? "Everything that was asked for reached the model as the file has it."
                   : "Everything that was asked for reached the model, some of it changed.";
    case Verdict::stopped:
        return "The import stopped at an error. Nothing behind it reached the model.";
    case Verdict::not_opened:
        return "Nothing was imported.";
    case Verdict::cancelled:
    case Verdict::internal_error:
        break;
    }
    return "The result of this import cannot be relied on.";
}

std::string capitalised(std::string text) {
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z')
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    return text;
}

/// The last part of the path.
std::string_view name_of_file(std::string_view path) {
    const std::size_t slash = path.find_last_of('/');
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    return name.empty() ? path : name;
}

std::string head(const ImportOutcome &outcome) {
    return "<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" "
           "content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"color-scheme\" content=\"light dark\">\n" +
           element("title", "Import report: " + html_of(printable(name_of_file(outcome.path)))) +
           '\n' + element("style", report_style()) + '\n';
}

/// A part of the page with its heading.
std::string section(std::string_view id, std::string_view heading, const std::string &content) {
    const std::string heading_id(id);
    return element("section aria-labelledby=\"" + heading_id + '"',
                   '\n' + element("h2 id=\"" + heading_id + '"', html_of(heading)) + '\n' +
                       content + '\n') +
           '\n';
}

std::string page_header(const ImportOutcome &outcome) {
    return element("header",
                   '\n' +
                       element("h1", element("span class=\"kicker\"", "Import report") + ' ' +
                                         html_of_bytes(name_of_file(outcome.path))) +
                       '\n' +
                       element("p class=\"verdict\"",
                               badge(mark_of(outcome), capitalised(verdict_text(outcome))) +
                                   element("span", html_of(explanation_of(outcome)))) +
                       '\n') +
           '\n';
}

std::string summary_section(const ImportOutcome &outcome) {
    std::string list;
    const auto add = [&list](std::string_view label, const std::string &html) {
        list += element("dt", html_of(label)) + element("dd", html) + '\n';
    };
    add("File", html_of_bytes(outcome.path));
    for (const SummaryLine &line : summary_lines(outcome))
        add(line.label, html_of(capitalised(line.text)));
    add("Notices", html_of(capitalised(notices_text(outcome))));
    add("Host commands", std::to_string(outcome.command_count));
    add("Exit status", std::to_string(exit_status_of(outcome.verdict)));
    return section("summary", "Summary", element("dl", '\n' + list));
}

std::string badge_of(const SectionOutcome &section) {
    const auto is_loss = [](const Fact &fact) {
        return fact.kind == FactKind::lost && fact.count > 0;
    };
    switch (section.status) {
    case SectionStatus::imported:
        if (std::any_of(section.facts.begin(), section.facts.end(), is_loss))
            return badge(warning_mark, "Imported in part");
        return badge(good_mark, "Imported");
    case SectionStatus::left_out:
        return badge(quiet_mark, "Left out");
    case SectionStatus::failed:
        return badge(error_mark, "Stopped");
    case SectionStatus::not_reached:
        break;
    }
    return badge(quiet_mark, "Not reached");
}

std::string sections_section(const ImportOutcome &outcome) {
    std::string rows;
    int number = 0;
    for (const SectionOutcome &each : outcome.sections)
        rows += element("tr", element("td class=\"number\"", std::to_string(++number)) +
                                  element("th scope=\"row\"",
                                          html_of(capitalised(std::string(each.name)))) +
                                  element("td", badge_of(each)) +
                                  element("td", html_of(capitalised(brought_text(each)))) +
                                  element("td", html_of(capitalised(remarks_text(each))))) +
                '\n';
    const std::string columns = element("th scope=\"col\" class=\"number\"", "No.") +
                                element("th scope=\"col\"", "Section") +
                                element("th scope=\"col\"", "Result") +
                                element("th scope=\"col\"", "What it brought") +
                                element("th scope=\"col\"", "Dropped or changed");
    return section(
        "sections", "Sections of the file",
        element("div class=\"scroll\" tabindex=\"0\" role=\"group\" aria-label=\"Sections\"",
                element("table class=\"list\"",
                        element("caption", "What each section brought into the model") + '\n' +
                            element("thead", element("tr", columns)) + '\n' +
                            element("tbody", '\n' + rows))));
}

std::string systems_section(const ImportOutcome &outcome) {
    std::string items;
    const std::size_t count = outcome.systems.size();
    const std::size_t shown = std::min(count, most_reported_systems);
    for (std::size_t i = 0; i < shown; ++i)
        items += element("li", html_of_bytes(outcome.systems[i])) + '\n';
    if (items.empty())
        return {};
    std::string list = element("ol class=\"names\"", '\n' + items);
    if (shown < count)
        list += element("p", "And " + std::to_string(count - shown) + " more.");
    return section("systems", "Systems of the model", list);
}

std::string_view about_pane(const ImportOutcome &outcome) {
    if (outcome.verdict == Verdict::stopped || outcome.verdict == Verdict::not_opened)
        return "What the import utility shows in a graphical host. It takes leave with the same "
               "words when an import stops, and counts lines in its own way; the verdict and the "
               "places above are exact.";
    return "What the import utility shows in a graphical host.";
}

std::string pane_section(const ImportOutcome &outcome) {
    const std::string pane = pane_html(outcome.information_pane.fragments);
    if (pane.empty())
        return {};
    const std::string_view cut =
        outcome.information_pane.is_cut ? "<p>The rest is not shown here.</p>\n" : "";
    return section(
        "pane", "Information pane",
        element("p class=\"about\"", html_of(about_pane(outcome))) + '\n' +
            element("div class=\"pane\" tabindex=\"0\" role=\"group\" aria-labelledby=\"pane\"",
                    '\n' + pane + '\n' + std::string(cut)));
}

} // namespace

std::string report_page(const ImportOutcome &outcome) {
    const std::string content =
        '\n' + summary_section(outcome) +
        section("notices", "Errors, warnings and notes", notices_html(outcome)) +
        sections_section(outcome) + systems_section(outcome) + pane_section(outcome);
    const std::string body =
        '\n' + page_header(outcome) + element("main", content) + '\n' +
        element("footer", element("p", "Made by kova-import " KOVA_COMMAND_VERSION ".")) + '\n';
    return "<!DOCTYPE html>\n" +
           element("html lang=\"en\"", '\n' + element("head", '\n' + head(outcome)) + '\n' +
                                           element("body", body) + '\n') +
           '\n';
}

} // namespace kova_command
