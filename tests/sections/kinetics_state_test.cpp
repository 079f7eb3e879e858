// What time functions, segment parameters, constants and initial conditions leave behind, and what
// a host may do meanwhile.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
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
    EXPECT_EQ(IMPORT_EXPORT.tf5_present, 0);
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

// A notice comes between the records of a section: what is simulated is asked before the first.
TEST(KineticsState, ANoticeFunctionThatWritesTheCountsChangesNoConstant) {
    Records records = with(legacy_records(), "constant", "110 1");
    records = with(records, "constant", "111 2", 1);
    const ImportRun undisturbed = import_text(text_of(records));
    ASSERT_EQ(undisturbed.arguments_of("PADDCONST").size(), 0U) << "no phytoplankton";
    ImportSettings settings;
    settings.want_notices = false;
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PPROGRESS")
            IMPORT_EXPORT.notice = [](void * /*context*/, const import_export_notice *notice) {
                if (notice->number == 110)
                    IMPORT_EXPORT.phytoplankton_count = 1;
            };
    };
    EXPECT_EQ(import_text(text_of(records), settings).log, undisturbed.log);
    EXPECT_EQ(IMPORT_EXPORT.phytoplankton_count, 1) << "the host has written it";
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

TEST(TimeFunctionTable, IsSentToAHostThatAsksForTables) {
    // the first function has no place in the current model
    Records records = with(legacy_records(), "number of the time function", "2");
    records = with(records, "name of the time function", "Cold");
    records = with(records, "number of the time function", "5", 1);
    records = with(records, "breakpoint count of the time function", "2", 1);
    records = with(records, "breakpoint of the time function", "0 100\n1 2", 2);
    ImportSettings settings;
    settings.report_tables = true;
    const std::vector<std::string> log = import_text(text_of(records), settings).log;
    const auto place = [&](const std::string &line) {
        return static_cast<std::size_t>(std::find(log.begin(), log.end(), line) - log.begin());
    };
    const std::size_t first = place("3 PNBRKTF[8] int 4, int 1, int 2");
    ASSERT_LT(first, log.size());
    // 0.48426 of 100 and 2, in single precision; the name is that of the first record
    const std::vector<std::string> expected = {
        "5 PBRKTF[7] int 4, int 1, int 1, real 0, real 48.4259987",
        "5 PBRKTF[7] int 4, int 1, int 2, real 1, real 0.968519986",
        "1 PINFOHTML[10] text[51] \"<tr><td style=\\\"text-align: center; width: 183px;\\\">\\0\"",
        "1 PINFOHTML[10] text[31] \"Cold\" 26*\" \" \"\\0\"",
        "1 PINFOHTML[10] text[51] \"</td><td style=\\\"text-align: center; width: 78px;\\\">\\0\"",
        "3 GSPRINTFI[10] text[132] -> \"4\" 131*\" \", text[3] \"%d\\0\", int 4",
        "1 PINFOHTML[10] text[133] \"4\" 131*\" \" \"\\0\"",
        "1 PINFOHTML[10] text[53] \"</td><td style=\\\"text-align: center; width: 136px;\\\"> "
        "\\0\"",
        "3 GSPRINTFI[10] text[132] -> \"2\" 131*\" \", text[3] \"%d\\0\", int 2",
        "1 PINFOHTML[10] text[133] \"2\" 131*\" \" \"\\0\"",
        "1 PINFOHTML[10] text[52] \"</td><td style=\\\"text-align: center; width: 116px;\\\">\\0\"",
        "3 GSPRINTFR[10] text[132] -> \"24.697260\" 123*\" \", text[3] \"%f\\0\", real 24.6972599",
        "1 PINFOHTML[10] text[133] \"24.697260\" 123*\" \" \"\\0\"",
        "1 PINFOHTML[10] text[11] \"</td></tr>\\0\"",
        "1 PINFOHTML[10] text[37] \"</tbody></table><br></center></body>\\0\"",
        "0 PTFSREFRESH[12]",
    };
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(log.at(first + 1 + i), expected[i]);
    EXPECT_EQ(log.at(first - 11),
              "1 PINFOHTML[10] text[68] \"<body><center><table style=\\\"text-align: left; "
              "height: 95px; width: \\0\"");
}

