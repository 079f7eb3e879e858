#include "control/information_pages.h"
#include "host/reference_host.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kova_test {
namespace {

/// A line of the page as it travels: its whole field and a NUL.
std::string field(std::string_view text, std::size_t width) {
    std::string line(text);
    line.resize(width, ' ');
    return line + '\0';
}

TEST(VersionPage, ShowsEachValueBehindItsOwnLabel) {
    kova_host::ReferenceHost host;
    {
        const kova_host::Connection connection = host.connect();
        kova_import::send_version_page();
    }
    std::vector<std::string> lines;
    for (const std::string &fragment : host.pane().fragments)
        if (!fragment.starts_with('<') && !fragment.starts_with("border=") &&
            !fragment.starts_with("KOVA Import Utility"))
            lines.push_back(fragment);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         field("ORVEN -- KOVA Version 8.4.3", 30),
                         field("Model sha: 0a1b2c", 30),
                         field("Built on: Sat, 01 Feb 2003 04:05:06 +0700", 50),
                         field("Model branch: a\"b\\c", 30),
                         field("Gui sha: 3d4e5f", 30),
                         field("Gui branch: of-the-interface", 30),
                         field("Platform: Water", 30),
                         field("Architecture: 128", 30),
                         field("Build type: Careful", 30),
                     }));
}

} // namespace
} // namespace kova_test
