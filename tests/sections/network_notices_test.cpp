// What a person is told of flows, exchanges, boundaries and loads that do not come across, or come
// across changed.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kova_test {
namespace {

constexpr std::int32_t flow_paths = 3;
constexpr std::int32_t flow_series = 4;
constexpr std::int32_t exchanges = 5;
constexpr std::int32_t boundaries = 6;
constexpr std::int32_t loads = 7;

/// A notice as far as these tests look at it; `record` is the number of the record it points to.
struct Told {
    std::int32_t section;
    std::int32_t kind;
    std::int64_t number;
    std::string statement;
    std::size_t record; ///< its position in the file, or 0 for none

    friend bool operator==(const Told &, const Told &) = default;
    friend std::ostream &operator<<(std::ostream &stream, const Told &told) {
        return stream << "section " << told.section << ", kind " << told.kind << ", number "
                      << told.number << ", " << told.statement << ", record " << told.record;
    }
};

/// What is told of the flow paths to the loads; every record is one line.
std::vector<Told> told(const Records &records, bool transport_only = false) {
    ImportSettings settings;
    settings.transport_only = transport_only;
    std::vector<Told> all;
    for (const Notice &notice : import_text(text_of(records), settings).notices)
        if (notice.section >= flow_paths && notice.section <= loads)
            all.push_back({notice.section, notice.kind, notice.number, notice.statement,
                           static_cast<std::size_t>(notice.line)});
    return all;
}

/// The records with others behind one of them.
Records with_more(Records records, std::string_view name, std::size_t occurrence,
                  const Records &more) {
    const auto place =
        records.begin() + static_cast<std::ptrdiff_t>(position_of(records, name, occurrence) + 1);
    records.insert(place, more.begin(), more.end());
    return records;
}

/// The second flow field gets a function, with factors of its own.
Records two_flow_fields(const std::string &factors, const Records &model = legacy_records()) {
    Records records = with(model, "function count of the flow field", "1", 1);
    records = with_more(records, "function count of the flow field", 1,
                        {{"description of the flow function", "Seepage"},
                         {"pair count of the flow function", "0"}});
    records = with(records, "function count of the flow field", "1", 3);
    return with_more(records, "function count of the flow field", 3,
                     {{"factors of the field", factors},
                      {"caption of the flow function", "Seepage"},
                      {"breakpoint count of the flow function", "0"}});
}

TEST(NetworkNotices, NothingIsToldOfAModelThatComesAcross) {
    EXPECT_EQ(told(legacy_records()), std::vector<Told>{});
    EXPECT_EQ(told(legacy_records(), true), std::vector<Told>{});
}

TEST(NetworkNotices, TellOfDescriptionsThatAreCut) {
    const std::string thirty(30, 'x');
    Records records = with(legacy_records(), "description of the flow function", thirty, 1);
    records = with(records, "description of the exchange function", thirty + "     ");
    EXPECT_EQ(told(records), std::vector<Told>{});
    records = with(records, "description of the flow function", thirty + "y", 1);
    records = with(records, "description of the exchange function", thirty + "    y");
    EXPECT_EQ(told(records),
              (std::vector<Told>{
                  {flow_paths, IMPORT_EXPORT_CUT, 2, "description of the flow function",
                   line_of(records, "description of the flow function", 1)},
                  {exchanges, IMPORT_EXPORT_CUT, 1, "description of the exchange function",
                   line_of(records, "description of the exchange function")},
              }));
}

TEST(NetworkNotices, TellOfFileNamesThatAreCut) {
    const std::string whole(512, 'f');
    Records records = with(legacy_records(), "hydrodynamic file", whole);
    records = with(records, "non-point-source file", whole);
    EXPECT_EQ(told(records), std::vector<Told>{});
    records = with(records, "hydrodynamic file", whole + "g");
    records = with(records, "non-point-source file", whole + "g");
    EXPECT_EQ(told(records), (std::vector<Told>{
                                 {flow_paths, IMPORT_EXPORT_CUT, 0, "hydrodynamic file",
                                  line_of(records, "hydrodynamic file")},
                                 {loads, IMPORT_EXPORT_CUT, 0, "non-point-source file",
                                  line_of(records, "non-point-source file")},
                             }));
    // which with the network alone nobody would have got
    EXPECT_EQ(told(records, true),
              (std::vector<Told>{{flow_paths, IMPORT_EXPORT_CUT, 0, "hydrodynamic file",
                                  line_of(records, "hydrodynamic file")}}));
}

TEST(NetworkNotices, TellOfFieldsThatGetTheFactorsOfAnother) {
    EXPECT_EQ(told(two_flow_fields("1.5 86400")), std::vector<Told>{});
    for (const char *factors : {"1.5 86401", "2.5 86400"}) {
        const Records records = two_flow_fields(factors);
        EXPECT_EQ(told(records), (std::vector<Told>{{flow_series, IMPORT_EXPORT_REPLACED, 1,
                                                     "factors of the field",
                                                     line_of(records, "factors of the field")}}))
            << factors;
    }
}

TEST(NetworkNotices, AFieldInBetweenIsToldWhenTheFirstAndTheLastAgree) {
    Records records = with(legacy_records(), "exchange-field count", "3");
    records = with(records, "function count of the exchange field", "1", 1);
    const Records function = {{"description of the exchange function", "D"},
                              {"pair count of the exchange function", "0"},
                              {"breakpoint count of the exchange function", "0"}};
    Records more = {{"factors of the field", "3 0.25"}};
    more.insert(more.end(), function.begin(), function.end());
    more.push_back({"heading of the exchange field", "Third"});
    more.push_back({"function count of the exchange field", "1"});
    more.push_back({"factors of the field", "2 0.25"});
    more.insert(more.end(), function.begin(), function.end());
    records = with_more(records, "function count of the exchange field", 1, more);
    EXPECT_EQ(told(records),
              (std::vector<Told>{{exchanges, IMPORT_EXPORT_REPLACED, 2, "factors of the field",
                                  line_of(records, "factors of the field", 2)}}));
}

TEST(NetworkNotices, TellOfCountsThatTheSeriesReplace) {
    Records records = with(legacy_records(), "flow-field count", "3", 1);
    records = with(records, "function count of the flow field", "0", 2);
    const std::size_t factors = position_of(records, "factors of the field");
    const std::size_t field = position_of(records, "caption of the flow field", 3);
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(factors),
                  records.begin() + static_cast<std::ptrdiff_t>(field));
    records = with_more(
        records, "function count of the flow field", 3,
        {{"caption of the flow field", "Third"}, {"function count of the flow field", "-1"}});
    EXPECT_EQ(told(records),
              (std::vector<Told>{
                  {flow_series, IMPORT_EXPORT_REPLACED, 0, "flow-field count",
                   line_of(records, "flow-field count", 1)},
                  {flow_series, IMPORT_EXPORT_REPLACED, 1, "function count of the flow field",
                   line_of(records, "function count of the flow field", 2)},
                  {flow_series, IMPORT_EXPORT_REPLACED, 3, "function count of the flow field",
                   line_of(records, "function count of the flow field", 4)},
              }));
}