// The section asks for the model and the flag when it has read its records.
TEST(SegmentParameters, AreTranslatedForTheModelThatTheHostHasThen) {
    ImportSettings settings;
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PTFSREFRESH")
            IMPORT_EXPORT.model_type = 8;
    };
    const Records records = with(legacy_records(), "number of the time function", "10", 1);
    const ImportRun run = import_text(text_of(records), settings);
    EXPECT_EQ(run.arguments_of("PADDPARAM"), (Lines{"int 2, int 1", "int 3, int 1"}));
    EXPECT_EQ(run.arguments_of("PSCALEPARAMBYISC"),
              (Lines{"int 2, int 1, real 1", "int 3, int 1, real 1"}));
    EXPECT_EQ(run.arguments_of("PCONSTPARAM"),
              (Lines{"int 1, int 2, int 1, real 1", "int 2, int 2, int 1, real 1",
                     "int 1, int 3, int 1, real 1", "int 2, int 3, int 1, real 1"}));
}

TEST(SegmentParameters, OfTheAirTemperatureComeAlsoWhenTheHostSetsTheFlag) {
    const std::string text = text_of(legacy_records());
    const Lines listed = {"int 1, int 1", "int 24, int 1"};
    EXPECT_EQ(import_text(text).arguments_of("PADDPARAM"), listed);
    ImportSettings settings;
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PTFSREFRESH")
            IMPORT_EXPORT.tf10_present = 1;
    };
    EXPECT_EQ(import_text(text, settings).arguments_of("PADDPARAM"),
              (Lines{listed[0], listed[1], "int 2, int 1", "int 3, int 1"}));
}

TEST(CurrentKineticsState, SectionsReplaceTheSharedCounts) {
    Records records = with(current_records(), "segment-parameter count", "-1");
    records = with(records, "segment count", "7", 1);
    const auto behind_list =
        static_cast<std::ptrdiff_t>(position_of(records, "heading of the parameter list")) + 1;
    const auto next =
        static_cast<std::ptrdiff_t>(position_of(records, "heading of the section", 7));
    records.erase(records.begin() + behind_list, records.begin() + next);
    std::vector<std::int32_t> segment_counts;
    ImportSettings settings;
    settings.before = [&](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PTFSREFRESH" || command.keyword == "PPARAMSREFRESH" ||
            command.keyword == "PCMAX")
            segment_counts.push_back(IMPORT_EXPORT.segment_count);
    };
    EXPECT_EQ(import_text(text_of(records), settings).arguments_of("PPARAMSREFRESH"), Lines{""});
    EXPECT_EQ(segment_counts, (std::vector<std::int32_t>{2, 7, 2, 2}));
    // they stay when the section fails behind them
    records = with(with(records, "system count", "5", 3), "segment count", "9", 2);
    static_cast<void>(import_text(text_of(with(records, "density of the system", "x"))));
    EXPECT_EQ(IMPORT_EXPORT.import_error, 1);
    EXPECT_EQ(IMPORT_EXPORT.system_count, 5);
    EXPECT_EQ(IMPORT_EXPORT.segment_count, 9);
}

TEST(CurrentKineticsState, NoFlagOfTheLegacyFormatIsSet) {
    Records records = with(current_records(), "number of the time function", "5");
    records = with(records, "number of the time function", "10", 1);
    static_cast<void>(import_text(text_of(records)));
    EXPECT_EQ(IMPORT_EXPORT.tf5_present, 0);
    EXPECT_EQ(IMPORT_EXPORT.tf10_present, 0);
    EXPECT_EQ(IMPORT_EXPORT.state_variable_count, 0);
}

