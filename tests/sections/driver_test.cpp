#include "tests/support/import_run.h"
#include "tests/support/model_text.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfenv>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

Lines tail(const Lines &lines, std::size_t count) {
    return {lines.end() - static_cast<std::ptrdiff_t>(std::min(count, lines.size())), lines.end()};
}

Lines head(const Lines &lines, std::size_t count) {
    return {lines.begin(),
            lines.begin() + static_cast<std::ptrdiff_t>(std::min(count, lines.size()))};
}

/// A literal as the log shows it: its length counts the NUL.
std::string literal(std::string_view text) {
    std::string escaped;
    for (const char character : text)
        escaped += (character == '"' ? "\\" : "") + std::string(1, character);
    return "text[" + std::to_string(text.size() + 1) + "] \"" + escaped + "\\0\"";
}

std::string fragment(std::string_view text) { return "1 PINFOHTML[10] " + literal(text); }

std::string question(std::string_view title, std::string_view text, std::string_view first,
                     std::string_view second, const std::string &answer) {
    return "5 PDIALOG[8] " + literal(title) + ", " + literal(text) + ", " + literal(first) + ", " +
           literal(second) + ", int -1 -> " + answer;
}

const std::string blue_line = fragment("<li><span style=\"font-weight: bold; color: blue;\">");

const Lines all_percentages = {"int 0",  "int 5",  "int 10", "int 20", "int 30", "int 40",
                               "int 50", "int 60", "int 70", "int 80", "int 85", "int 100"};

TEST(Driver, AsksItsQuestionsInOrder) {
    const ImportRun run = import_text(text_of(legacy_records()));
    EXPECT_EQ(head(run.log, 4),
              (Lines{
                  question("Set Verbose Option:", "Yes or No?", "Yes", "No", "1"),
                  question("Import Options", "Import Network/Transport or All ?", "Transport Only",
                           "All", "1"),
                  question("Index Segment Names", "Add Index to Segment Name to Insure Unique Name",
                           "Yes", "No", "0"),
                  "1 GFILENAME[10] text[512] -> \"model.inp\" 503*\" \"",
              }));
}

TEST(Driver, ClearsThePaneShowsTheVersionPageAndStartsTheProgress) {
    const ImportRun run = import_text(text_of(legacy_records()));
    EXPECT_EQ(run.log.at(4), "0 PCLEARINFO[11]");
    EXPECT_EQ(run.log.at(5), fragment("<center><body><table style=\"text-align: left; width: "
                                      "332px; height: 284px;\""));
    // the page has 19 parts, of which six are two fragments
    EXPECT_EQ(run.log.at(29), fragment("</td></tr></tbody></table><br></body></Center>"));
    EXPECT_EQ(run.log.at(30), "1 PPROGRESS[10] int 0");
}

TEST(Driver, SendsEveryPercentageWhetherOrNotASectionRuns) {
    // with those of the boundaries of two systems, which are read and sent behind 40 per cent
    EXPECT_EQ(import_text(text_of(current_records())).arguments_of("PPROGRESS"),
              (Lines{"int 0", "int 5", "int 10", "int 20", "int 30", "int 40", "int 0", "int 0",
                     "int 100", "int 0", "int 0", "int 100", "int 50", "int 60", "int 70", "int 80",
                     "int 85", "int 100"}));
    // the first section fails: everything else is skipped, and everything around it still comes
    const ImportRun run =
        import_text(text_of(with(legacy_records(), "simulation length", "unknown")));
    EXPECT_EQ(run.arguments_of("PPROGRESS"), all_percentages);
    EXPECT_EQ(IMPORT_EXPORT.import_error, 1);
    EXPECT_EQ(run.keywords(),
              (Lines{"PDIALOG", "PDIALOG", "PDIALOG", "GFILENAME", "PCLEARINFO", "PPROGRESS",
                     "PPROGRESS", "PPROGRESS", "PPROGRESS", "PPROGRESS", "PPROGRESS", "PPROGRESS",
                     "PPROGRESS", "PPROGRESS", "PPROGRESS", "PPROGRESS", "PPROGRESS", "PDIALOG"}));
    EXPECT_EQ(run.log.back(), fragment("KOVA7 Files</big></body>"));
}

