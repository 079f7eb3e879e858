// The golden cases with the library's objects inside the test; golden_run.cpp imports them through
// the library.

#include "tests/golden/golden_cases.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace kova_test {
namespace {

const std::filesystem::path cases_folder = KOVA_GOLDEN_CASES;

TEST(GoldenCases, EveryFileBelongsToAnInput) {
    EXPECT_TRUE(stray_golden_files(cases_folder).empty())
        << stray_golden_files(cases_folder).front();
}

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, LogAndConsoleAreAsWorkedOut) {
    EXPECT_EQ(golden_difference(cases_folder, GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Cases, Golden, testing::ValuesIn(golden_case_names(cases_folder)),
                         [](const auto &information) { return information.param; });

} // namespace
} // namespace kova_test