TEST(CurrentKineticsState, AHostThatWritesTheDataBlockInMidSectionChangesNothing) {
    const std::string text = text_of(current_records());
    import_export_data &data = IMPORT_EXPORT;
    clear_send_buffers();
    const ImportRun undisturbed = import_text(text);
    for (const std::int32_t count : {-1, 0, 1, std::numeric_limits<std::int32_t>::max()}) {
        ImportSettings settings;
        settings.before = [&](const kova_host::ReceivedCommand &command) {
            // nobody asks for these any more, or before they are read again
            if (command.keyword == "PTFSREFRESH" || command.keyword == "PBRKTF" ||
                command.keyword == "PADDPARAM" || command.keyword == "PCONSTPARAM" ||
                command.keyword == "PADDCONST" || command.keyword == "PCMAX" ||
                command.keyword == "PINITC") {
                data.segment_count = count;
                data.system_count = count;
                data.state_variable_count = count;
                data.flow_field_count = count;
                data.tf10_present = 1;
                data.report_tables = 1;
                data.model_type = count;
            }
        };
        clear_send_buffers();
        EXPECT_EQ(import_text(text, settings).log, undisturbed.log) << count;
    }
}

TEST(CurrentKineticsState, NothingBehindTheSegmentsHasTables) {
    const std::string text = text_of(current_records());
    clear_send_buffers();
    const ImportRun undisturbed = import_text(text);
    ImportSettings settings;
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PSEGMENTSREFRESH")
            IMPORT_EXPORT.report_tables = 1;
    };
    clear_send_buffers();
    EXPECT_EQ(import_text(text, settings).log, undisturbed.log);
    EXPECT_EQ(IMPORT_EXPORT.report_tables, 1) << "nobody but the host and the driver writes it";
}

const Lines current_console = {
    "Reading Boundary Information",
    "Done Reading Boundary Information",
    "Done reading Loads",
    "Reading Time Functions",
    "Done Reading Time Functions",
    "Reading Segment Parameters",
    "Done Reading Segment Parameters",
    "Reading Constants",
    "Done Reading Constants",
    "Reading Initial Conditions",
    "Done Reading Initial Conditions",
};

TEST(CurrentKineticsState, TransportOnlyLeavesTheNetworkAndTheConsole) {
    ImportSettings settings;
    settings.transport_only = true;
    const ImportRun run = import_text(text_of(current_records()), settings);
    const Lines keywords = run.keywords();
    const auto exchanges = std::find(keywords.begin(), keywords.end(), "PEXCHANGESREFRESH");
    // boundaries read with progress: at their start, and for each of two systems
    EXPECT_EQ(Lines(exchanges, keywords.end()),
              (Lines{"PEXCHANGESREFRESH", "PPROGRESS", "PPROGRESS", "PPROGRESS", "PPROGRESS",
                     "PPROGRESS", "PPROGRESS", "PTFSREFRESH", "PPROGRESS", "PPROGRESS", "PPROGRESS",
                     "PPROGRESS", "PDIALOG"}));
    Lines notices = run.arguments_of("PINFOHTML");
    std::erase_if(notices, [](const std::string &fragment) {
        return fragment.find("\"Importing ") == std::string::npos;
    });
    EXPECT_EQ(notices, (Lines{
                           "text[42] \"Importing Segment Information</span></li>\\0\"",
                           "text[44] \"Importing Flow Path Information</span></li>\\0\"",
                           "text[39] \"Importing Flow Time Series</span></li>\\0\"",
                           "text[43] \"Importing Exchange Information</span></li>\\0\"",
                           "text[41] \"Importing Initial Conditions</span></li>\\0\"",
                       }));
    EXPECT_EQ(run.console, current_console);
    EXPECT_EQ(import_text(text_of(current_records())).console, current_console);
}