TEST(NetworkNotices, TellOfFactorsThatGoNowhere) {
    Records records = with(legacy_records(), "factors of the boundaries", "     1.250      2.00");
    records = with(records, "factors of the loads", "0.5 0", 1);
    EXPECT_EQ(told(records),
              (std::vector<Told>{
                  {boundaries, IMPORT_EXPORT_NOT_IMPORTED, 1, "factors of the boundaries",
                   line_of(records, "factors of the boundaries")},
                  {loads, IMPORT_EXPORT_NOT_IMPORTED, 2, "factors of the loads",
                   line_of(records, "factors of the loads", 1)},
              }));
    EXPECT_EQ(told(records, true), std::vector<Told>{}) << "nobody asked for them";
    const std::vector<Told> dropped = told(with(records, "bypass flags", "1 0 1"));
    ASSERT_EQ(dropped.size(), 3U);
    EXPECT_EQ(dropped[0].kind, IMPORT_EXPORT_CONDITION_UNMET);
    EXPECT_EQ(dropped[1].kind, IMPORT_EXPORT_CONDITION_UNMET);
    EXPECT_EQ(dropped[2].kind, IMPORT_EXPORT_NOT_IMPORTED);
}

TEST(NetworkNotices, AFactorThatIsNotGivenIsNotLost) {
    Records records = with(legacy_records(), "factors of the boundaries", "     1.250          ");
    EXPECT_EQ(told(records), std::vector<Told>{});
    records = with(legacy_records(), "factors of the boundaries", "     1.250");
    EXPECT_EQ(told(records), (std::vector<Told>{{boundaries, IMPORT_EXPORT_DEFAULTED, 0,
                                                 "factors of the boundaries",
                                                 line_of(records, "factors of the boundaries")}}));
    records = with(legacy_records(), "factors of the loads", "0.5 /");
    EXPECT_EQ(told(records),
              (std::vector<Told>{{loads, IMPORT_EXPORT_DEFAULTED, 0, "factors of the loads",
                                  line_of(records, "factors of the loads")}}));
}

