#include "cli/report_notices.h"
#include "cli/report_page.h"

#include "outcomes.h"

#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>

namespace kova_command {
namespace {

bool has(const std::string &text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

TEST(Report, ShowsEveryVerdict) {
    for (const Verdict verdict :
         {Verdict::imported, Verdict::stopped, Verdict::not_opened, Verdict::internal_error}) {
        const std::string page = report_page(outcome_with(verdict));
        EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n<html lang=\"en\">"));
        EXPECT_TRUE(has(page, "<dt>Exit status</dt><dd>" + std::to_string(exit_status_of(verdict)) +
                                  "</dd>"));
    }
}

TEST(Report, ShowsEveryKindOfNotice) {
    for (const NoticeKind &kind : notice_kinds()) {
        ImportOutcome outcome = outcome_with(Verdict::imported);
        add_notice(outcome, notice_of(kind.number, 2, "Because of <that>."));
        const std::string notices = notices_html(outcome);
        EXPECT_TRUE(has(notices, "<article class=\"" + std::string(name_of(kind.level)) + '"'));
        EXPECT_FALSE(has(notices, "<that>"));
    }
}

TEST(Report, ShowsTheLineAndTheMark) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    Notice notice = read_failure();
    notice.line_text = "  1 <x> 3";
    notice.found = "<x>";
    notice.width = 3;
    add_notice(outcome, notice);
    const std::string notices = notices_html(outcome);
    EXPECT_TRUE(has(notices, "<bdi>river.inp</bdi>, line 16, column 5</p>"));
    EXPECT_TRUE(has(notices, "16 | </span>  1 &lt;x&gt; 3\n"));
    EXPECT_TRUE(has(notices, "<span class=\"mark\">    ^~~</span>"));
    EXPECT_TRUE(has(notices, "Found &quot;&lt;x&gt;&quot;; expected an integer."));
    EXPECT_TRUE(has(notices, "<strong>Help: </strong>Write it with digits only.</p>"));
}

TEST(Report, ErrorsComeFirst) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    add_notice(outcome, notice_of(IMPORT_EXPORT_CONVERTED, 1, "One.", 1));
    add_notice(outcome, notice_of(IMPORT_EXPORT_CUT, 1, "Two.", 2));
    add_notice(outcome, read_failure());
    outcome.internal_errors.emplace_back("A <rule> is broken.");
    const std::string notices = notices_html(outcome);
    EXPECT_LT(notices.find("A &lt;rule&gt; is broken."), notices.find("cannot read"));
    EXPECT_LT(notices.find("cannot read"), notices.find("two"));
    EXPECT_LT(notices.find("two"), notices.find("one"));
}

TEST(Report, GroupsRepeatsAndCountsWhatItLeavesOut) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    for (std::int64_t line = 1; line <= 6000; ++line)
        add_notice(outcome, notice_of(IMPORT_EXPORT_CONVERTED, 1, "Same.", line));
    add_notice(outcome, notice_of(IMPORT_EXPORT_CUT, 1, "Other.", 1));
    const std::string notices = notices_html(outcome);
    EXPECT_TRUE(has(notices, "5999 more like it; the first 4998 are listed"));
    EXPECT_TRUE(has(notices, ">4999</th>"));
    EXPECT_FALSE(has(notices, ">5000</th>"));
    EXPECT_TRUE(has(notices, "1001 more notices are counted, but not shown here."));
    EXPECT_LT(notices.find("other"), notices.find("same"));
}

TEST(Report, NamesWhatTheRepeatsAreAbout) {
    const auto dropped = [](std::int64_t number, std::int64_t line) {
        Notice notice = notice_of(IMPORT_EXPORT_CONDITION_UNMET, 7, "Not simulated.", line);
        notice.number = number;
        return notice;
    };
    ImportOutcome outcome = outcome_with(Verdict::imported);
    for (const std::int64_t number : {5, 7, 9})
        add_notice(outcome, dropped(number, 0));
    EXPECT_TRUE(has(notices_html(outcome), "not simulated (number 5)"));
    EXPECT_TRUE(has(notices_html(outcome), "<p>And 2 more like it, numbers 7 and 9.</p>"));
    outcome.notices.pop_back();
    EXPECT_TRUE(has(notices_html(outcome), "<p>And 1 more like it, number 7.</p>"));
    outcome.notices.clear();
    add_notice(outcome, dropped(5, 40));
    add_notice(outcome, dropped(7, 50));
    EXPECT_TRUE(has(notices_html(outcome), "<td>number 7</td>"));
}

