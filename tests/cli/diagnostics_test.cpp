#include "cli/diagnostics.h"

#include "outcomes.h"

#include <cstring>
#include <gtest/gtest.h>

namespace kova_command {
namespace {

TEST(Diagnostics, ShowPlaceLineMarkAndAdvice) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    add_notice(outcome, read_failure());
    EXPECT_EQ(diagnostics_text(outcome, {}),
              "river.inp:16:5: error: segments: segment geometry: cannot read \"bottom segment\"\n"
              "   16 |   1 1x 3\n"
              "      |     ^~\n"
              "      = The value cannot be converted. Found \"1x\"; expected an integer.\n"
              "      = help: Write it with digits only.\n");
}

TEST(Diagnostics, AreColouredOnlyWhenAsked) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    add_notice(outcome, read_failure());
    const std::string plain = diagnostics_text(outcome, {});
    EXPECT_EQ(plain.find('\033'), std::string::npos);
    const std::string coloured = diagnostics_text(outcome, {.colour = true});
    EXPECT_NE(coloured.find("\033[1;31merror: \033[0m"), std::string::npos);
}

TEST(Diagnostics, TakeTheExcerptFromWhereItStarts) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    Notice notice = read_failure();
    notice.column = 1005;
    notice.line_text_column = 999;
    notice.line_text = "\x82\xAC 1 1x 3"; // the cut has gone through a character
    add_notice(outcome, notice);
    const std::string text = diagnostics_text(outcome, {});
    EXPECT_NE(text.find("   16 | ... 1 1x 3\n      |        ^~\n"), std::string::npos) << text;
}

TEST(Diagnostics, ShowNoLineThatTheyDoNotHave) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    Notice notice = read_failure();
    notice.line_text.clear();
    notice.field.clear();
    add_notice(outcome, notice);
    EXPECT_TRUE(diagnostics_text(outcome, {})
                    .starts_with("river.inp:16:5: error: segments: segment geometry: cannot be "
                                 "read\n      = The value"));
}

TEST(Diagnostics, EscapeWhatTheFileHolds) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    outcome.path = "a\x1B[2J.inp";
    Notice notice = read_failure();
    notice.found = std::string("\x1B]0;x\x07", 6);
    notice.line_text = "  1 \x1B]0;x\x07";
    add_notice(outcome, notice);
    EXPECT_EQ(diagnostics_text(outcome, {}).find('\x1B'), std::string::npos);
    EXPECT_EQ(diagnostics_text(outcome, {}).find('\x07'), std::string::npos);
}

TEST(Diagnostics, GroupRepeats) {
    std::vector<Notice> notices;
    for (std::int64_t line = 1; line <= 8; ++line)
        notices.push_back(notice_of(IMPORT_EXPORT_CUT, 2, "The name is too long.", line));
    notices.push_back(notice_of(IMPORT_EXPORT_CUT, 3, "The name is too long.", 20));
    notices.push_back(notice_of(IMPORT_EXPORT_CUT, 2, "The title is too long.", 21));
    notices.push_back(notice_of(IMPORT_EXPORT_DEFAULTED, 2, "The name is too long.", 22));
    const auto groups = group_notices(notices);
    ASSERT_EQ(groups.size(), 4U);
    EXPECT_EQ(groups[0].size(), 8U);

    ImportOutcome outcome = outcome_with(Verdict::imported);
    for (const Notice &notice : notices)
        add_notice(outcome, notice);
    const std::string grouped = diagnostics_text(outcome, {});
    EXPECT_NE(grouped.find("river.inp:1: warning: segments: the name is too long\n"
                           "      = and 7 more like it, in lines 2, 3, 4, 5, 6 and others\n"),
              std::string::npos)
        << grouped;
    const std::string with_places = diagnostics_text(outcome, {.all_places = true});
    EXPECT_NE(with_places.find("in lines 2, 3, 4, 5, 6, 7 and 8\n"), std::string::npos);
    const std::string ungrouped = diagnostics_text(outcome, {.ungrouped = true});
    EXPECT_NE(ungrouped.find("river.inp:8: warning: segments: the name"), std::string::npos);
    EXPECT_EQ(ungrouped.find("more like it"), std::string::npos);
}

TEST(Diagnostics, NameAllSkippedSectionsAtOnce) {
    ImportOutcome outcome = outcome_with(Verdict::incomplete);
    for (const std::int32_t section : {3, 5, 11})
        add_notice(outcome, notice_of(IMPORT_EXPORT_SECTION_SKIPPED, section, "Not yet."));
    EXPECT_EQ(diagnostics_text(outcome, {}),
              "river.inp: warning: 3 sections are not imported by this version of the library: "
              "flow paths, exchanges and initial conditions\n");
}

TEST(Diagnostics, CountWhatIsNotKept) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    for (std::size_t i = 0; i < most_notices + 2; ++i)
        add_notice(outcome, notice_of(IMPORT_EXPORT_CUT, 2, "Too long."));
    EXPECT_EQ(outcome.notices.size(), most_notices);
    EXPECT_EQ(kind_count(outcome, IMPORT_EXPORT_CUT), std::int64_t{most_notices} + 2);
    EXPECT_NE(diagnostics_text(outcome, {}).find("2 more notices are counted"), std::string::npos);
    EXPECT_FALSE(is_whole(outcome));
}

TEST(Notices, OfAnOlderLibraryLeaveMembersEmpty) {
    import_export_notice notice{};
    notice.kind = IMPORT_EXPORT_CUT;
    notice.section = 2;
    notice.section_name = "segments";
    notice.reason = "not known to that library";
    notice.size = offsetof(import_export_notice, statement);
    const Notice copy = copy_of(notice);
    EXPECT_EQ(copy.section_name, "segments");
    EXPECT_EQ(copy.reason, "");
}

TEST(Notices, OfANewKindAreWarnings) {
    Notice notice;
    notice.kind = 4711;
    EXPECT_EQ(notice.level(), Level::warning);
    EXPECT_EQ(notice.description().id, "other");
}

} // namespace
} // namespace kova_command
