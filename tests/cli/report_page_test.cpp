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
    for (const Verdict verdict : {Verdict::imported, Verdict::incomplete, Verdict::stopped,
                                  Verdict::not_opened, Verdict::internal_error}) {
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

TEST(Report, TextsOfTheFileAreText) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    outcome.path = "dir/<img src=x onerror=f()>\x1B.inp";
    outcome.systems = {"<script>alert(1)</script>", "\xE2\x80\xAE\xFF", std::string("\0", 1)};
    outcome.information_pane = {{"<td>", false}, {"<script>alert(1)</script>", true}};
    const std::string page = report_page(outcome);
    EXPECT_FALSE(has(page, "<script"));
    EXPECT_FALSE(has(page, "<img"));
    EXPECT_TRUE(has(page, "<title>Import report: &lt;img src=x onerror=f()&gt;\\x1b.inp</title>"));
    EXPECT_TRUE(has(page, "<li><bdi>&lt;script&gt;alert(1)&lt;/script&gt;</bdi></li>"));
    EXPECT_TRUE(has(page, "<li><bdi>\\u202e\xC3\xBF</bdi></li>"));
    EXPECT_TRUE(has(page, "<li><bdi>\\x00</bdi></li>"));
}

TEST(Report, AllClassesAreStyled) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    add_notice(outcome, read_failure());
    outcome.information_pane = {{"<center><big style=\"color: red;\">x</big></center>", false}};
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