TEST(CurrentKineticsState, ASectionAsksForTheScopeOnce) {
    ImportSettings settings;
    // the time functions go on whole, and so does each section behind them
    clear_send_buffers();
    const ImportRun undisturbed = import_text(text_of(current_records()));
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PNBRKTF" || command.keyword == "PADDPARAM" ||
            command.keyword == "PADDCONST" || command.keyword == "PCMAX")
            IMPORT_EXPORT.transport_only = 1;
        if (command.keyword == "PPROGRESS")
            IMPORT_EXPORT.transport_only = 0;
    };
    clear_send_buffers();
    EXPECT_EQ(import_text(text_of(current_records()), settings).log, undisturbed.log);
    // what is written stays for the sections behind
    settings.before = [](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PNBRKTF")
            IMPORT_EXPORT.transport_only = 1;
    };
    const ImportRun run = import_text(text_of(current_records()), settings);
    EXPECT_EQ(run.arguments_of("PBRKTF").size(), 3U);
    EXPECT_TRUE(run.arguments_of("PPARAMSREFRESH").empty());
    EXPECT_TRUE(run.arguments_of("PADDCONST").empty());
    EXPECT_TRUE(run.arguments_of("PCMAX").empty());
}

/// A whole model whose count has become -1, without what it counts.
struct Emptied {
    const char *count;
    std::size_t occurrence;
    const char *next; ///< the first record behind what it counts
    std::size_t next_occurrence;
    std::vector<std::pair<const char *, const char *>> sent; ///< a keyword and its last arguments
};

TEST(CurrentKineticsState, NegativeCountsAreSentAsReadAndAreNone) {
    const std::vector<Emptied> cases = {
        {"flow-field count", 0, "heading of the section", 1, {{"PNFIELD", "int -1"}}},
        {"function count of the flow field", 0, "caption of the flow field", 1, {}},
        {"pair count of the flow function", 1, "caption of the flow field", 1, {}},
        {"flow-field count", 1, "heading of the section", 2, {{"PNFIELD", "int -1"}}},
        {"function count of the flow field", 2, "caption of the flow field", 3, {}},
        {"breakpoint count of the flow function", 1, "caption of the flow field", 3, {}},
        {"exchange-field count", 0, "heading of the section", 3, {{"PNRFLD", "int -1"}}},
        {"function count of the exchange field", 0, "heading of the exchange field", 1, {}},
        {"pair count of the exchange function",
         0,
         "breakpoint count of the exchange function",
         0,
         {{"PNORS", "int 1, int 1, int -1"}}},
        {"breakpoint count of the exchange function", 0, "heading of the exchange field", 1, {}},
        {"system count", 1, "heading of the section", 4, {}},
        {"boundary count", 0, "heading of the boundaries", 1, {}},
        {"breakpoint count of the boundary",
         1,
         "heading of the boundaries",
         1,
         {{"PNBFP", "int 1, int 2, int -1"}}},
        {"system count", 2, "heading of the section", 5, {}},
        {"load count", 1, "heading of the section", 5, {{"PNBWK", "int 2, int 1, int 2"}}},
        {"breakpoint count of the load",
         1,
         "heading of the section",
         5,
         {{"PNBWK", "int 2, int 1, int -1"}}},
        {"time-function count", 0, "heading of the section", 6, {{"PTFSREFRESH", ""}}},
        {"breakpoint count of the time function",
         1,
         "heading of the section",
         6,
         {{"PNBRKTF", "int 13, int 1, int -1"}}},
        {"segment count", 1, "segment-parameter count", 0, {}},
        {"constant count", 0, "heading of the section", 8, {{"PCONSTANTSREFRESH", ""}}},
        {"segment count", 2, "caption of the system", 0, {}},
    };
    for (const Emptied &each : cases) {
        SCOPED_TRACE(std::string(each.count) + " " + std::to_string(each.occurrence));
        Records records = with(current_records(), each.count, "-1", each.occurrence);
        const std::size_t count = position_of(records, each.count, each.occurrence);
        const std::size_t next = position_of(records, each.next, each.next_occurrence);
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(count) + 1,
                      records.begin() + static_cast<std::ptrdiff_t>(next));
        // values of the parameters, or of the initial conditions, in no segment
        const bool of_parameters = each.occurrence == 1;
        if (std::string_view(each.count) == "segment count")
            std::erase_if(records, [of_parameters](const Record &record) {
                return of_parameters ? record.name == "segment of the parameter values" ||
                                           record.name == "value of the segment parameter"
                                     : record.name == "initial condition";
            });
        const ImportRun run = import_text(text_of(records));
        EXPECT_TRUE(run.notices_of(IMPORT_EXPORT_READ_FAILED).empty());
        EXPECT_EQ(run.console, current_console);
        for (const auto &[keyword, arguments] : each.sent) {
            ASSERT_FALSE(run.arguments_of(keyword).empty());
            const Lines all = run.arguments_of(keyword);
            EXPECT_TRUE(std::find(all.begin(), all.end(), arguments) != all.end()) << keyword;
        }
    }
}

