// What a host writes into the data block while an import runs.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

TEST(HostWrites, WhileAQuestionIsOpenTakeEffect) {
    ImportSettings settings;
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "GFILENAME")
            IMPORT_EXPORT.index_segment_names = 0;
    };
    const ImportRun run = import_text(text_of(legacy_records()), settings);
    EXPECT_EQ(run.arguments_of("PSEGNAME").at(0), "int 1, text[40] \"Upper Pool\\0\\0\" 28*\" \"");
}

TEST(HostWrites, BeforeTheFileIsOpenedTheDriverStartsItsCounterAndItsFlag) {
    const std::string text = text_of(legacy_records());
    const ImportRun undisturbed = import_text(text);
    ImportSettings settings;
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword != "GFILENAME")
            return;
        IMPORT_EXPORT.import_error = 1;
        IMPORT_EXPORT.line_counter = 500;
    };
    EXPECT_EQ(import_text(text, settings).log, undisturbed.log);
    settings.path = "missing.inp";
    const ImportRun run = import_text(text, settings);
    EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
    EXPECT_EQ(IMPORT_EXPORT.line_counter, 1);
    ASSERT_EQ(run.notices.size(), 1U);
    EXPECT_EQ(run.notices[0].statement_number, 1);
}

TEST(HostWrites, OfCountsInMidSectionBreakNothing) {
    for (const std::string &text : {text_of(legacy_opening()), text_of(current_opening())}) {
        const ImportRun undisturbed = import_text(text);
        ImportSettings settings;
        settings.before = [](const kova_host::ReceivedCommand &command) {
            if (command.keyword == "PPROGRESS" || command.keyword == "GFILENAME")
                return;
            IMPORT_EXPORT.model_type = 8;
            IMPORT_EXPORT.segment_count = 1000000;
            IMPORT_EXPORT.system_count = -1;
            IMPORT_EXPORT.state_variable_count = 77;
        };
        EXPECT_EQ(import_text(text, settings).log, undisturbed.log);
    }
}

TEST(HostWrites, OfTheOptionForSegmentNamesComeTooLateBehindTheirRecords) {
    for (const std::string &text : {text_of(legacy_records()), text_of(current_records())}) {
        const ImportRun undisturbed = import_text(text);
        ImportSettings settings;
        settings.before = [](const kova_host::ReceivedCommand &command) {
            if (command.keyword == "PNUMSEG")
                IMPORT_EXPORT.index_segment_names = 0;
        };
        EXPECT_EQ(import_text(text, settings).log, undisturbed.log);
    }
}

TEST(HostWrites, OfTheErrorFlagEndTheImportBehindTheSection) {
    for (const std::string &text : {text_of(legacy_records()), text_of(current_records())}) {
        const ImportRun undisturbed = import_text(text);
        ImportSettings settings;
        settings.before = [](const kova_host::ReceivedCommand &command) {
            if (command.keyword == "PSEGMENTSREFRESH")
                IMPORT_EXPORT.import_error = 1;
        };
        const Lines log = import_text(text, settings).log;
        // what comes behind the last percentage is the end of every import
        const auto refresh =
            std::find(undisturbed.log.begin(), undisturbed.log.end(), "0 PSEGMENTSREFRESH[17]");
        const auto complete =
            std::find(undisturbed.log.begin(), undisturbed.log.end(), "1 PPROGRESS[10] int 85");
        Lines expected(undisturbed.log.begin(), refresh + 1);
        for (const int percentage : {10, 20, 30, 40, 50, 60, 70, 80, 85, 100})
            expected.push_back("1 PPROGRESS[10] int " + std::to_string(percentage));
        expected.insert(expected.end(),
                        std::find(complete, undisturbed.log.end(), "1 PPROGRESS[10] int 100") + 1,
                        undisturbed.log.end());
        EXPECT_EQ(log, expected);
    }
}

// A host that takes the error back goes on with the next section, from where the file stands.
TEST(HostWrites, TheErrorTakenBackLetsTheNextSectionRead) {
    ImportSettings settings;
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PPROGRESS" && command.integer(0) == 10)
            IMPORT_EXPORT.import_error = 0;
    };
    const Records records = with(legacy_records(), "bed-volume option", "x");
    const auto failures =
        import_text(text_of(records), settings).notices_of(IMPORT_EXPORT_READ_FAILED);
    ASSERT_EQ(failures.size(), 2U);
    EXPECT_EQ(failures[0].statement, "bed-volume option");
    EXPECT_EQ(failures[1].section, 3);
    EXPECT_EQ(failures[1].statement, "flow option");
    EXPECT_EQ(failures[1].statement_number, failures[0].statement_number + 1);
}

} // namespace
} // namespace kova_test