TEST(NetworkNotices, AFieldThatLeavesItsFactorsOutHasThoseOfTheOneBefore) {
    const Records records = two_flow_fields("/");
    const std::size_t line = line_of(records, "factors of the field", 1);
    EXPECT_EQ(told(records),
              (std::vector<Told>{
                  {flow_series, IMPORT_EXPORT_DEFAULTED, 0, "factors of the field", line},
                  {flow_series, IMPORT_EXPORT_DEFAULTED, 0, "factors of the field", line},
              }));
}

TEST(NetworkNotices, NothingIsToldOfASectionThatFailsLater) {
    Records records = two_flow_fields("2.5 86400");
    records = with(records, "breakpoint count of the flow function", "x", 2);
    const std::vector<Told> all = told(records);
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].kind, IMPORT_EXPORT_READ_FAILED);
}

TEST(NetworkNotices, HeadingsAreNoData) {
    Records records = with(legacy_records(), "heading of the exchange field", "/");
    records = with(records, "heading of the loads", "2*");
    EXPECT_EQ(told(records), std::vector<Told>{});
}

TEST(NetworkNotices, TellOfSystemsWithDataThatTheHostDoesNotSimulate) {
    const Records records = with(legacy_records(), "bypass flags", "1 0 0");
    // the second system has no boundaries, which needs no telling; the third has no loads
    EXPECT_EQ(told(records),
              (std::vector<Told>{
                  {boundaries, IMPORT_EXPORT_CONDITION_UNMET, 1, "heading of the boundaries",
                   line_of(records, "heading of the boundaries")},
                  {loads, IMPORT_EXPORT_CONDITION_UNMET, 1, "heading of the loads",
                   line_of(records, "heading of the loads")},
                  {loads, IMPORT_EXPORT_PLACEHOLDER, 2, "", 0},
              }));
    EXPECT_EQ(told(records, true), std::vector<Told>{});
}

TEST(NetworkNotices, TellOfLoadsThatALaterOneReplaces) {
    Records records = with(legacy_records(), "load count", "5");
    Records more;
    for (const char *segment : {"1", "2", "2", "1"}) {
        more.push_back({"load segment", segment});
        more.push_back({"breakpoint count of the load", "0"});
    }
    records = with_more(records, "breakpoint of the load", 1, more);
    // one for each load that is replaced, by its segment, at the heading of its system
    const std::size_t line = line_of(records, "heading of the loads");
    EXPECT_EQ(told(records), (std::vector<Told>{
                                 {loads, IMPORT_EXPORT_REPLACED, 2, "heading of the loads", line},
                                 {loads, IMPORT_EXPORT_REPLACED, 1, "heading of the loads", line},
                                 {loads, IMPORT_EXPORT_REPLACED, 2, "heading of the loads", line},
                             }));
    // of a system that is dropped whole nothing else is told
    EXPECT_EQ(told(with(records, "bypass flags", "1 0 1")),
              (std::vector<Told>{
                  {boundaries, IMPORT_EXPORT_CONDITION_UNMET, 1, "heading of the boundaries",
                   line_of(records, "heading of the boundaries")},
                  {loads, IMPORT_EXPORT_CONDITION_UNMET, 1, "heading of the loads", line},
              }));
    EXPECT_EQ(told(records, true), std::vector<Told>{});
}

