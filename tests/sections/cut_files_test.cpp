// A file that ends too early, wherever that is: nothing of the section that it breaks off in is
// sent, and everything before it is.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"
#include "tests/support/stopped_import.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kova_test {
namespace {

/// A file, and what an import of it whole sends.
struct Model {
    std::string text;
    ImportSettings settings;
    bool is_current = false;
    std::vector<std::string> log;
};

Model model_of(const Records &records, bool is_current, bool transport_only) {
    Model model;
    model.text = text_of(records);
    model.settings.transport_only = transport_only;
    model.is_current = is_current;
    const ImportRun complete = import_text(model.text, model.settings);
    EXPECT_TRUE(complete.notices_of(IMPORT_EXPORT_READ_FAILED).empty());
    model.log = complete.log;
    return model;
}

/// Imports the file cut to the length: the import is complete, or stops where the file ends, with
/// what `complete` has before. Says whether it was complete.
bool import_cut(const Model &model, const std::vector<std::string> &complete, std::size_t length) {
    const std::string context = "cut behind " + std::to_string(length) + " bytes";
    const ImportRun run =
        import_text(std::string_view(model.text).substr(0, length), model.settings);
    const auto failures = run.notices_of(IMPORT_EXPORT_READ_FAILED);
    if (failures.empty()) {
        EXPECT_TRUE(run.log == complete) << context;
        return true;
    }
    EXPECT_EQ(failures.size(), 1U) << context;
    expect_stopped(complete, run.log, failures[0].section, model.is_current, context);
    EXPECT_TRUE(run.console.back().starts_with("Error Reading Import File at Line: ")) << context;
    return false;
}

/// Imports the file cut behind each byte. Says how many of the imports were complete.
std::size_t import_cut_everywhere(const Model &model) {
    std::size_t complete_count = 0;
    for (std::size_t length = 1; length < model.text.size(); ++length)
        complete_count += import_cut(model, model.log, length) ? 1U : 0U;
    return complete_count;
}

/// What is sent ends in numbers that are none when they are cut short.
Records legacy_model() {
    const Records records = with(legacy_records(), "output interval", "10 2", 1);
    return with(records, "segment geometry", "2 0 1 20 21 22 23 24 25 26 27 28 9", 1);
}

TEST(CutFiles, StopInTheSectionThatTheyBreakOffIn) {
    // without the last line end the file is complete
    EXPECT_EQ(import_cut_everywhere(model_of(legacy_model(), false, false)), 1U);
}

TEST(CutFiles, StopLikewiseWhenOnlyTheTransportIsWanted) {
    EXPECT_EQ(import_cut_everywhere(model_of(legacy_model(), false, true)), 1U);
}

/// The last record of a section whose records are columns: cut short it is a whole record with less
/// in it, and the section behind it meets the end of the file.
bool is_whole_when_cut(const Records &records, std::size_t position) {
    static const std::vector<std::string> names = {"system name", "segment geometry",
                                                   "value of the segment parameter", "constant"};
    const std::string &name = records[position].name;
    return std::find(names.begin(), names.end(), name) != names.end() &&
           (position + 1 == records.size() || records[position + 1].name == "first heading" ||
            records[position + 1].name == "heading of the section");
}

void cut_current_everywhere(bool transport_only) {
    // the interval is sent before the section ends
    const Records records = with(current_records(), "output interval", "2");
    const Model model = model_of(records, true, transport_only);
    // a header cut short is that of another format
    std::size_t start = records[0].text.size() + 1;
    std::size_t complete_count = 0;
    std::size_t whole_count = 0;
    for (std::size_t i = 1; i < records.size(); ++i) {
        const std::size_t size = records[i].text.size();
        for (std::size_t kept = 0; kept <= size; ++kept) {
            const std::size_t length = start + kept;
            std::vector<std::string> complete = model.log;
            // with nothing left there is no record
            if (kept > 0 && kept < size && is_whole_when_cut(records, i)) {
                std::string shorter = model.text;
                complete = import_text(shorter.erase(length, size - kept), model.settings).log;
                ++whole_count;
            }
            complete_count += import_cut(model, complete, length) ? 1U : 0U;
        }
        start += size + 1;
    }
    EXPECT_EQ(start, model.text.size());
    EXPECT_EQ(complete_count, 1U);
    // "DISOX     Dissolved Oxygen", 4 integers and 16 reals of geometry, a value, a constant
    EXPECT_EQ(whole_count, 25U + (4 * 5 + 16 * 15 - 1) + 63U + 55U);
}

TEST(CutFiles, StopInTheCurrentFormatToo) { cut_current_everywhere(false); }

TEST(CutFiles, StopInTheCurrentFormatLikewiseWhenOnlyTheTransportIsWanted) {
    cut_current_everywhere(true);
}

/// Whether the end of the file is no failure of the record, but of the one that is read behind it.
bool may_be_missing(const Records &records, std::size_t position) {
    static const std::vector<std::string> names = {
        "caption of the segment geometry", "description of the exchange function",
        "caption of the system", "caption of the initial conditions"};
    const std::string &name = records[position].name;
    // of the two fields in the flow paths alone
    if (name == "caption of the flow field")
        return position <= position_of(records, "caption of the flow field", 1);
    return (name == "title" && position == 1) ||
           std::find(names.begin(), names.end(), name) != names.end();
}

TEST(CutFiles, AreReportedByTheRecordThatMeetsTheirEnd) {
    for (const bool is_current : {false, true}) {
        const Records records = is_current ? current_records() : legacy_records();
        for (std::size_t kept = 1; kept < records.size(); ++kept) {
            std::size_t failing = kept;
            while (may_be_missing(records, failing))
                ++failing;
            const auto end = records.begin() + static_cast<std::ptrdiff_t>(kept);
            const ImportRun run = import_text(text_of({records.begin(), end}));
            const auto failures = run.notices_of(IMPORT_EXPORT_READ_FAILED);
            ASSERT_EQ(failures.size(), 1U) << kept;
            EXPECT_EQ(failures[0].statement, records[failing].name) << kept;
            EXPECT_EQ(failures[0].line, static_cast<std::int64_t>(kept));
            // every statement has counted, and the counter stands one further than the last
            EXPECT_EQ(failures[0].statement_number, static_cast<std::int64_t>(failing + 2)) << kept;
            EXPECT_EQ(run.console.back(),
                      "Error Reading Import File at Line: " + std::to_string(failing + 2))
                << kept;
        }
    }
}

} // namespace
} // namespace kova_test
