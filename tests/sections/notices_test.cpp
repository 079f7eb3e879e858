// What a person is told of data that does not come across, or comes across changed.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kova_test {
namespace {

using Numbers = std::vector<std::int64_t>;

Numbers numbers_of(const std::vector<Notice> &notices) {
    Numbers numbers;
    for (const Notice &notice : notices)
        numbers.push_back(notice.number);
    return numbers;
}

/// The legacy model without anything to tell.
Records quiet_legacy() {
    Records records = with(legacy_records(), "bypass flags", "0 0 0");
    records = with(records, "option behind the system count", "0");
    records = with(records, "option behind INTYP", "0");
    records = with(records, "output-interval count", "1\n0 0.25\n0\n");
    const std::size_t first = position_of(records, "output interval");
    const std::size_t last = position_of(records, "record of the second skipped block", 1);
    records = with(records, "output-interval count", "1");
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(first),
                  records.begin() + static_cast<std::ptrdiff_t>(last) + 1);
    const Records rest = {{"output interval", "0 0.25"},
                          {"bypass flags", "0 0 0"},
                          {"count of the first skipped block", "0"},
                          {"count of the second skipped block", "0"}};
    records.insert(records.begin() + static_cast<std::ptrdiff_t>(first), rest.begin(), rest.end());
    return records;
}

/// All notices but those of sections that do not exist yet.
std::vector<Notice> told(const Records &records, const ImportSettings &settings = {}) {
    std::vector<Notice> notices;
    for (const Notice &notice : import_text(text_of(records), settings).notices)
        if (notice.kind != IMPORT_EXPORT_SECTION_SKIPPED)
            notices.push_back(notice);
    return notices;
}

TEST(Notices, AreNotGivenWithoutReason) {
    EXPECT_TRUE(told(quiet_legacy()).empty());
    Records records = with(current_records(), "option behind the system count", "0");
    EXPECT_TRUE(told(with(records, "option behind INTYP", "0")).empty());
}

TEST(Notices, TellOfBypassedSystems) {
    const auto notices = told(with(quiet_legacy(), "bypass flags", "1 0 1"));
    ASSERT_EQ(notices.size(), 2U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_CONDITION_UNMET);
    EXPECT_EQ(numbers_of(notices), (Numbers{1, 3}));
}

TEST(Notices, TellOfSystemsThatTheCurrentModelDoesNotHave) {
    Records records = with(quiet_legacy(), "system count", "2000000000");
    auto notices = told(with(records, "bypass flags", "2000000000*0"));
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_NOT_IMPORTED);
    EXPECT_EQ(notices[0].number, 29);
    notices = told(with(quiet_legacy(), "header", "    8      2"));
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_NOT_IMPORTED);
}

TEST(Notices, TellOfOptionsIntervalsAndBlocksThatAreDropped) {
    const auto notices = told(legacy_records());
    std::vector<std::int32_t> kinds;
    for (const Notice &notice : notices)
        kinds.push_back(notice.kind);
    // the intervals, the bypassed system, two blocks, two options
    EXPECT_EQ(kinds,
              (std::vector<std::int32_t>{IMPORT_EXPORT_NOT_IMPORTED, IMPORT_EXPORT_CONDITION_UNMET,
                                         IMPORT_EXPORT_NOT_IMPORTED, IMPORT_EXPORT_NOT_IMPORTED,
                                         IMPORT_EXPORT_NOT_IMPORTED, IMPORT_EXPORT_NOT_IMPORTED}));
    EXPECT_EQ(numbers_of(notices), (Numbers{2, 3, 1, 2, 0, 0}));
}

TEST(Notices, TellOfValuesThatARecordLeavesOut) {
    const auto notices =
        told(with(quiet_legacy(), "segment geometry", "2 0,, 20 21 22 23 24 25 26 27 28 /", 1));
    ASSERT_EQ(notices.size(), 2U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_DEFAULTED);
    EXPECT_EQ(notices[0].field, "segment type");
    EXPECT_EQ(notices[0].statement, "segment geometry");
    EXPECT_EQ(notices[0].section_name, "segments");
    EXPECT_EQ(notices[1].field, "minimum depth");
    EXPECT_EQ(notices[0].line, notices[1].line);
    EXPECT_LT(notices[0].column, notices[1].column);
    const auto names = told(with(quiet_legacy(), "segment name", "1 /"));
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0].field, "name");
}

TEST(Notices, TellOfATitleThatCannotBeRead) {
    Records records = with(current_records(), "option behind the system count", "0");
    records = with(records, "option behind INTYP", "0");
    const auto notices = told(with(records, "title", "'tis open"));
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_DEFAULTED);
    EXPECT_EQ(notices[0].statement, "title");
}

TEST(Notices, TellOfNamesThatAreCut) {
    ImportSettings plain;
    plain.index_segment_names = false;
    struct Case {
        std::size_t length;
        bool cut_plain;
        bool cut_indexed;
    };
    for (const Case &each : std::vector<Case>{
             {34, false, false}, {35, false, true}, {40, false, true}, {41, true, true}}) {
        const Records records =
            with(quiet_legacy(), "segment name", "1 " + std::string(each.length, 'x'));
        EXPECT_EQ(told(records, plain).size(), each.cut_plain ? 1U : 0U) << each.length;
        const auto notices = told(records);
        ASSERT_EQ(notices.size(), each.cut_indexed ? 1U : 0U) << each.length;
        if (each.cut_indexed) {
            EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_CUT);
            EXPECT_EQ(notices[0].number, 1);
        }
    }
}

TEST(Notices, BlanksThatBecomeHyphensAreNoCut) {
    Records records = with(current_records(), "option behind the system count", "0");
    records = with(records, "option behind INTYP", "0");
    EXPECT_TRUE(told(with(records, "segment name", "    1      a  b c")).empty());
    EXPECT_EQ(told(with(records, "segment name", "    1     " + std::string(35, 'x'))).size(), 1U);
}

TEST(Notices, TellOfSegmentsThatLoseTheirName) {
    Records records = quiet_legacy();
    records = with(records, "segment count", "1000");
    const std::size_t names = position_of(records, "segment name");
    const std::size_t caption = position_of(records, "caption of the segment geometry");
    Records many(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(names));
    many.insert(many.end(), 1000, {"segment name", "1 Pool"});
    many.push_back(records[caption]);
    many.insert(many.end(), 1000, {"segment geometry", "1 0 1 10*0.5"});
    const auto notices = told(many);
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_NOT_IMPORTED);
    EXPECT_EQ(notices[0].number, 999);
}

} // namespace
} // namespace kova_test