TEST(NetworkNotices, SayWhySeriesLongerThanTheBuffersAreRefused) {
    const Records records =
        with(legacy_records(), "breakpoint count of the boundary", "  170001", 1);
    const auto failures = import_text(text_of(records)).notices_of(IMPORT_EXPORT_READ_FAILED);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].section, boundaries);
    EXPECT_EQ(failures[0].statement, "breakpoint count of the boundary");
    EXPECT_EQ(failures[0].field, "breakpoint count of the boundary");
    EXPECT_EQ(failures[0].expected, "at most 170000 breakpoints");
    EXPECT_EQ(failures[0].found, "170001");
    EXPECT_EQ(failures[0].reason, "The value is out of range.");
    EXPECT_EQ(failures[0].line,
              static_cast<std::int64_t>(line_of(records, "breakpoint count of the boundary", 1)));
    EXPECT_EQ(failures[0].column, 3);
    EXPECT_EQ(failures[0].width, 6);
}

TEST(CurrentNetworkNotices, NothingIsToldOfAModelThatComesAcross) {
    EXPECT_EQ(told(current_records()), std::vector<Told>{});
    EXPECT_EQ(told(current_records(), true), std::vector<Told>{});
    // nor of headings, whatever they are
    Records records = current_records();
    for (Record &record : records)
        if (record.name == "heading of the section" || record.name.ends_with(" heading"))
            record.text = "2*";
    EXPECT_EQ(told(records), std::vector<Told>{});
}

TEST(CurrentNetworkNotices, TellOfTextsThatAreCut) {
    Records records =
        with(current_records(), "description of the flow function", std::string(31, 'x'), 1);
    records = with(records, "description of the exchange function", std::string(31, 'x'));
    records = with(records, "hydrodynamic file", std::string(513, 'f'));
    records = with(records, "non-point-source file", std::string(513, 'f'));
    const auto cut = [&](std::int32_t section, std::int64_t number, const char *statement,
                         std::size_t occurrence) {
        return Told{section, IMPORT_EXPORT_CUT, number, statement,
                    line_of(records, statement, occurrence)};
    };
    EXPECT_EQ(told(records), (std::vector<Told>{
                                 cut(flow_paths, 0, "hydrodynamic file", 0),
                                 cut(flow_paths, 2, "description of the flow function", 1),
                                 cut(exchanges, 1, "description of the exchange function", 0),
                                 cut(loads, 0, "non-point-source file", 0),
                             }));
}

TEST(CurrentNetworkNotices, TellOfFieldsThatGetTheFactorsOfAnother) {
    EXPECT_EQ(told(two_flow_fields("1.5 86400", current_records())), std::vector<Told>{});
    const Records flows = two_flow_fields("1.5 3600", current_records());
    const Told replaced = {flow_series, IMPORT_EXPORT_REPLACED, 1, "factors of the field",
                           line_of(flows, "factors of the field")};
    EXPECT_EQ(told(flows), std::vector<Told>{replaced});
    EXPECT_EQ(told(flows, true), std::vector<Told>{replaced}) << "flows come across all the same";
    Records exchange = with(current_records(), "function count of the exchange field", "1", 1);
    exchange = with_more(exchange, "function count of the exchange field", 1,
                         {{"factors of the field", "2 0.5"},
                          {"description of the exchange function", "Seepage"},
                          {"pair count of the exchange function", "0"},
                          {"breakpoint count of the exchange function", "0"}});
    EXPECT_EQ(told(exchange),
              (std::vector<Told>{{exchanges, IMPORT_EXPORT_REPLACED, 1, "factors of the field",
                                  line_of(exchange, "factors of the field", 1)}}));
}

