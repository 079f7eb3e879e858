// A file that ends too early, wherever that is: nothing of the section that it breaks off in is
// sent, and everything before it is.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"
#include "tests/support/stopped_import.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace kova_test {
namespace {

using Lengths = std::vector<std::size_t>;

/// Imports the file cut to each of the lengths: each import is complete, or stops where the file
/// ends. Says how many were complete.
std::size_t import_cut(const std::string &text, const Lengths &lengths, bool reports_to_pane,
                       const ImportSettings &settings = {}) {
    const ImportRun complete = import_text(text, settings);
    EXPECT_TRUE(complete.notices_of(IMPORT_EXPORT_READ_FAILED).empty());
    std::size_t complete_count = 0;
    for (const std::size_t length : lengths) {
        const std::string context = "cut behind " + std::to_string(length) + " bytes";
        const ImportRun run = import_text(std::string_view(text).substr(0, length), settings);
        const auto failures = run.notices_of(IMPORT_EXPORT_READ_FAILED);
        if (failures.empty()) {
            EXPECT_TRUE(run.log == complete.log) << context;
            ++complete_count;
            continue;
        }
        EXPECT_EQ(failures.size(), 1U) << context;
        expect_stopped(complete.log, run.log, failures[0].section, reports_to_pane, context);
        EXPECT_TRUE(run.console.back().starts_with("Error Reading Import File at Line: "))
            << context;
    }
    return complete_count;
}

/// What is sent ends in numbers that are none when they are cut short.
Records legacy_model() {
    const Records records = with(legacy_records(), "output interval", "10 2", 1);
    return with(records, "segment geometry", "2 0 1 20 21 22 23 24 25 26 27 28 9", 1);
}

Lengths every_byte(const std::string &text) {
    Lengths lengths(text.size() - 1);
    std::iota(lengths.begin(), lengths.end(), 1U);
    return lengths;
}

TEST(CutFiles, StopInTheSectionThatTheyBreakOffIn) {
    const std::string text = text_of(legacy_model());
    // without the last line end the file is complete
    EXPECT_EQ(import_cut(text, every_byte(text), false), 1U);
}

TEST(CutFiles, StopLikewiseWhenOnlyTheTransportIsWanted) {
    ImportSettings settings;
    settings.transport_only = true;
    const std::string text = text_of(legacy_model());
    EXPECT_EQ(import_cut(text, every_byte(text), false, settings), 1U);
}

// Names in columns are names wherever they are cut, so that whole lines are taken away here.
TEST(CutFiles, StopInTheCurrentFormatToo) {
    const std::string text = text_of(current_records());
    Lengths lengths;
    for (std::size_t i = text.find('\n'); i + 1 < text.size(); i = text.find('\n', i + 1))
        lengths.push_back(i + 1);
    EXPECT_EQ(import_cut(text, lengths, true), 0U);
}

} // namespace
} // namespace kova_test
