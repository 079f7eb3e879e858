#include "cli/json_output.h"
#include "cli/sarif_output.h"
#include "cli/terminal.h"

#include "outcomes.h"

#include <gtest/gtest.h>

namespace kova_command {
namespace {

TEST(Json, ShowsEveryKindOfNotice) {
    for (const NoticeKind &kind : notice_kinds()) {
        ImportOutcome outcome = outcome_with(Verdict::imported);
        add_notice(outcome, notice_of(kind.number, 2, "Because."));
        const std::string json = import_json(outcome);
        EXPECT_NE(json.find("\"kind\": \"" + std::string(kind.id) + '"'), std::string::npos);
        EXPECT_NE(json.find('"' + std::string(kind.id) + "\": 1"), std::string::npos);
    }
}

TEST(Json, HasNoControlCharacters) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    Notice notice = read_failure();
    notice.found = "\x01\x1B\x7F\xC2\x9B\xFF\x81";
    add_notice(outcome, notice);
    const std::string json = import_json(outcome);
    EXPECT_NE(json.find("\"\\u0001\\u001b\\u007f\\u009b\xC3\xBF\\u0081\""), std::string::npos);
    EXPECT_NE(check_json({outcome}, 1).find("\\u009b"), std::string::npos);
    EXPECT_EQ(check_sarif({outcome}, 1).find('\x1B'), std::string::npos);
}

/// A time function with a name as a file may give it.
Notice named_by_the_file() {
    Notice notice = notice_of(IMPORT_EXPORT_NOT_IMPORTED, 8, "No place for it.");
    notice.number = 17;
    notice.name = "Ice\x1B \xF8 \"x\"";
    return notice;
}

TEST(Json, NamesWhatANumberMeans) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    add_notice(outcome, named_by_the_file());
    add_notice(outcome, notice_of(IMPORT_EXPORT_NOT_IMPORTED, 8, "No place for it."));
    Notice constant = named_by_the_file();
    constant.section = 10;
    add_notice(outcome, constant);
    const std::string json = import_json(outcome);
    EXPECT_NE(json.find("\"number\": 17,\n      \"name\": \"Ice\\u001b \u00F8 \\\"x\\\"\""),
              std::string::npos)
        << json;
    EXPECT_NE(json.find("\"number\": null,\n      \"name\": null"), std::string::npos);
    EXPECT_NE(json.find("\"name\": \"Ice\\u001b \u00B0 \\\"x\\\"\""), std::string::npos);
}

TEST(Sarif, NamesWhatANumberMeans) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    add_notice(outcome, named_by_the_file());
    const std::string sarif = check_sarif({outcome}, 1);
    EXPECT_NE(sarif.find("no place for it (number 17, \\\"Ice\\\\x1b \u00F8 \\\"x\\\"\\\")"),
              std::string::npos)
        << sarif;
    EXPECT_NE(sarif.find("\"number\": 17,"), std::string::npos);
    EXPECT_NE(sarif.find("\"name\": \"Ice\\u001b \u00F8 \\\"x\\\"\""), std::string::npos);
}

TEST(Sarif, CountsColumnsInUtf16Units) {
    ImportOutcome outcome = outcome_with(Verdict::stopped);
    Notice notice = read_failure();
    notice.line_text = "\xC3\xA9\xF0\x9F\x90\x9F 1\xC3\xA9"; // 2 + 4 bytes, 1 + 2 units
    notice.column = 8;
    notice.width = 3;
    add_notice(outcome, notice);
    std::string sarif = check_sarif({outcome}, 1);
    EXPECT_NE(sarif.find("\"startColumn\": 5,"), std::string::npos) << sarif;
    EXPECT_NE(sarif.find("\"endColumn\": 7\n"), std::string::npos);
    EXPECT_NE(sarif.find("\"byteColumn\": 8,"), std::string::npos);

    // Bytes before the excerpt cannot be told from characters: the line is right, a column might
    // not be.
    outcome.notices[0].line_text_column = 3;
    sarif = check_sarif({outcome}, 1);
    EXPECT_NE(sarif.find("\"startLine\": 16\n"), std::string::npos);
    EXPECT_EQ(sarif.find("startColumn"), std::string::npos);
}

TEST(Progress, FitsTheScreen) {
    EXPECT_EQ(progress_bar(50, "loads", 80),
              "[" + std::string(15, '#') + std::string(15, '.') + "]  50 % loads");
    EXPECT_EQ(progress_bar(250, "", 80), "[" + std::string(30, '#') + "] 100 % ");
    for (std::size_t width = 1; width < 60; ++width)
        EXPECT_LT(progress_bar(85, "environmental time functions", width).size(), width);
}

} // namespace
} // namespace kova_command
