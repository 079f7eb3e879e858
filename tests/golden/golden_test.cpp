// Whole imports of small files, compared with logs that were worked out by hand: see
// cases/README.md.

#include "tests/support/import_run.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

const std::filesystem::path cases_folder = KOVA_GOLDEN_CASES;

/// The lines of an expected log: without comments and empty lines, with included files in their
/// place.
Lines expected_log(const std::filesystem::path &path) {
    constexpr std::string_view include = "@include ";
    Lines expected;
    for (const std::string &line : lines_of(read_file(path))) {
        if (line.empty() || line.starts_with('#'))
            continue;
        if (!line.starts_with(include)) {
            expected.push_back(line);
            continue;
        }
        const Lines part = expected_log(cases_folder / line.substr(include.size()));
        expected.insert(expected.end(), part.begin(), part.end());
    }
    return expected;
}

/// The first difference, which tells more than two logs of hundreds of lines.
std::string difference(const Lines &expected, const Lines &actual) {
    const auto [e, a] =
        std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    if (e == expected.end() && a == actual.end())
        return "";
    return "line " + std::to_string(e - expected.begin() + 1) +
           "\nexpected: " + (e == expected.end() ? "(end)" : *e) +
           "\n     got: " + (a == actual.end() ? "(end)" : *a);
}

Lines case_names() {
    Lines names;
    for (const auto &entry : std::filesystem::directory_iterator(cases_folder))
        if (entry.path().extension() == ".inp")
            names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(GoldenCases, EveryFileBelongsToAnInput) {
    for (const auto &entry : std::filesystem::directory_iterator(cases_folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".log" && extension != ".options" && extension != ".console")
            continue;
        std::filesystem::path input = entry.path();
        EXPECT_TRUE(std::filesystem::exists(input.replace_extension(".inp"))) << entry.path();
    }
}

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, LogAndConsoleAreAsWorkedOut) {
    const std::filesystem::path base = cases_folder / GetParam();
    const auto file = [&base](const char *extension) {
        return std::filesystem::path(base.string() + extension);
    };
    clear_send_buffers();
    const ImportRun run = import_text(read_file(file(".inp")), settings_of(file(".options")));
    EXPECT_EQ(difference(expected_log(file(".log")), run.log), "");
    const Lines console =
        std::filesystem::exists(file(".console")) ? lines_of(read_file(file(".console"))) : Lines{};
    EXPECT_EQ(difference(console, run.console), "");
}

INSTANTIATE_TEST_SUITE_P(Cases, Golden, testing::ValuesIn(case_names()),
                         [](const auto &information) { return information.param; });

} // namespace
} // namespace kova_test
