#include "tests/support/stopped_import.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace kova_test {

namespace {

using Lines = std::vector<std::string>;

constexpr std::array section_percentages = {0, 5, 10, 20, 30, 40, 50, 60, 70, 80, 85};
constexpr std::size_t flow_path_section = 3;
constexpr std::size_t boundary_section = 6;

std::string progress_line(int percentage) {
    return "1 PPROGRESS[10] int " + std::to_string(percentage);
}

std::string_view keyword_of(std::string_view line) {
    const std::size_t start = line.find(' ') + 1;
    return line.substr(start, line.find('[') - start);
}

/// Position behind the command with which the driver starts the section.
std::size_t start_of(const Lines &log, std::size_t section) {
    auto place = log.begin();
    for (std::size_t i = 0; i < section; ++i)
        place = std::find(place, log.end(), progress_line(section_percentages[i])) + 1;
    return static_cast<std::size_t>(place - log.begin());
}

/// What the driver sends behind a section that fails.
Lines end_behind(const Lines &complete, std::size_t section) {
    Lines end;
    for (std::size_t i = section; i < section_percentages.size(); ++i)
        end.push_back(progress_line(section_percentages[i]));
    const auto last = std::find(complete.rbegin(), complete.rend(), progress_line(100));
    end.insert(end.end(), last.base() - 1, complete.end());
    return end;
}

Lines report_of(std::size_t section, bool is_current) {
    return is_current && section != flow_path_section ? Lines{"GSPRINTFI", "PINFOHTML", "PINFOHTML"}
                                                      : Lines{};
}

bool may_come_while_reading(std::string_view keyword, std::size_t section) {
    if (section == boundary_section)
        return keyword == "PPROGRESS";
    return section == 1 &&
           (keyword == "PINFOHTML" || keyword == "GSPRINTFI" || keyword == "GSPRINTFR");
}

Lines part(const Lines &lines, std::size_t first, std::size_t last) {
    return {lines.begin() + static_cast<std::ptrdiff_t>(first),
            lines.begin() + static_cast<std::ptrdiff_t>(last)};
}

/// Shows the first difference, which tells more than two logs.
void expect_same(const Lines &expected, const Lines &actual) {
    const auto [e, a] =
        std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    if (e != expected.end() || a != actual.end())
        ADD_FAILURE() << "command " << e - expected.begin() + 1
                      << "\nexpected: " << (e == expected.end() ? "(end)" : *e)
                      << "\n     got: " << (a == actual.end() ? "(end)" : *a);
}

} // namespace

void expect_end(const Lines &complete, const Lines &stopped, std::size_t sent, int section,
                bool is_current) {
    const auto number = static_cast<std::size_t>(section);
    const Lines report = report_of(number, is_current);
    ASSERT_GE(stopped.size(), sent + report.size());
    for (std::size_t i = 0; i < report.size(); ++i)
        EXPECT_EQ(keyword_of(stopped[sent + i]), report[i]);
    expect_same(end_behind(complete, number), part(stopped, sent + report.size(), stopped.size()));
}

void expect_stopped(const Lines &complete, const Lines &stopped, int section, bool is_current,
                    const std::string &context) {
    SCOPED_TRACE(context);
    ASSERT_GE(section, 1);
    const auto number = static_cast<std::size_t>(section);
    const std::size_t behind =
        report_of(number, is_current).size() + end_behind(complete, number).size();
    const std::size_t start = start_of(complete, number);
    ASSERT_GE(stopped.size(), start + behind);
    const std::size_t sent = stopped.size() - behind;
    expect_same(part(complete, 0, std::min(sent, complete.size())), part(stopped, 0, sent));
    for (std::size_t i = start; i < sent; ++i)
        EXPECT_TRUE(may_come_while_reading(keyword_of(stopped[i]), number)) << stopped[i];
    expect_end(complete, stopped, sent, section, is_current);
}

} // namespace kova_test
