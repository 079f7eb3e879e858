// What a person is told of legacy time functions, segment parameters, constants and initial
// conditions that do not come across, or come across changed.

#include "tests/sections/kinetics_notices.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kova_test {
namespace {

struct SmallFunction {
    int number;
    std::string name;
};

Records with_time_functions(const std::vector<SmallFunction> &functions) {
    Records section = {{"time-function count", std::to_string(functions.size())}};
    for (const SmallFunction &function : functions) {
        section.push_back({"number of the time function", std::to_string(function.number)});
        section.push_back({"name of the time function", function.name});
        section.push_back({"breakpoint count of the time function", "0"});
    }
    return with_section(legacy_records(), "time-function count", 0, "segment count", 1, section);
}

Records with_constants(const std::vector<std::string> &records) {
    Records section = {{"constant count", std::to_string(records.size())}};
    for (const std::string &record : records)
        section.push_back({"constant", record});
    return with_section(legacy_records(), "constant count", 0, "system count", 3, section);
}

TEST(KineticsNotices, NothingIsToldOfAModelThatComesAcross) {
    for (std::int32_t section = time_functions; section <= initial_conditions; ++section)
        EXPECT_EQ(told(legacy_records(), section), std::vector<Told>{}) << section;
}

TEST(KineticsNotices, TellOfTimeFunctionsThatTheCurrentModelLacks) {
    const Records records = with_time_functions(
        {{23, "Early"}, {2, "Cold"}, {17, "Ice"}, {26, "What"}, {1, "Warm"}, {777, "Far"}});
    const auto name_line = [&](std::size_t i) {
        return line_of(records, "name of the time function", i);
    };
    const std::vector<Told> expected = {
        {IMPORT_EXPORT_NOT_IMPORTED, 23, "Early", name_line(0)},
        {IMPORT_EXPORT_NOT_IMPORTED, 2, "Cold", name_line(1)},
        {IMPORT_EXPORT_NOT_IMPORTED, 17, "Ice", name_line(2)},
        {IMPORT_EXPORT_NOT_IMPORTED, 26, "What", name_line(3)},
        {IMPORT_EXPORT_NOT_IMPORTED, 777, "Far", name_line(5)},
    };
    EXPECT_EQ(told(records, time_functions), expected);
    EXPECT_EQ(told(records, time_functions, true), std::vector<Told>{});
}

TEST(KineticsNotices, TellOfTimeFunctionsThatChange) {
    const Records records = with_time_functions(
        {{5, "Sun"}, {24, "Third"}, {1, "'Water temperature of the upper reaches'"}, {1, "Again"}});
    const auto name_line = [&](std::size_t i) {
        return line_of(records, "name of the time function", i);
    };
    const std::vector<Told> expected = {
        {IMPORT_EXPORT_CUT, 1, "Water temperature of the upper", name_line(2)},
        {IMPORT_EXPORT_CONVERTED, 5, "Sun", name_line(0)},
        {IMPORT_EXPORT_PLACEHOLDER, 4, "", 0},
    };
    EXPECT_EQ(told(records, time_functions), expected);
    EXPECT_EQ(told(records, time_functions, true), std::vector<Told>{});
}

TEST(KineticsNotices, TellOfBreakpointsThatAreReplacedOrTakenAway) {
    Records records = with_time_functions({{1, "First"}, {1, "Second"}, {24, "Third"}, {23, "B"}});
    records = with(records, "breakpoint count of the time function", "1\n0 5");
    const auto all = told(records, time_functions);
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].kind, IMPORT_EXPORT_REPLACED);
    EXPECT_EQ(all[0].name, "First");
    EXPECT_EQ(all[1].kind, IMPORT_EXPORT_NOT_IMPORTED);
    EXPECT_EQ(all[1].number, 24);
    EXPECT_EQ(all[1].name, "Third");
}

TEST(KineticsNotices, BreakpointsThatARecordLeavesAreNotReplaced) {
    Records records = with_time_functions({{1, "First"}, {1, "Second"}});
    for (const auto &[second, replaced] : {std::pair{"/\n/", 0U},
                                           {"1\n0 5", 0U},
                                           {"1\n,5", 0U},
                                           {"2\n/\n1 1", 0U},
                                           {"1\n0 6", 1U},
                                           {"0", 1U}}) {
        records = with(records, "breakpoint count of the time function", "1\n0 5", 0);
        records = with(records, "breakpoint count of the time function", second, 1);
        const ImportRun run = import_text(text_of(records));
        EXPECT_EQ(run.notices_of(IMPORT_EXPORT_REPLACED).size(), replaced) << second;
    }
}