TEST(Driver, EndsALegacyImportWithItsNote) {
    EXPECT_EQ(
        tail(import_text(text_of(legacy_records())).log, 13),
        (Lines{
            question("Continue", "Click Okay to Continue", "Okay", "No", "0"),
            fragment("<body><big style=\"font-weight: bold; color: Black;\">Import Utility "),
            fragment("has completed. User should do a visible inspection between data in the "
                     "KOVA7 "),
            fragment("interface &amp; KOVA8 Interface.  Because of drastic changes in the data "),
            fragment("structures, data may not be imported. If you did multiple BOD and "),
            fragment("Phytoplankton groups in KOVA7, you will need to check the \"Use\" Box for "),
            fragment("all constants, whether they were used in KOVA7.  "),
            fragment("If you simulated Benthic Algae in KOVA you will need to parameterize in "),
            fragment("KOVA8 without the aid of the import "),
            fragment("utility. So much has changed that it is virtually impossible "),
            fragment("to import correctly.  "),
            fragment("See https://kova.example under FAQ for more information about importing "),
            fragment("KOVA7 Files</big></body>"),
        }));
}

TEST(Driver, EndsACurrentImportWithItsNote) {
    EXPECT_EQ(
        tail(import_text(text_of(current_records())).log, 6),
        (Lines{
            fragment("<body><big style=\"font-weight: bold; color: Black;\">Import Utility "),
            fragment("has completed. Your import file was from a KOVA8 input file.  You will "
                     "need to"),
            fragment(" re-select your output variables and review segment parameter screen due "
                     "to "),
            fragment("changes and bug fixes in the interface."),
            fragment("  See https://kova.example under FAQ for more information about "
                     "importing "),
            fragment("Files</big></body>"),
        }));
}

TEST(Driver, ChoosesTheFamilyByTheFileVersion) {
    struct Case {
        const char *header;
        bool is_current;
    };
    for (const Case &each : std::vector<Case>{{"    7      3", true},
                                              {"   11     99", true},
                                              {"    7      2", false},
                                              {"    7      0", false},
                                              {"    7     -1", false},
                                              {"    7", false},
                                              {"", false}}) {
        const ImportRun run = import_text(std::string(each.header) + "\n");
        EXPECT_EQ(run.log.back().find("KOVA7 Files") == std::string::npos, each.is_current)
            << each.header;
    }
}

TEST(Driver, ReportsAFileThatCannotBeOpenedInFourFragments) {
    ImportSettings settings;
    settings.path = "missing.inp";
    const ImportRun run = import_text("", settings);
    EXPECT_EQ(Lines(run.log.begin() + 4, run.log.end()),
              (Lines{
                  blue_line,
                  fragment("File Can Not be Opened</span></li>"),
                  blue_line,
                  "1 PINFOHTML[10] text[132] \"File: missing.inp\\0\" 114*\" \"",
              }));
    ASSERT_EQ(run.notices.size(), 1U);
    EXPECT_EQ(run.notices[0].kind, IMPORT_EXPORT_OPEN_FAILED);
    EXPECT_EQ(run.notices[0].path, "missing.inp");
    EXPECT_EQ(run.notices[0].reason, "there is no such file");
    EXPECT_TRUE(run.console.empty());
}

