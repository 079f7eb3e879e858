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
    // the third system, which is simulated now, has a load
    const std::size_t load_count = position_of(records, "load count", 2);
    records[load_count] = {"load count", "1"};
    const Records load = {{"factors of the loads", "1 1"},
                          {"load segment", "1"},
                          {"breakpoint count of the load", "0"}};
    records.insert(records.begin() + static_cast<std::ptrdiff_t>(load_count) + 1, load.begin(),
                   load.end());
    // and initial conditions
    const std::size_t system = position_of(records, "caption of the system", 1);
    const Records initial(records.begin() + static_cast<std::ptrdiff_t>(system), records.end());
    records.insert(records.end(), initial.begin(), initial.end());
    return with(records, "system count", "3", 3);
}

/// Likewise the current one.
Records quiet_current() {
    const Records records = with(current_records(), "option behind the system count", "0");
    return with(records, "option behind INTYP", "0");
}

/// The notices of the model parameters and the segments.
std::vector<Notice> told(const Records &records, const ImportSettings &settings = {}) {
    std::vector<Notice> notices = import_text(text_of(records), settings).notices;
    std::erase_if(notices, [](const Notice &notice) { return notice.section > 2; });
    return notices;
}

// Hosts that were compiled long ago know the kinds by their numbers.
TEST(Notices, KindsKeepTheirNumbers) {
    static_assert(IMPORT_EXPORT_READ_FAILED == 1);
    static_assert(IMPORT_EXPORT_OPEN_FAILED == 2);
    static_assert(IMPORT_EXPORT_NOT_IMPORTED == 4);
    static_assert(IMPORT_EXPORT_CONDITION_UNMET == 5);
    static_assert(IMPORT_EXPORT_CONVERTED == 6);
    static_assert(IMPORT_EXPORT_CUT == 7);
    static_assert(IMPORT_EXPORT_DEFAULTED == 8);
    static_assert(IMPORT_EXPORT_PLACEHOLDER == 9);
    static_assert(IMPORT_EXPORT_CALL_REFUSED == 10);
    static_assert(IMPORT_EXPORT_OUT_OF_MEMORY == 11);
    static_assert(IMPORT_EXPORT_HOST_FAILED == 12);
    static_assert(IMPORT_EXPORT_REPLACED == 13);
}

TEST(Notices, AreNotGivenWithoutReason) {
    for (const bool transport_only : {false, true}) {
        ImportSettings settings;
        settings.transport_only = transport_only;
        EXPECT_TRUE(import_text(text_of(quiet_legacy()), settings).notices.empty());
        EXPECT_TRUE(import_text(text_of(quiet_current()), settings).notices.empty());
    }
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
    const Records toxicants = with(quiet_legacy(), "header", "    8      2");
    notices = told(toxicants);
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_NOT_IMPORTED);
    for (const char *none : {"0", "-1"})
        EXPECT_TRUE(told(with(toxicants, "system count", none)).empty()) << none;
}

TEST(Notices, TellOfOptionsIntervalsAndBlocksThatAreDropped) {
    struct Told {
        std::int32_t kind;
        std::int64_t number;
        std::string record;
    };
    const Records records = legacy_records();
    const std::vector<Told> expected = {
        {IMPORT_EXPORT_NOT_IMPORTED, 0, "option behind the system count"},
        {IMPORT_EXPORT_NOT_IMPORTED, 0, "option behind INTYP"},
        {IMPORT_EXPORT_NOT_IMPORTED, 0, "output interval"},
        {IMPORT_EXPORT_CONDITION_UNMET, 3, "bypass flags"},
        {IMPORT_EXPORT_NOT_IMPORTED, 0, "record of the first skipped block"},
        {IMPORT_EXPORT_NOT_IMPORTED, 0, "record of the second skipped block"},
    };
    const auto notices = told(records);
    ASSERT_EQ(notices.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(notices[i].kind, expected[i].kind) << expected[i].record;
        EXPECT_EQ(notices[i].number, expected[i].number) << expected[i].record;
        EXPECT_EQ(notices[i].statement, expected[i].record);
        EXPECT_EQ(notices[i].statement_number - 1, notices[i].line) << expected[i].record;
        EXPECT_EQ(records[static_cast<std::size_t>(notices[i].line - 1)].name, expected[i].record);
        EXPECT_EQ(notices[i].path, "model.inp");
    }
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

TEST(Notices, AnOptionThatItsRecordLeavesOutIsNoneThatIsDropped) {
    const auto notices = told(with(quiet_current(), "option behind INTYP", "/"));
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_DEFAULTED);
    EXPECT_EQ(notices[0].field, "option behind INTYP");
}

