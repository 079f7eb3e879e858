#include "tests/golden/golden_cases.h"

#include "tests/support/import_run.h"
#include "tests/support/temporary_file.h"

#include <algorithm>
#include <string_view>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

/// The lines of an expected log: without comments and empty lines, with included files in their
/// place.
Lines expected_log(const std::filesystem::path &folder, const std::filesystem::path &path) {
    constexpr std::string_view include = "@include ";
    Lines expected;
    for (const std::string &line : lines_of(read_file(path))) {
        if (line.empty() || line.starts_with('#'))
            continue;
        if (!line.starts_with(include)) {
            expected.push_back(line);
            continue;
        }
        const Lines part = expected_log(folder, folder / line.substr(include.size()));
        expected.insert(expected.end(), part.begin(), part.end());
    }
    return expected;
}

/// The first difference, which tells more than two logs of hundreds of lines.
std::string difference(const std::string &what, const Lines &expected, const Lines &actual) {
    const auto [e, a] =
        std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    if (e == expected.end() && a == actual.end())
        return "";
    return what + ", line " + std::to_string(e - expected.begin() + 1) +
           "\nexpected: " + (e == expected.end() ? "(end)" : *e) +
           "\n     got: " + (a == actual.end() ? "(end)" : *a);
}

} // namespace

std::vector<std::string> golden_case_names(const std::filesystem::path &folder) {
    Lines names;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".inp")
            names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> stray_golden_files(const std::filesystem::path &folder) {
    Lines strays;
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".log" && extension != ".options" && extension != ".console")
            continue;
        std::filesystem::path input = entry.path();
        if (!std::filesystem::exists(input.replace_extension(".inp")))
            strays.push_back(entry.path().filename().string());
    }
    return strays;
}

std::string golden_difference(const std::filesystem::path &folder, const std::string &name) {
    const auto file = [&](const char *extension) { return folder / (name + extension); };
    clear_send_buffers();
    const ImportRun run = import_text(read_file(file(".inp")), settings_of(file(".options")));
    if (std::string log = difference("log", expected_log(folder, file(".log")), run.log);
        !log.empty())
        return log;
    const Lines console =
        std::filesystem::exists(file(".console")) ? lines_of(read_file(file(".console"))) : Lines{};
    return difference("console", console, run.console);
}

} // namespace kova_test