TEST(CurrentKineticsState, ParametersWithoutSegmentsAreSentWithoutValues) {
    Records records = with(current_records(), "segment count", "0", 1);
    std::erase_if(records, [](const Record &record) {
        return record.name == "segment of the parameter values" ||
               record.name == "value of the segment parameter";
    });
    const ImportRun run = import_text(text_of(records));
    EXPECT_EQ(run.arguments_of("PADDPARAM"), (Lines{"int 2, int 1", "int 14, int 3"}));
    EXPECT_EQ(run.arguments_of("PSCALEPARAMBYISC"),
              (Lines{"int 2, int 1, real 1.5", "int 14, int 3, real 0.5"}));
    EXPECT_EQ(run.arguments_of("PPARAMSREFRESH").size(), 2U);
    EXPECT_TRUE(run.arguments_of("PCONSTPARAM").empty());
    EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
}

TEST(CurrentKineticsState, TheLastSegmentsRecordsSayWhatTheParametersAre) {
    Records records =
        with(current_records(), "value of the segment parameter", parameter_value(99, 2, "5"), 0);
    records = with(records, "value of the segment parameter", std::string(60, ' ') + "25  ", 3);
    const ImportRun run = import_text(text_of(records));
    EXPECT_EQ(run.arguments_of("PADDPARAM"), (Lines{"int 2, int 1", "int 0, int 0"}));
    EXPECT_EQ(run.arguments_of("PCONSTPARAM"),
              (Lines{"int 1, int 2, int 1, real 5", "int 2, int 2, int 1, real 21.5",
                     "int 1, int 0, int 0, real 100", "int 2, int 0, int 0, real 25"}));
}

TEST(CurrentKineticsState, TheLastOfTwoRecordsFarAheadOfTheirOrderCounts) {
    constexpr int segment_count = 3000;
    Records records = with(current_records(), "segment count", std::to_string(segment_count), 2);
    records = with(records, "system count", "1", 3);
    records.erase(records.begin() +
                      static_cast<std::ptrdiff_t>(position_of(records, "initial condition", 0)),
                  records.end());
    records.push_back({"initial condition", std::to_string(segment_count) + " 1 0"});
    for (int i = 2; i < segment_count; ++i)
        records.push_back({"initial condition", "1 7 0"});
    records.push_back({"initial condition", std::to_string(segment_count) + " 2 0"});
    const auto sent = import_text(text_of(records)).arguments_of("PINITC");
    ASSERT_EQ(sent.size(), static_cast<std::size_t>(segment_count));
    EXPECT_EQ(sent.front(), "int 1, int 1, real 7");
    EXPECT_EQ(sent.at(1), "int 1, int 2, real 0");
    EXPECT_EQ(sent.back(), "int 1, int 3000, real 2");
}

} // namespace
} // namespace kova_test
