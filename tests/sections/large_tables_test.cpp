// Fields, functions and systems have as much as their file gives them.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

TEST(LargeTables, AFlowFieldHasAsManyFunctionsAndPairsAsItsFile) {
    constexpr int count = 3001;
    std::string section = "0\n2\nSurface water\n" + std::to_string(count);
    for (int function = 1; function < count; ++function)
        section += "\nF" + std::to_string(function) + "\n0";
    section += "\nF" + std::to_string(count) + "\n" + std::to_string(count);
    for (int pair = 1; pair <= count; ++pair)
        section += "\n" + std::to_string(pair) + " 2 " + std::to_string(pair) + ".5";
    section += "\nPore water\n1\nUpwelling\n1\n2 1 1";
    const Records records = with_section(legacy_records(), "flow option", 0, "flow-field count", 1,
                                         {{"flow option", section}});
    const ImportRun run = import_text(text_of(records));
    EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
    const Lines functions = run.arguments_of("PNOQS");
    ASSERT_EQ(functions.size(), count + 1U);
    EXPECT_EQ(functions[count - 1], "int 1, int 3001, int 3001");
    EXPECT_EQ(functions[count], "int 2, int 1, int 1");
    EXPECT_EQ(run.arguments_of("PFLOWFUNCDESC").at(count - 1),
              "int 1, int 3001, text[30] \"F3001\" 25*\" \"");
    const Lines segments = run.arguments_of("PJQ");
    ASSERT_EQ(segments.size(), count + 1U);
    EXPECT_EQ(segments[count - 1], "int 1, int 3001, int 3001, int 3001");
    EXPECT_EQ(run.arguments_of("PBQ").at(count - 1), "int 1, int 3001, int 3001, real 3001.5");
}

TEST(LargeTables, AFlowFunctionHasAsManyBreakpointsAsItsFile) {
    constexpr int count = 30001;
    Records records =
        with(legacy_records(), "breakpoint count of the flow function", std::to_string(count), 1);
    std::string breakpoints = "1 0";
    for (int i = 2; i <= count; ++i)
        breakpoints += "\n" + std::to_string(i) + " 0";
    records = with(records, "breakpoint of the flow function", breakpoints, 2);
    const ImportRun run = import_text(text_of(records));
    EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
    const Lines sent = run.arguments_of("PNOQFUNC");
    ASSERT_EQ(sent.size(), 2U + count);
    EXPECT_EQ(sent.back(), "int 1, int 2, int 30001, real 30001, real 0");
}

TEST(LargeTables, AnExchangeFieldHasAsManyFunctionsPairsAndBreakpointsAsItsFile) {
    constexpr int function_count = 101;
    constexpr int pair_count = 11; // of two segments
    constexpr int breakpoint_count = 1001;
    std::string section = "1\nSurface\n" + std::to_string(function_count) + "\n1 1";
    for (int function = 1; function < function_count; ++function)
        section += "\nE" + std::to_string(function) + "\n0\n0";
    section += "\nLast\n" + std::to_string(pair_count);
    for (int pair = 1; pair <= pair_count; ++pair)
        section += "\n1 2 0.5 " + std::to_string(pair);
    section += "\n" + std::to_string(breakpoint_count);
    for (int breakpoint = 1; breakpoint <= breakpoint_count; ++breakpoint)
        section += "\n" + std::to_string(breakpoint) + " 0.5";
    const Records records = with_section(legacy_records(), "exchange-field count", 0,
                                         "system count", 1, {{"exchange-field count", section}});
    const ImportRun run = import_text(text_of(records));
    EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
    EXPECT_EQ(run.arguments_of("PNORS").size(), static_cast<std::size_t>(function_count));
    const Lines lengths = run.arguments_of("PLENGTH");
    ASSERT_EQ(lengths.size(), static_cast<std::size_t>(pair_count));
    EXPECT_EQ(lengths.back(), "int 1, int 101, int 11, real 11");
    const Lines breakpoints = run.arguments_of("PNORFUNC");
    ASSERT_EQ(breakpoints.size(), static_cast<std::size_t>(breakpoint_count));
    EXPECT_EQ(breakpoints.back(), "int 1, int 101, int 1001, real 1001, real 0.5");
}

TEST(LargeTables, ASystemHasAsManyBoundariesAndLoadsAsItsFile) {
    constexpr int count = 9000;
    Records records = with(legacy_records(), "boundary count", std::to_string(2 + count));
    records = with(records, "load count", std::to_string(1 + count));
    std::string boundaries;
    std::string loads;
    for (int i = 1; i <= count; ++i) {
        boundaries += "\n" + std::to_string(i) + "\n0";
        loads += "\n" + std::to_string(i + 2) + "\n0";
    }
    Record &last_boundary = records[position_of(records, "breakpoint of the boundary", 2)];
    last_boundary.text += boundaries;
    Record &last_load = records[position_of(records, "breakpoint of the load", 1)];
    last_load.text += loads;
    const ImportRun run = import_text(text_of(records));
    EXPECT_TRUE(run.notices_of(IMPORT_EXPORT_READ_FAILED).empty());
    const Lines segments = run.arguments_of("PIBC");
    ASSERT_EQ(segments.size(), 2U + count);
    EXPECT_EQ(segments.back(), "int 1, int 9002, int 9000");
    const Lines series = run.arguments_of("PNBWK");
    ASSERT_EQ(series.size(), 2U + count);
    EXPECT_EQ(series.at(count), "int 1, int 9002, int 0");
}

} // namespace
} // namespace kova_test