TEST(Report, NamesWhatANumberMeans) {
    const auto named = [](std::int64_t number, const std::string &name, std::int64_t line) {
        Notice notice = notice_of(IMPORT_EXPORT_NOT_IMPORTED, 8, "No place.", line);
        notice.number = number;
        notice.name = name;
        return notice;
    };
    ImportOutcome outcome = outcome_with(Verdict::imported);
    add_notice(outcome, named(2, "<b>Ice\x1B</b>", 0));
    add_notice(outcome, named(3, "<i>Wind</i>", 0));
    std::string notices = notices_html(outcome);
    EXPECT_TRUE(has(notices, "no place (number 2, &quot;&lt;b&gt;Ice\\x1b&lt;/b&gt;&quot;)"));
    EXPECT_TRUE(has(notices, "<p>And 1 more like it, number 3 "
                             "(&quot;&lt;i&gt;Wind&lt;/i&gt;&quot;).</p>"));
    outcome.notices.clear();
    add_notice(outcome, named(2, "Ice", 10));
    add_notice(outcome, named(3, "<i>Wind</i>", 20));
    add_notice(outcome, named(0, "Rain", 30));
    notices = notices_html(outcome);
    EXPECT_TRUE(has(notices, "<td>number 3, &quot;&lt;i&gt;Wind&lt;/i&gt;&quot;</td>"));
    EXPECT_TRUE(has(notices, "<td>&quot;Rain&quot;</td>"));
}

TEST(Report, ShowsWhatDidNotComeAcross) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    Notice notice = notice_of(IMPORT_EXPORT_CONDITION_UNMET, 6, "Not simulated.");
    add_notice(outcome, notice);
    add_notice(outcome, notice);
    describe(outcome, small_model());
    const std::string page = report_page(outcome);
    const auto row_of = [&](const std::string &name) {
        const std::size_t start = page.find("<th scope=\"row\">" + name);
        return page.substr(start, page.find("</tr>", start) - start);
    };
    const std::string boundaries = row_of("Boundary conditions");
    EXPECT_TRUE(has(boundaries, "Imported in part"));
    EXPECT_TRUE(has(boundaries, "<td>2 boundaries, 3 breakpoints</td><td>2 systems dropped</td>"));
    const std::string loads = row_of("Loads");
    EXPECT_TRUE(has(loads, "Imported in part"));
    EXPECT_TRUE(has(loads, "<td>1 load, 3 breakpoints</td><td>1 placeholder, "
                           "2 loads replaced by later ones</td>"));
    const std::string paths = row_of("Flow paths");
    EXPECT_FALSE(has(paths, "in part"));
    EXPECT_TRUE(has(paths, "<td>2 fields, 1 function, 2 pairs</td><td></td>"));
}

TEST(Report, TextsOfTheFileAreText) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    outcome.path = "dir/<img src=x onerror=f()>\x1B.inp";
    outcome.systems = {"<script>alert(1)</script>", "\xE2\x80\xAE\xFF", std::string("\0", 1)};
    outcome.information_pane.fragments = {{"<td>", false}, {"<script>alert(1)</script>", true}};
    const std::string page = report_page(outcome);
    EXPECT_FALSE(has(page, "<script"));
    EXPECT_FALSE(has(page, "<img"));
    EXPECT_TRUE(has(page, "<title>Import report: &lt;img src=x onerror=f()&gt;\\x1b.inp</title>"));
    EXPECT_TRUE(has(page, "<li><bdi>&lt;script&gt;alert(1)&lt;/script&gt;</bdi></li>"));
    EXPECT_TRUE(has(page, "<li><bdi>\\u202e\xC3\xBF</bdi></li>"));
    EXPECT_TRUE(has(page, "<li><bdi>\\x00</bdi></li>"));
}

TEST(Report, ShowsSoManySystemsAndSoMuchOfThePane) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    outcome.systems.assign(most_reported_systems, "Ammonia");
    outcome.information_pane.fragments = {{"Words", false}};
    EXPECT_FALSE(has(report_page(outcome), " more.</p>"));
    EXPECT_FALSE(has(report_page(outcome), "The rest is not shown here."));
    outcome.systems.push_back("Nitrate");
    outcome.systems.push_back("Nitrate");
    outcome.information_pane.is_cut = true;
    EXPECT_FALSE(has(report_page(outcome), "Nitrate"));
    EXPECT_TRUE(has(report_page(outcome), "</ol><p>And 2 more.</p>"));
    EXPECT_TRUE(has(report_page(outcome), "<p>The rest is not shown here.</p>"));
}

TEST(Report, AllClassesAreStyled) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    add_notice(outcome, read_failure());
    outcome.information_pane.fragments = {
        {"<center><big style=\"color: red;\">x</big></center>", false}};
    const std::string page = report_page(outcome);
    const std::regex classes("class=\"([^\"]*)\"");
    for (std::sregex_iterator match(page.begin(), page.end(), classes), end; match != end;
         ++match) {
        std::istringstream words((*match)[1].str());
        for (std::string word; words >> word;)
            EXPECT_TRUE(has(page, "." + word + " ") || has(page, "." + word + ",")) << word;
    }
}

} // namespace
} // namespace kova_command
