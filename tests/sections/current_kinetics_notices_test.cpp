// What a person is told of time functions, segment parameters, constants and initial conditions of
// the current format that do not come across, or come across changed.

#include "tests/sections/kinetics_notices.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kova_test {
namespace {

TEST(CurrentKineticsNotices, NothingIsToldOfAModelThatComesAcross) {
    for (const char *header : {"   11      3", "    8      3"}) {
        const Records records = with(current_records(), "header", header);
        for (std::int32_t section = time_functions; section <= initial_conditions; ++section) {
            EXPECT_EQ(told(records, section), std::vector<Told>{}) << section;
            EXPECT_EQ(told(records, section, true), std::vector<Told>{}) << section;
        }
    }
}

TEST(CurrentKineticsNotices, TellOfTimeFunctionsWhoseNumberComesAgain) {
    Records records = with(current_records(), "time-function count", "5");
    const auto end = static_cast<std::ptrdiff_t>(position_of(records, "heading of the section", 6));
    const Records more = {
        {"number of the time function", "13"}, {"breakpoint count of the time function", "0"},
        {"number of the time function", "4"},  {"breakpoint count of the time function", "0"},
        {"number of the time function", "13"}, {"breakpoint count of the time function", "0"},
    };
    records.insert(records.begin() + end, more.begin(), more.end());
    // one for each that is replaced, neighbours first: there is 4, 13, 13, 4, 13
    const std::size_t count_line = line_of(records, "time-function count");
    EXPECT_EQ(told(records, time_functions), (std::vector<Told>{
                                                 {IMPORT_EXPORT_REPLACED, 13, "", count_line},
                                                 {IMPORT_EXPORT_REPLACED, 4, "", count_line},
                                                 {IMPORT_EXPORT_REPLACED, 13, "", count_line},
                                             }));
    EXPECT_EQ(told(records, time_functions, true), std::vector<Told>{});
}

TEST(CurrentKineticsNotices, TellOfConstantsWhoseNumberAndColumnComeAgain) {
    const auto with_second = [](const std::string &second) {
        return with(current_records(), "constant", second, 1);
    };
    EXPECT_EQ(told(with_second(constant(27, 2, "3")), constants), std::vector<Told>{});
    EXPECT_EQ(told(with_second(constant(28, 1, "3")), constants), std::vector<Told>{});
    const Records twice = with_second(constant(27, 1, "3"));
    EXPECT_EQ(told(twice, constants), (std::vector<Told>{{IMPORT_EXPORT_REPLACED, 27, "",
                                                          line_of(twice, "constant count")}}));
    EXPECT_EQ(told(twice, constants, true), std::vector<Told>{});
}

TEST(CurrentKineticsNotices, TellOfConstantsThatComeAgainFarFromEachOther) {
    Records records = with(current_records(), "constant count", "4");
    const std::size_t last = position_of(records, "constant", 1);
    // 27 in column 1 and 64 in column 2 are there; each comes again, behind the other
    const Records more = {{"constant", constant(27, 1, "1")}, {"constant", constant(64, 2, "1")}};
    records.insert(records.begin() + static_cast<std::ptrdiff_t>(last) + 1, more.begin(),
                   more.end());
    const std::size_t count_line = line_of(records, "constant count");
    EXPECT_EQ(told(records, constants),
              (std::vector<Told>{{IMPORT_EXPORT_REPLACED, 27, "", count_line},
                                 {IMPORT_EXPORT_REPLACED, 64, "", count_line}}));
}

TEST(CurrentKineticsNotices, TellOfEachBlankConstantButTheLast) {
    Records records = with(current_records(), "constant count", "1002");
    const auto behind = static_cast<std::ptrdiff_t>(position_of(records, "constant", 1)) + 1;
    records.insert(records.begin() + behind, 1000, {"constant", std::string(56, ' ')});
    const std::vector<Told> all = told(records, constants);
    ASSERT_EQ(all.size(), 999U);
    const Told replaced = {IMPORT_EXPORT_REPLACED, 0, "", line_of(records, "constant count")};
    for (const Told &each : all)
        EXPECT_EQ(each, replaced);
}

TEST(CurrentKineticsNotices, TellOfValuesThatBearAnotherNumberOrClass) {
    const auto value_line = [](std::size_t i) {
        return line_of(current_records(), "value of the segment parameter", i);
    };
    const std::string other_class = parameter_value(14, 2, "1");
    Records records = with(current_records(), "value of the segment parameter", other_class, 1);
    // the second segment bears what the list does, which is another again
    EXPECT_EQ(told(records, segment_parameters),
              (std::vector<Told>{{IMPORT_EXPORT_CONVERTED, 14, "", value_line(1)},
                                 {IMPORT_EXPORT_CONVERTED, 14, "", value_line(3)}}));
    EXPECT_EQ(told(records, segment_parameters, true), std::vector<Told>{});
    records =
        with(current_records(), "value of the segment parameter", parameter_value(77, 1, "1"), 2);
    EXPECT_EQ(told(records, segment_parameters),
              (std::vector<Told>{{IMPORT_EXPORT_CONVERTED, 77, "", value_line(2)}}));
    // blank columns are a number, too
    records = with(current_records(), "value of the segment parameter", std::string(64, ' '), 2);
    EXPECT_EQ(told(records, segment_parameters),
              (std::vector<Told>{{IMPORT_EXPORT_CONVERTED, 0, "", value_line(2)}}));
}

TEST(CurrentKineticsNotices, TellOfParametersWhoseNumberAndClassComeAgain) {
    const auto with_second = [](const std::string &second, const std::string &value) {
        Records records = with(current_records(), "segment parameter", second, 1);
        records = with(records, "value of the segment parameter", value, 1);
        return with(records, "value of the segment parameter", value, 3);
    };
    const Records other_class =
        with_second(listed_parameter(2, 2, "1"), parameter_value(2, 2, "1"));
    EXPECT_EQ(told(other_class, segment_parameters), std::vector<Told>{});
    const Records twice = with_second(listed_parameter(2, 1, "1"), parameter_value(2, 1, "1"));
    EXPECT_EQ(told(twice, segment_parameters),
              (std::vector<Told>{
                  {IMPORT_EXPORT_REPLACED, 2, "", line_of(twice, "segment-parameter count")}}));
    EXPECT_EQ(told(twice, segment_parameters, true), std::vector<Told>{});
}

TEST(CurrentKineticsNotices, TellOfInitialConditionsOfFewerSystemsOrSegments) {
    for (const char *fewer : {"1", "0", "-1"}) {
        const Records systems = with(current_records(), "system count", fewer, 3);
        std::vector<Told> about = told(systems, initial_conditions);
        ASSERT_EQ(about.size(), 1U) << fewer;
        EXPECT_EQ(about[0],
                  (Told{IMPORT_EXPORT_DEFAULTED, 0, "", line_of(systems, "system count", 3)}));
        EXPECT_EQ(told(systems, initial_conditions, true), std::vector<Told>{});
    }
    const Records segments = with(current_records(), "segment count", "0", 2);
    const std::vector<Told> about = told(segments, initial_conditions);
    ASSERT_GE(about.size(), 1U);
    EXPECT_EQ(about[0],
              (Told{IMPORT_EXPORT_DEFAULTED, 0, "", line_of(segments, "segment count", 2)}));
}

// The counts of loads and segment parameters, which sections share, are not those of the host.
TEST(CurrentKineticsNotices, CompareInitialConditionsWithTheModelOfTheHost) {
    const auto between = [](ImportSettings &settings, std::int32_t systems, std::int32_t segments) {
        settings.before = [=](const kova_host::ReceivedCommand &command) {
            if (command.keyword != "PCONSTANTSREFRESH")
                return;
            IMPORT_EXPORT.system_count = systems;
            IMPORT_EXPORT.segment_count = segments;
        };
    };
    ImportSettings settings;
    between(settings, 3, 5);
    EXPECT_EQ(told_of(import_text(text_of(current_records()), settings), initial_conditions),
              std::vector<Told>{});
    between(settings, 1, 1);
    Records records = with(current_records(), "system count", "1", 3);
    EXPECT_EQ(told_of(import_text(text_of(records), settings), initial_conditions).size(), 1U);
}

TEST(CurrentKineticsNotices, TellOfValueRecordsOfOtherSegments) {
    for (const char *number : {"1", "-2", "2000000000"}) {
        const Records records =
            with(current_records(), "segment of the parameter values", number, 1);
        EXPECT_EQ(told(records, segment_parameters),
                  (std::vector<Told>{{IMPORT_EXPORT_CONVERTED, 2, "",
                                      line_of(records, "segment of the parameter values", 1)}}))
            << number;
        EXPECT_EQ(told(records, segment_parameters, true), std::vector<Told>{});
    }
    const Records none = with(current_records(), "segment of the parameter values", "0");
    EXPECT_EQ(told(none, segment_parameters), std::vector<Told>{}) << "which contradicts nothing";
}

TEST(CurrentKineticsNotices, TellOfMaximumConcentrationsThatAreNotSent) {
    const Records records =
        with(current_records(), "maximum concentration of the system", "0.001", 1);
    EXPECT_EQ(told(records, initial_conditions),
              (std::vector<Told>{{IMPORT_EXPORT_NOT_IMPORTED, 2, "",
                                  line_of(records, "maximum concentration of the system", 1)}}));
    EXPECT_EQ(told(records, initial_conditions, true), std::vector<Told>{});
    EXPECT_EQ(import_text(text_of(records)).arguments_of("PCMAX"),
              (std::vector<std::string>{"int 1, real 0", "int 2, real 0"}));
}

TEST(CurrentKineticsNotices, TellOfInitialConditionsThatReplaceOthers) {
    const Records records = with(current_records(), "initial condition", "1 5 6", 3);
    const std::size_t second = line_of(records, "initial condition", 3);
    EXPECT_EQ(told(records, initial_conditions),
              (std::vector<Told>{{IMPORT_EXPORT_REPLACED, 1, "", second},
                                 {IMPORT_EXPORT_DEFAULTED, 2, "", second}}));
    EXPECT_EQ(told(records, initial_conditions, true), std::vector<Told>{});
}

TEST(CurrentKineticsNotices, SayWhatASegmentNumberMayBe) {
    for (const char *number : {"0", "-1", "3", "2000000000", "/"}) {
        const Records records =
            with(current_records(), "initial condition", std::string(number) + " 0 0", 2);
        const auto failures = import_text(text_of(records)).notices_of(IMPORT_EXPORT_READ_FAILED);
        ASSERT_EQ(failures.size(), 1U) << number;
        EXPECT_EQ(failures[0].section, initial_conditions);
        EXPECT_EQ(failures[0].field, "segment number");
        EXPECT_EQ(failures[0].expected, "a segment number from 1 to the segment count");
        EXPECT_EQ(failures[0].line,
                  static_cast<std::int64_t>(line_of(records, "initial condition", 2)));
    }
}

TEST(CurrentKineticsNotices, TellOfValuesThatARecordLeavesOut) {
    Records records = with(current_records(), "breakpoint of the time function", "/", 2);
    records = with(records, "constant", "number    27");
    records = with(records, "density of the system", "/");
    const std::size_t breakpoint = line_of(records, "breakpoint of the time function", 2);
    EXPECT_EQ(told(records, time_functions),
              (std::vector<Told>{{IMPORT_EXPORT_DEFAULTED, 0, "", breakpoint},
                                 {IMPORT_EXPORT_DEFAULTED, 0, "", breakpoint}}));
    const std::size_t constant_line = line_of(records, "constant");
    EXPECT_EQ(told(records, constants),
              (std::vector<Told>{{IMPORT_EXPORT_DEFAULTED, 0, "", constant_line},
                                 {IMPORT_EXPORT_DEFAULTED, 0, "", constant_line}}));
    EXPECT_EQ(told(records, initial_conditions),
              (std::vector<Told>{
                  {IMPORT_EXPORT_DEFAULTED, 0, "", line_of(records, "density of the system")}}));
    for (const std::int32_t section : {time_functions, constants, initial_conditions})
        EXPECT_EQ(told(records, section, true), std::vector<Told>{}) << section;
}

} // namespace
} // namespace kova_test