TEST(KineticsNotices, AFunctionWithoutAThirdSeriesLosesNone) {
    const Records records = with_time_functions({{1, "First"}, {23, "Second"}, {0, "No number"}});
    EXPECT_EQ(told(records, time_functions).size(), 1U) << "number 0 is none";
}

TEST(KineticsNotices, TellOfNamesOfTimeFunctionsThatAreCut) {
    const std::string name = "'" + std::string(31, 'n') + "'";
    for (const auto &[number, kind] :
         {std::pair{"1", IMPORT_EXPORT_CUT}, {"99", IMPORT_EXPORT_NOT_IMPORTED}}) {
        Records records = with_time_functions({{1, "First"}});
        records = with(records, "number of the time function", number);
        const auto all = told(with(records, "name of the time function", name), time_functions);
        ASSERT_EQ(all.size(), 1U) << "a name that nobody gets is not cut";
        EXPECT_EQ(all[0].kind, kind);
    }
}

TEST(KineticsNotices, OtherModelsHaveNeitherTimeFunctionsNorParameters) {
    const Records records = with(legacy_records(), "header", "    8      2");
    const auto functions = told(records, time_functions);
    ASSERT_EQ(functions.size(), 2U);
    EXPECT_EQ(functions[0].kind, IMPORT_EXPORT_CONDITION_UNMET);
    EXPECT_EQ(functions[0].name, "Water temperature");
    const auto parameters = told(records, segment_parameters);
    ASSERT_EQ(parameters.size(), 2U);
    EXPECT_EQ(parameters[1].kind, IMPORT_EXPORT_CONDITION_UNMET);
    EXPECT_EQ(parameters[1].number, 14);
}

TEST(KineticsNotices, TellOfSegmentParametersWithoutAPlace) {
    Records records = with(legacy_records(), "segment parameter", "3 1");
    records = with(records, "value of the segment parameter", "3 1");
    records = with(records, "value of the segment parameter", "20 1", 1);
    records = with(records, "value of the segment parameter", "25 1", 2);
    records = with(records, "value of the segment parameter", "1900000000 1", 3);
    const auto value_line = [&](std::size_t i) {
        return line_of(records, "value of the segment parameter", i);
    };
    const std::vector<Told> expected = {
        {IMPORT_EXPORT_NOT_IMPORTED, 3, "Water Temperature Time Function",
         line_of(records, "segment parameter")},
        {IMPORT_EXPORT_CONVERTED, 20, "", value_line(1)},
        {IMPORT_EXPORT_NOT_IMPORTED, 20, "", value_line(1)},
        {IMPORT_EXPORT_CONVERTED, 25, "", value_line(2)},
        {IMPORT_EXPORT_CONDITION_UNMET, 25, "Settling Rate -- Solids", value_line(2)},
        {IMPORT_EXPORT_CONVERTED, 1900000000, "", value_line(3)},
        {IMPORT_EXPORT_NOT_IMPORTED, 1900000000, "", value_line(3)},
    };
    EXPECT_EQ(told(records, segment_parameters), expected);
    EXPECT_EQ(told(records, segment_parameters, true), std::vector<Told>{});
}

TEST(KineticsNotices, ParametersThatCarryNoLegacyNumberLackNoValues) {
    // the air temperature is 1 in each segment
    const Records records = with_time_functions({{10, "Air"}});
    EXPECT_EQ(told(records, segment_parameters), std::vector<Told>{});
}

TEST(KineticsNotices, TellOfSegmentValuesThatAreReplaced) {
    const Records records = with(legacy_records(), "value of the segment parameter", "2 9.5", 1);
    const auto all = told(records, segment_parameters);
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[0].kind, IMPORT_EXPORT_CONVERTED);
    EXPECT_EQ(all[1].kind, IMPORT_EXPORT_REPLACED);
    EXPECT_EQ(all[1].number, 2);
    // the second segment has the old number again
    EXPECT_EQ(all[2].kind, IMPORT_EXPORT_CONVERTED);
    EXPECT_EQ(all[2].number, 14);
    // and the first has no value of it
    EXPECT_EQ(all[3].kind, IMPORT_EXPORT_DEFAULTED);
    EXPECT_EQ(all[3].number, 14);
    EXPECT_EQ(all[3].name, "Segment Elevation");
}