TEST(CurrentNetworkNotices, TellOfFactorsThatAreLeftOutOrGoNowhere) {
    Records records = with(current_records(), "factors of the boundaries", "     1.250      2.00");
    records = with(records, "factors of the loads", "0.5 0", 1);
    EXPECT_EQ(told(records),
              (std::vector<Told>{
                  {boundaries, IMPORT_EXPORT_NOT_IMPORTED, 1, "factors of the boundaries",
                   line_of(records, "factors of the boundaries")},
                  {loads, IMPORT_EXPORT_NOT_IMPORTED, 2, "factors of the loads",
                   line_of(records, "factors of the loads", 1)},
              }));
    EXPECT_EQ(told(records, true), std::vector<Told>{}) << "nobody asked for them";
    records = with(current_records(), "factors of the boundaries", "     1.250");
    records = with(records, "factors of the loads", "/");
    EXPECT_EQ(told(records),
              (std::vector<Told>{
                  {boundaries, IMPORT_EXPORT_DEFAULTED, 0, "factors of the boundaries",
                   line_of(records, "factors of the boundaries")},
                  {loads, IMPORT_EXPORT_DEFAULTED, 0, "factors of the loads",
                   line_of(records, "factors of the loads")},
                  {loads, IMPORT_EXPORT_DEFAULTED, 0, "factors of the loads",
                   line_of(records, "factors of the loads")},
              }));
}

TEST(CurrentNetworkNotices, TellOfCountsThatTheSeriesReplace) {
    Records records = with(current_records(), "flow-field count", "1", 1);
    const auto field =
        static_cast<std::ptrdiff_t>(position_of(records, "caption of the flow field", 3));
    records.erase(records.begin() + field, records.begin() + field + 2);
    EXPECT_EQ(told(records),
              (std::vector<Told>{{flow_series, IMPORT_EXPORT_REPLACED, 0, "flow-field count",
                                  line_of(records, "flow-field count", 1)}}));
    records = with(current_records(), "function count of the flow field", "-1", 3);
    EXPECT_EQ(told(records),
              (std::vector<Told>{{flow_series, IMPORT_EXPORT_REPLACED, 2,
                                  "function count of the flow field",
                                  line_of(records, "function count of the flow field", 3)}}));
}

TEST(CurrentNetworkNotices, TellOfLoadsThatALaterOneReplacesAndOfPlaceholders) {
    Records records = with(current_records(), "load count", "3");
    records = with_more(records, "breakpoint of the load", 1,
                        {{"load segment", "1"},
                         {"breakpoint count of the load", "0"},
                         {"load segment", "2"},
                         {"breakpoint count of the load", "0"}});
    // the second system has none
    const std::size_t count = position_of(records, "load count", 1);
    const std::size_t end = position_of(records, "heading of the section", 5);
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(count) + 1,
                  records.begin() + static_cast<std::ptrdiff_t>(end));
    for (const char *none : {"0", "-3"}) {
        records = with(records, "load count", none, 1);
        EXPECT_EQ(told(records), (std::vector<Told>{
                                     {loads, IMPORT_EXPORT_REPLACED, 2, "heading of the loads",
                                      line_of(records, "heading of the loads")},
                                     {loads, IMPORT_EXPORT_PLACEHOLDER, 2, "", 0},
                                 }));
        EXPECT_EQ(told(records, true), std::vector<Told>{});
    }
}

TEST(CurrentNetworkNotices, SayWhySeriesLongerThanTheBuffersAreRefused) {
    for (const char *statement :
         {"breakpoint count of the boundary", "breakpoint count of the load"}) {
        const Records records = with(current_records(), statement, "170001", 1);
        for (const bool transport_only : {false, true}) {
            ImportSettings settings;
            settings.transport_only = transport_only;
            const auto failures =
                import_text(text_of(records), settings).notices_of(IMPORT_EXPORT_READ_FAILED);
            ASSERT_EQ(failures.size(), 1U);
            EXPECT_EQ(failures[0].statement, statement);
            EXPECT_EQ(failures[0].expected, "at most 170000 breakpoints");
            EXPECT_EQ(failures[0].line, static_cast<std::int64_t>(line_of(records, statement, 1)));
        }
    }
}

} // namespace
} // namespace kova_test