TEST(Driver, ReportsAHeaderThatCannotBeReadLikeAFileThatCannotBeOpened) {
    for (const std::string &text : std::vector<std::string>{
             "", "eutro\n", "   11     x3\n", "9999x\n", std::string("\xFF\xFE 1\0 1\0", 8)}) {
        const ImportRun run = import_text(text);
        EXPECT_EQ(run.log.size(), 8U) << text;
        EXPECT_EQ(run.log.back(), "1 PINFOHTML[10] text[132] \"File: model.inp\\0\" 116*\" \"");
        ASSERT_EQ(run.notices.size(), 1U);
        EXPECT_EQ(run.notices[0].kind, IMPORT_EXPORT_READ_FAILED);
        EXPECT_EQ(run.notices[0].reason == "The file is empty.", text.empty()) << text;
        EXPECT_EQ(run.notices[0].line, 1);
        EXPECT_TRUE(run.console.empty());
    }
}

TEST(Driver, SaysThatAFileIsInUtf16) {
    const ImportRun run = import_text(std::string("\xFF\xFE \0 \0 \0001\0", 10));
    ASSERT_EQ(run.notices.size(), 1U);
    EXPECT_EQ(run.notices[0].reason, "The file is written in UTF-16 or UTF-32, not as plain text.");
    EXPECT_EQ(run.notices[0].advice, "Save it as plain text or UTF-8.");
}

TEST(Driver, SaysThatTheLinesOfAFileEndInAnotherWay) {
    std::string text = text_of(current_records());
    std::replace(text.begin(), text.end(), '\n', '\r');
    const ImportRun run = import_text(text);
    const auto failures = run.notices_of(IMPORT_EXPORT_READ_FAILED);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].advice, "Its lines end in CR alone; save it with LF or CR LF.");
}

TEST(Driver, TakesOnlyTheAnswersThatTheButtonsGive) {
    struct Case {
        kova_host::DialogAnswer scope;
        kova_host::DialogAnswer names;
        std::int32_t transport_only;
        std::int32_t index_segment_names;
    };
    for (const Case &each : std::vector<Case>{{0, 0, 1, 1},
                                              {1, 1, 0, 0},
                                              {7, 7, 0, 1},
                                              {-1, -1, 0, 1},
                                              {std::nullopt, std::nullopt, 0, 1}}) {
        const TemporaryFolder folder;
        kova_host::ReferenceHost host;
        host.answer_dialogs(
            kova_host::DialogScript{{std::nullopt, each.scope, each.names, std::nullopt}});
        host.set_import_file((folder.path() / "missing").string());
        const kova_host::Connection connection = host.connect();
        importexport();
        EXPECT_EQ(IMPORT_EXPORT.transport_only, each.transport_only);
        EXPECT_EQ(IMPORT_EXPORT.index_segment_names, each.index_segment_names);
    }
}

TEST(Driver, AsksForVerbosityAndDependsOnNothingOfIt) {
    Lines logs[2];
    for (const int answer : {0, 1}) {
        const TemporaryFolder folder;
        kova_host::ReferenceHost host;
        std::string log;
        host.answer_dialogs(kova_host::DialogScript{{answer, 1, 0, answer}});
        host.set_import_file(folder.write("model", text_of(legacy_records())).string());
        host.log_to([&log](std::string_view piece) { log += piece; });
        {
            const kova_host::Connection connection = host.connect();
            importexport();
        }
        host.flush_log();
        logs[answer] = without_stamps(lines_of(log));
        std::erase_if(logs[answer], [](const std::string &line) {
            return line.find("PDIALOG") != std::string::npos ||
                   line.find("GFILENAME") != std::string::npos ||
                   line.find("PFILENAME") != std::string::npos;
        });
    }
    EXPECT_GT(logs[0].size(), 100U);
    EXPECT_EQ(logs[0], logs[1]);
}

TEST(Driver, StartsEveryImportFromClearedState) {
    const std::string text = text_of(legacy_records());
    const ImportRun first = import_text(text);
    EXPECT_EQ(IMPORT_EXPORT.state_variable_count, 2);
    EXPECT_EQ(IMPORT_EXPORT.ammonia_present, 1);
    static_cast<void>(import_text("broken"));
    EXPECT_EQ(IMPORT_EXPORT.state_variable_count, 0);
    EXPECT_EQ(IMPORT_EXPORT.ammonia_present, 0);
    static_cast<void>(import_text(text_of(with(legacy_records(), "segment geometry", "x", 1))));
    EXPECT_EQ(IMPORT_EXPORT.import_error, 1);
    const ImportRun second = import_text(text);
    EXPECT_EQ(first.log, second.log);
    EXPECT_EQ(first.console, second.console);
    EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
}