TEST(Notices, TellOfATitleThatCannotBeRead) {
    const auto notices = told(with(quiet_current(), "title", "'tis open"));
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
    // hyphens are no blanks, which would not count at the end of a name
    for (const Records &records : {quiet_legacy(), quiet_current()}) {
        const std::string start = records[1].name == "title" ? "    1     " : "1 ";
        EXPECT_TRUE(told(with(records, "segment name", start + std::string(34, '-'))).empty());
        const auto notices = told(with(records, "segment name", start + std::string(35, '-')));
        ASSERT_EQ(notices.size(), 1U);
        EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_CUT);
    }
}

TEST(Notices, BlanksThatBecomeHyphensAreNoCut) {
    const Records records = quiet_current();
    EXPECT_TRUE(told(with(records, "segment name", "    1      a  b c")).empty());
    EXPECT_EQ(told(with(records, "segment name", "    1     " + std::string(35, 'x'))).size(), 1U);
}

TEST(Notices, TellOfRecordsThatBearAnotherNumber) {
    Records records = with(quiet_legacy(), "segment name", "2 Pool");
    records = with(records, "segment geometry", "7 0 1 10*0.5", 1);
    const auto notices = told(records);
    ASSERT_EQ(notices.size(), 2U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_CONVERTED);
    EXPECT_EQ(notices[0].statement, "segment name");
    EXPECT_EQ(notices[1].statement, "segment geometry");
    EXPECT_EQ(numbers_of(notices), (Numbers{1, 2}));
}

TEST(Notices, TellOfFixedColumnTextsThatRunOnBehindTheirField) {
    const std::string name(40, 'x');
    ImportSettings plain;
    plain.index_segment_names = false;
    const auto names_cut = [&](const std::string &record) {
        return told(with(quiet_current(), "segment name", record), plain).size();
    };
    EXPECT_EQ(names_cut("    1     " + name), 0U);
    EXPECT_EQ(names_cut("    1     " + name + " a remark"), 0U);
    EXPECT_EQ(names_cut("    1     " + name + "y"), 1U);
    const auto notices =
        told(with(quiet_current(), "system name", "NH-34     " + std::string(31, 'x')));
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].kind, IMPORT_EXPORT_CUT);
    EXPECT_EQ(notices[0].number, 1);
}

TEST(Notices, TellOfNumbersBehindTheEndOfAShortLine) {
    const auto notices = told(with(quiet_current(), "segment geometry", "    1    2"));
    ASSERT_EQ(notices.size(), 18U);
    EXPECT_EQ(notices[0].field, "segment type");
    EXPECT_EQ(notices[0].column, 11);
    EXPECT_EQ(notices[17].field, "weir type");
    // a blank field is a 0 that somebody has left there
    EXPECT_TRUE(told(with(quiet_current(), "segment geometry", std::string(260, ' '))).empty());
}

TEST(Notices, TellOfSegmentsThatLoseTheirName) {
    for (const bool current : {false, true}) {
        const Records records =
            with(current ? quiet_current() : quiet_legacy(), "segment count", "10000");
        const std::size_t names = position_of(records, "segment name");
        const std::size_t caption = position_of(records, "caption of the segment geometry");
        const std::string name = current ? "          Pool" : "0 Pool";
        const std::string geometry = current ? std::string(260, ' ') : "0 0 1 10*0.5";
        Records many(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(names));
        many.insert(many.end(), 10000, {"segment name", name});
        many.push_back(records[caption]);
        many.insert(many.end(), 10000, {"segment geometry", geometry});
        const auto notices = told(many);
        EXPECT_EQ(numbers_of(notices), (Numbers{999, 9999, 10000}));
        for (const Notice &notice : notices)
            EXPECT_EQ(notice.kind, IMPORT_EXPORT_NOT_IMPORTED);
    }
}

} // namespace
} // namespace kova_test
