#include "host/reference_host.h"
#include "tests/support/import_run.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

std::string fragment(const std::string &text) {
    return "1 PINFOHTML[10] text[" + std::to_string(text.size() + 1) + "] \"" + text + "\\0\"";
}

// The log escapes quotes; lengths count what travels.
std::string html(const std::string &text) {
    std::string escaped;
    for (const char character : text)
        escaped += (character == '"' ? "\\" : "") + std::string(1, character);
    return "1 PINFOHTML[10] text[" + std::to_string(text.size() + 1) + "] \"" + escaped + "\\0\"";
}

Lines version_page() {
    const std::string separator =
        html("</td></tr><tr style=\"font-weight: bold;\" align=\"Left\"><td>");
    const std::string start = "1 PINFOHTML[10] text[31] \"";
    return {
        html("<center><body><table style=\"text-align: left; width: 332px; height: 284px;\""),
        html("border=\"1\" cellpadding=\"2\" cellspacing=\"2\"><tbody>"),
        html("<tr style=\"font-weight: bold; color: white;\"align=\"center\">"),
        html("<td style=\"background-color: blue;\">"),
        fragment("KOVA Import Utility Version Information</td></tr>"),
        html("<tr style=\"font-weight: bold;\" align=\"Left\"><td>"),
        start + "ORVEN -- KOVA Version 8.4.3   \\0\"",
        separator,
        start + "Model sha: <stamped>\"",
        fragment("</td></tr>"),
        html("<tr style=\"font-weight: bold;\" align=\"Left\"><td>"),
        "1 PINFOHTML[10] text[51] \"Built on: <stamped>\"",
        separator,
        start + "Model branch: <stamped>\"",
        separator,
        start + "Gui sha: <stamped>\"",
        separator,
        start + "Gui branch: <stamped>\"",
        separator,
        start + "Platform: <stamped>\"",
        separator,
        start + "Architecture: <stamped>\"",
        separator,
        start + "Build type: <stamped>\"",
        fragment("</td></tr></tbody></table><br></body></Center>"),
    };
}

TEST(InformationPages, VersionAloneAddsThePage) {
    const ImportRun run = run_routine(version);
    EXPECT_EQ(run.log, version_page());
}

TEST(InformationPages, TellTheTimeAtWhichTheLibraryWasBuilt) {
    kova_host::ReferenceHost host;
    {
        const kova_host::Connection connection = host.connect();
        version();
    }
    std::string line;
    for (const std::string &fragment : host.pane().fragments)
        if (fragment.starts_with("Built on: "))
            line = fragment;
    EXPECT_EQ(line.size(), 51U);
    const std::regex form("Built on: [A-Z][a-z]{2}, [0-9]{2} [A-Z][a-z]{2} [0-9]{4} "
                          "[0-9]{2}:[0-9]{2}:[0-9]{2} [+-][0-9]{4} {9}");
    EXPECT_TRUE(line.ends_with('\0') && std::regex_match(line.substr(0, 50), form)) << line;
}

TEST(InformationPages, OnlyIntroClearsThePaneFirst) {
    Lines expected = {"0 PCLEARINFO[11]"};
    const Lines page = version_page();
    expected.insert(expected.end(), page.begin(), page.end());
    EXPECT_EQ(run_routine(intro).log, expected);
}

TEST(InformationPages, HaveOneHeaderRowAndNineRowsOfData) {
    std::size_t rows = 0;
    for (const std::string &line : run_routine(version).log)
        for (std::size_t at = line.find("<tr "); at != std::string::npos;
             at = line.find("<tr ", at + 1))
            ++rows;
    EXPECT_EQ(rows, 10U);
}

} // namespace
} // namespace kova_test