TEST(KineticsNotices, TellOfSegmentParametersThatStandTwiceInTheList) {
    Records records = with(legacy_records(), "segment parameter", "2 1.5");
    records = with(records, "segment parameter", "2 2.5", 1);
    for (const std::size_t segment : {0U, 2U}) {
        records = with(records, "value of the segment parameter", "2 20", segment);
        records = with(records, "value of the segment parameter", "2 20", segment + 1);
    }
    const auto all = told(records, segment_parameters);
    ASSERT_EQ(all.size(), 3U) << "the value of each segment, and the scale factor";
    EXPECT_EQ(all[2], (Told{IMPORT_EXPORT_REPLACED, 2, "Water Temperature", 0}));
    EXPECT_EQ(import_text(text_of(records)).arguments_of("PSCALEPARAMBYISC"),
              (std::vector<std::string>{"int 1, int 1, real 1.5", "int 1, int 1, real 2.5"}));
    // a number that becomes nothing has no scale factor to lose
    for (Record &record : records)
        if (record.name == "segment parameter" || record.name == "value of the segment parameter")
            record.text = "20 1.5";
    EXPECT_TRUE(import_text(text_of(records)).notices_of(IMPORT_EXPORT_REPLACED).empty());
}

TEST(KineticsNotices, TellOfSegmentValuesWhoseNumberLeavesTheList) {
    const Records records = with(legacy_records(), "value of the segment parameter", "4 7", 3);
    const auto all = told(records, segment_parameters);
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].kind, IMPORT_EXPORT_CONVERTED);
    EXPECT_EQ(all[1].kind, IMPORT_EXPORT_DEFAULTED);
    EXPECT_EQ(all[1].name, "Light Extinction");
    EXPECT_EQ(all[2].kind, IMPORT_EXPORT_NOT_IMPORTED);
    EXPECT_EQ(all[2].number, 14);
}

TEST(KineticsNotices, TellOfSegmentsOutOfOrder) {
    const Records records = with(legacy_records(), "segment of the parameter values", "2");
    EXPECT_EQ(told(records, segment_parameters),
              (std::vector<Told>{{IMPORT_EXPORT_CONVERTED, 1, "",
                                  line_of(records, "segment of the parameter values")}}));
}

TEST(KineticsNotices, TellOfConstantsWithoutAPlace) {
    // systems 1 and 2 are ammonia and nitrate; there are no solids
    const Records records =
        with_constants({"10 0.1", "17 1", "26 1", "70 1", "70 2", "80 3", "9 5", "3001 1"});
    const auto line = [&](std::size_t i) { return line_of(records, "constant", i); };
    const std::vector<Told> expected = {
        {IMPORT_EXPORT_CONDITION_UNMET, 17,
         "Ammonia Partition Coefficient to Water Column Solids 1 (L/kg", line(1)},
        {IMPORT_EXPORT_NOT_IMPORTED, 26, "", line(2)},
        {IMPORT_EXPORT_REPLACED, 70, "Light Option (1 uses input light;  2 uses calculated diel li",
         line(3)},
        {IMPORT_EXPORT_CONDITION_UNMET, 9, "Light Threshold at Bottom to Inhibit SOD (watts/m2)",
         line(6)},
        {IMPORT_EXPORT_NOT_IMPORTED, 3001, "", line(7)},
        // the fourth on the list: constant 4 gained the column, not 135
        {IMPORT_EXPORT_NOT_IMPORTED, 80, "Benthic Algae D:C Ratio (mg D/mg C)", line(5)},
    };
    EXPECT_EQ(told(records, constants), expected);
    EXPECT_EQ(told(records, constants, true), std::vector<Told>{});
}

TEST(KineticsNotices, TellOfConstantsThatBecomeTimeFunctions) {
    const Records records = with_constants({"70 1", "2 15.5"});
    EXPECT_EQ(told(records, constants), (std::vector<Told>{{IMPORT_EXPORT_CONVERTED, 2, "",
                                                            line_of(records, "constant", 1)}}));
}

TEST(KineticsNotices, TellOfColumnsThatNobodyGives) {
    // solids 1 to 3, of which the file gives the first and the third
    Records records = with_constants({"17 1.5", "23 2.5"});
    std::string flags = "0 0 0";
    for (int system = 4; system <= 28; ++system)
        flags += system >= 21 && system <= 23 ? " 0" : " 1";
    records = with(with(records, "system count", "28"), "bypass flags", flags);
    EXPECT_EQ(told(records, constants), (std::vector<Told>{{IMPORT_EXPORT_DEFAULTED, 34, "", 0}}));
}