TEST(Driver, SendsTheSameWithAndWithoutNotices) {
    for (const std::string &text :
         {text_of(legacy_records()), text_of(with(legacy_records(), "segment name", "x", 1)),
          text_of(current_records()), std::string("no header\n")}) {
        ImportSettings settings;
        settings.want_notices = false;
        const ImportRun without = import_text(text, settings);
        EXPECT_TRUE(without.notices.empty());
        const ImportRun with_notices = import_text(text);
        EXPECT_FALSE(with_notices.notices.empty());
        EXPECT_EQ(without.log, with_notices.log);
    }
}

TEST(Driver, DoesNotCountItsOwnReadOfTheHeader) {
    const ImportRun run = import_text("eutro\n");
    EXPECT_EQ(run.notices.at(0).statement_number, 1);
    EXPECT_EQ(IMPORT_EXPORT.line_counter, 1);
    static_cast<void>(import_text("   11      2\nx\n"));
    EXPECT_EQ(IMPORT_EXPORT.line_counter, 3);
}

TEST(Driver, LeavesItToTheFirstSectionToTellOfAShortHeader) {
    const auto told = import_text("   11\n").notices_of(IMPORT_EXPORT_DEFAULTED);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].section, 1);
    EXPECT_EQ(told[0].statement, "header");
}

TEST(Driver, SetsImportErrorAfterTheReport) {
    std::vector<std::int32_t> seen;
    ImportSettings settings;
    settings.before = [&seen](const kova_host::ReceivedCommand &command) {
        // the line is formatted, and then shown
        if ((command.keyword == "GSPRINTFI" || command.keyword == "PINFOHTML") &&
            command.text(0).size() == 80)
            seen.push_back(IMPORT_EXPORT.import_error);
    };
    static_cast<void>(
        import_text(text_of(with(current_records(), "simulation length", "x")), settings));
    EXPECT_EQ(seen, (std::vector<std::int32_t>{0, 0}));
    EXPECT_EQ(IMPORT_EXPORT.import_error, 1);
}

TEST(Driver, NoticesOfAFailureNameTheFile) {
    const ImportRun run = import_text(text_of(with(legacy_records(), "segment count", "x")));
    EXPECT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).at(0).path, "model.inp");
}

TEST(Driver, ANoticeCallbackThatThrowsChangesNothing) {
    const std::string text = text_of(with(current_records(), "segment count", "x"));
    const ImportRun undisturbed = import_text(text);
    ImportSettings settings;
    settings.before = [](const kova_host::ReceivedCommand &) {
        IMPORT_EXPORT.notice = [](void *, const import_export_notice *) {
            throw std::runtime_error("a host's own");
        };
    };
    const ImportRun run = import_text(text, settings);
    EXPECT_EQ(run.log, undisturbed.log);
    EXPECT_EQ(run.console, undisturbed.console);
}

TEST(Driver, ASystemThatCannotReadTheFileAnyFurtherIsReported) {
    // a regular file that can be opened and not read
    ImportSettings settings;
    settings.path = "/proc/self/mem";
    const ImportRun run = import_text("", settings);
    EXPECT_EQ(run.log.size(), 8U);
    EXPECT_EQ(run.notices.at(0).reason, "The system could not read the file any further.");
}

