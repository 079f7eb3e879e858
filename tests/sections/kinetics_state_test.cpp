// What time functions, segment parameters, constants and initial conditions leave behind, and what
// a host may do meanwhile.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

TEST(KineticsState, TimeFunctionsLeaveFlagsUntilTheNextImport) {
    const Records solar = with(legacy_records(), "number of the time function", "5");
    const Records both = with(solar, "number of the time function", "10", 1);
    static_cast<void>(import_text(text_of(both)));
    EXPECT_EQ(IMPORT_EXPORT.tf5_present, 1);
    EXPECT_EQ(IMPORT_EXPORT.tf10_present, 1);
    static_cast<void>(import_text(text_of(solar)));
    EXPECT_EQ(IMPORT_EXPORT.tf5_present, 1);
    EXPECT_EQ(IMPORT_EXPORT.tf10_present, 0);
    ImportSettings transport;
    transport.transport_only = true;
    static_cast<void>(import_text(text_of(both), transport));
    EXPECT_EQ(IMPORT_EXPORT.tf5_present, 0);
    EXPECT_EQ(IMPORT_EXPORT.tf10_present, 0);
    static_cast<void>(import_text(text_of(with(both, "header", "    8      2"))));
    EXPECT_EQ(IMPORT_EXPORT.tf10_present, 0);
}

TEST(KineticsState, TheLastSectionsReplaceTheSharedCounts) {
    static_cast<void>(import_text(text_of(legacy_records())));
    EXPECT_EQ(IMPORT_EXPORT.system_count, 2);
    EXPECT_EQ(IMPORT_EXPORT.segment_count, 2);
    // they stay when the section fails behind them
    const Records failing =
        with(with(legacy_records(), "system count", "7", 3), "segment count", "9", 2);
    static_cast<void>(import_text(text_of(with(failing, "density of the system", "x"))));
    EXPECT_EQ(IMPORT_EXPORT.import_error, 1);
    EXPECT_EQ(IMPORT_EXPORT.system_count, 7);
    EXPECT_EQ(IMPORT_EXPORT.segment_count, 9);
}

TEST(KineticsState, AHostThatWritesTheCountsInMidSectionChangesNothing) {
    const std::string text =
        text_of(with(legacy_records(), "number of the time function", "10", 1));
    clear_send_buffers();
    const ImportRun undisturbed = import_text(text);
    import_export_data &data = IMPORT_EXPORT;
    for (const std::int32_t count : {-1, 0, 1, std::numeric_limits<std::int32_t>::max()}) {
        ImportSettings settings;
        settings.before = [&](const kova_host::ReceivedCommand &command) {
            if (command.keyword == "PBRKTF" || command.keyword == "PADDPARAM" ||
                command.keyword == "PADDCONST") {
                data.segment_count = count;
                data.system_count = count;
                data.solids_count = count;
            }
            if (command.keyword == "PCMAX") {
                data.segment_count = count;
                data.state_variable_count = count;
            }
        };
        clear_send_buffers();
        EXPECT_EQ(import_text(text, settings).log, undisturbed.log) << count;
    }
}

TEST(KineticsState, TablesAreSentAsTheFlagStands) {
    ImportSettings settings;
    // the head is a notice, the first function has a row, the second none, and the end is missing
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PNBRKTF")
            IMPORT_EXPORT.report_tables = command.integer(0) == 1 ? 1 : 0;
    };
    const ImportRun run = import_text(text_of(legacy_records()), settings);
    const Lines fragments = run.arguments_of("PINFOHTML");
    const auto count = [&](const std::string &part) {
        return std::count_if(fragments.begin(), fragments.end(), [&](const std::string &fragment) {
            return fragment.find(part) != std::string::npos;
        });
    };
    EXPECT_EQ(count("Importing Time Function Information"), 1);
    EXPECT_EQ(count("<big>Time Functions</big>"), 0);
    EXPECT_EQ(count("width: 183px"), 1);
    EXPECT_EQ(count("Water temperature"), 1);
}

} // namespace
} // namespace kova_test