TEST(KineticsNotices, TellOfInitialConditionsThatStayBehind) {
    const Records bypassed = with(legacy_records(), "bypass flags", "1 0 1");
    EXPECT_EQ(told(bypassed, initial_conditions),
              (std::vector<Told>{{IMPORT_EXPORT_CONDITION_UNMET, 1, "",
                                  line_of(bypassed, "caption of the system")}}));
    const Records twice = with(legacy_records(), "initial condition", "1 5 6", 1);
    const std::size_t second = line_of(twice, "initial condition", 1);
    EXPECT_EQ(told(twice, initial_conditions),
              (std::vector<Told>{{IMPORT_EXPORT_REPLACED, 1, "", second},
                                 {IMPORT_EXPORT_DEFAULTED, 1, "", second}}));
    // the second system is not in the section
    Records one = with(legacy_records(), "system count", "1", 3);
    one.resize(position_of(one, "caption of the system", 1));
    EXPECT_EQ(told(one, initial_conditions),
              (std::vector<Told>{{IMPORT_EXPORT_DEFAULTED, 2, "", 0}}));
    EXPECT_EQ(told(twice, initial_conditions, true), std::vector<Told>{});
}

// Of segments more than a thousand ahead of the records nobody knows whether they come again.
TEST(KineticsNotices, TellOfSegmentsThatComeAgainWhenTheyAreNotFarAhead) {
    constexpr std::size_t segment_count = 1002;
    const auto replaced = [](std::size_t segment) {
        Records records = with(legacy_records(), "segment count", std::to_string(segment_count), 2);
        records = with(records, "system count", "1", 3);
        records.resize(position_of(records, "initial condition"));
        records.resize(records.size() + segment_count,
                       {"initial condition", std::to_string(segment) + " 1 1"});
        return import_text(text_of(records)).notices_of(IMPORT_EXPORT_REPLACED).size();
    };
    EXPECT_EQ(replaced(1001), segment_count - 1);
    // the first waits; the second one is no longer far ahead, but waits behind it
    EXPECT_EQ(replaced(1002), 0U);
}

TEST(KineticsNotices, SayWhatASegmentNumberMayBe) {
    const Records records = with(legacy_records(), "initial condition", "1900000000 0 0");
    const auto failures = import_text(text_of(records)).notices_of(IMPORT_EXPORT_READ_FAILED);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].field, "segment number");
    EXPECT_EQ(failures[0].expected, "a segment number from 1 to the segment count");
    EXPECT_EQ(failures[0].found, "1900000000");
    EXPECT_EQ(failures[0].reason, "The value is out of range.");
    EXPECT_EQ(failures[0].line, static_cast<std::int64_t>(line_of(records, "initial condition")));
}

// What a record of a bypassed system leaves out, nobody would have got.
TEST(KineticsNotices, NothingIsToldOfItemsLeftOutOfASystemThatStaysBehind) {
    const auto left_out = [](const Records &records) {
        return import_text(text_of(records)).notices_of(IMPORT_EXPORT_DEFAULTED).size();
    };
    Records records = with(legacy_records(), "density of the system", "/", 1);
    records = with(records, "initial condition", "2 /", 3);
    EXPECT_EQ(left_out(records), 3U);
    EXPECT_EQ(left_out(with(records, "bypass flags", "0 1 1")), 0U);
    // and again of the next system
    EXPECT_EQ(left_out(with(records, "bypass flags", "1 0 1")), 3U);
}

TEST(KineticsNotices, TellOfInitialConditionsOfFewerSegments) {
    const Records records = with(legacy_records(), "segment count", "0", 2);
    const std::vector<Told> about = told(records, initial_conditions);
    ASSERT_GE(about.size(), 1U);
    EXPECT_EQ(about[0],
              (Told{IMPORT_EXPORT_DEFAULTED, 0, "", line_of(records, "segment count", 2)}));
    // without a state variable there is nothing to have them
    const Records toxicants = with(records, "header", "    8      2");
    EXPECT_TRUE(import_text(text_of(toxicants)).notices_of(IMPORT_EXPORT_DEFAULTED).empty());
}

} // namespace
} // namespace kova_test