TEST(Driver, ImportsAllSectionsOfBothFormats) {
    for (const Records &records : {legacy_records(), current_records()}) {
        const ImportRun run = import_text(text_of(records));
        EXPECT_TRUE(run.notices_of(IMPORT_EXPORT_READ_FAILED).empty());
        EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
        // every section has something that no other sends
        for (const char *keyword :
             {"PNUMSYS", "PNUMSEG", "PNOQS", "PFLOWSREFRESH", "PEXCHANGESREFRESH", "PNOBC", "PLOPT",
              "PTFSREFRESH", "PCONSTPARAM", "PADDCONST", "PINITC"})
            EXPECT_FALSE(run.arguments_of(keyword).empty()) << keyword;
    }
}

TEST(Driver, RefusesToBeCalledFromInsideAHostCommand) {
    const std::string text = text_of(legacy_records());
    const ImportRun undisturbed = import_text(text);
    ImportSettings settings;
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PDIALOG")
            importexport();
        if (command.keyword == "PSEGNAME")
            segments();
    };
    const ImportRun run = import_text(text, settings);
    EXPECT_EQ(run.log, undisturbed.log);
    EXPECT_EQ(run.notices_of(IMPORT_EXPORT_CALL_REFUSED).size(), 4U + 2U);
    // the first question is open, and nothing is left of the import before
    const Notice first = run.notices.at(0);
    EXPECT_EQ(first.kind, IMPORT_EXPORT_CALL_REFUSED);
    EXPECT_EQ(first.path, "");
    EXPECT_EQ(first.statement, "");
    EXPECT_EQ(first.statement_number, 1);
}

TEST(Driver, ComputesWithItsOwnRoundingAndRestoresTheHosts) {
    // 0.7 lies nearer to the number below it
    const Records records = with(legacy_records(), "simulation length", "0.7");
    std::fesetround(FE_UPWARD);
    const ImportRun run = import_text(text_of(records));
    const int afterwards = std::fegetround();
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(afterwards, FE_UPWARD);
    EXPECT_EQ(run.arguments_of("PENDJULIAN"), Lines{"real 0.699999988"});
}

struct Family {
    std::vector<void (*)()> routines; ///< in the order of their sections
    bool is_current;
};

TEST(Sections, FailOutsideAnImport) {
    const std::vector<Family> families = {
        {{modelparam, segments, flowpath, flows, exchanges, boundary, loads, timefunctions,
          seg_parameters, constants, initial_conditions},
         false},
        {{modelparam_v2, segments_v2, flowpath_v2, flows_v2, exchanges_v2, boundary_v2, loads_v2,
          timefunctions_v2, seg_parameters_v2, constants_v2, initial_conditions_v2},
         true},
    };
    for (const Family &family : families) {
        ASSERT_EQ(family.routines.size(), 11U);
        for (std::int32_t section = 1; section <= 11; ++section) {
            IMPORT_EXPORT.import_error = 0;
            const ImportRun run =
                run_routine(family.routines[static_cast<std::size_t>(section - 1)]);
            // of the current format all sections but the flow paths report in the pane
            if (family.is_current && section != 3) {
                ASSERT_EQ(run.log.size(), 3U) << section;
                EXPECT_TRUE(run.log[0].starts_with("3 GSPRINTFI[10] text[80] -> \"Error Reading "
                                                   "Import File at Line # "));
                EXPECT_EQ(run.log[1], blue_line);
            } else {
                EXPECT_TRUE(run.log.empty()) << section;
            }
            ASSERT_FALSE(run.console.empty()) << section;
            EXPECT_EQ(run.console.back(), "Error Reading Import File at Line: " +
                                              std::to_string(IMPORT_EXPORT.line_counter));
            EXPECT_EQ(IMPORT_EXPORT.import_error, 1);
            ASSERT_EQ(run.notices.size(), 1U) << section;
            EXPECT_EQ(run.notices[0].section, section);
            EXPECT_EQ(run.notices[0].reason, "There is no open import file.");
            EXPECT_EQ(run.notices[0].line, 0) << "which does not apply";
            EXPECT_EQ(run.notices[0].column, 0);
            EXPECT_EQ(run.notices[0].width, 0);
        }
    }
}

} // namespace
} // namespace kova_test
