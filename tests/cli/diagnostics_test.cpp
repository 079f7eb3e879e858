#include "cli/diagnostics.h"

#include "outcomes.h"

#include <cstddef>
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
    notice.line_text = "";
    notice.field = "";
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
    NoticeList notices;
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

/// A constant that does not come across.
Notice named(std::int64_t number, const std::string &name, std::int32_t section = 10) {
    Notice notice = notice_of(IMPORT_EXPORT_NOT_IMPORTED, section, "No place for it.");
    notice.number = number;
    notice.name = name;
    return notice;
}

TEST(Diagnostics, NameWhatANumberMeans) {
    EXPECT_EQ(heading_of(named(10, "Nitrification Rate Constant @20 \xF8"
                                   "C (1/day)")),
              "kinetic constants: no place for it (number 10, \"Nitrification Rate Constant @20 "
              "\u00B0C (1/day)\")");
    EXPECT_EQ(heading_of(named(10, "")), "kinetic constants: no place for it (number 10)");
    EXPECT_EQ(heading_of(named(0, "Wind")), "kinetic constants: no place for it (\"Wind\")");
    EXPECT_EQ(heading_of(named(0, "")), "kinetic constants: no place for it");
}

// The names of time functions stand in the file, which may hold anything.
TEST(Diagnostics, NamesOfTheFileAreText) {
    EXPECT_EQ(heading_of(named(2, "S\xF8 \x1B[31m\x07\xE2\x80\xAE", 8)),
              "environmental time functions: no place for it (number 2, \"S\u00F8 "
              "\\x1b[31m\\x07\\u202e\")");
}

TEST(Diagnostics, NameAFewRepeats) {
    const auto text_of = [](int count) {
        ImportOutcome outcome = outcome_with(Verdict::imported);
        for (int i = 1; i <= count; ++i)
            add_notice(outcome, named(i, i == 3 ? "" : "Name " + std::to_string(i)));
        return diagnostics_text(outcome, {});
    };
    const std::string first =
        "river.inp: warning: kinetic constants: no place for it (number 1, \"Name 1\")\n";
    EXPECT_EQ(text_of(2), first + "      = and 1 more like it, number 2 (\"Name 2\")\n");
    EXPECT_EQ(text_of(4), first + "      = and 3 more like it, numbers 2 (\"Name 2\"), 3 and 4 "
                                  "(\"Name 4\")\n");
    EXPECT_EQ(text_of(5), first + "      = and 4 more like it, numbers 2, 3, 4 and 5\n");
    EXPECT_EQ(text_of(8), first + "      = and 7 more like it, numbers 2, 3, 4, 5, 6 and others\n");
}

TEST(Diagnostics, SayTheSameOnlyOnce) {
    Notice notice = read_failure();
    notice.statement = "function count of the flow field";
    notice.field = notice.statement;
    EXPECT_EQ(heading_of(notice), "segments: function count of the flow field: cannot be read");
    notice.kind = IMPORT_EXPORT_DEFAULTED;
    notice.reason = "The record leaves the value out.";
    EXPECT_EQ(heading_of(notice),
              "segments: function count of the flow field: the record leaves the value out");
    notice.field = "function count";
    EXPECT_TRUE(heading_of(notice).ends_with("leaves the value out (\"function count\")"));
}

TEST(Diagnostics, KeepSectionsApart) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    for (const std::int32_t section : {3, 5})
        add_notice(outcome, notice_of(IMPORT_EXPORT_CUT, section, "Too long."));
    EXPECT_EQ(group_notices(outcome.notices).size(), 2U);
}

// The number of a kind that there was once stays free: a library that sends it is not understood.
TEST(Diagnostics, KindThreeIsNoKindAnyMore) {
    EXPECT_EQ(notice_kinds()[kind_row(3)].id, "other");
    EXPECT_EQ(notice_kinds()[kind_row(IMPORT_EXPORT_NOT_IMPORTED)].number, 4);
    EXPECT_EQ(notice_kinds()[kind_row(IMPORT_EXPORT_REPLACED)].number, 13);
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

TEST(Notices, BringTheNameWhereTheLibraryHasIt) {
    const std::string name("Ice\0cover", 9);
    import_export_notice notice{};
    notice.kind = IMPORT_EXPORT_NOT_IMPORTED;
    notice.number = 17;
    notice.name = name.c_str();
    notice.name_length = name.size();
    notice.size = sizeof notice;
    EXPECT_EQ(copy_of(notice).name, name);
    for (const std::size_t size :
         {offsetof(import_export_notice, name), offsetof(import_export_notice, name_length)}) {
        notice.size = size;
        EXPECT_EQ(copy_of(notice).name, "");
        EXPECT_EQ(copy_of(notice).number, 17);
    }
    // a later library has more behind the name
    notice.size = sizeof notice + sizeof(void *);
    EXPECT_EQ(copy_of(notice).name, name);
}

TEST(Notices, OfANewKindAreWarnings) {
    Notice notice;
    notice.kind = 4711;
    EXPECT_EQ(notice.level(), Level::warning);
    EXPECT_EQ(notice.description().id, "other");
}

} // namespace
} // namespace kova_command
