// What flows, exchanges, boundaries and loads leave behind, and what a host may do meanwhile.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

/// The buffers as the host gets them with each series.
Lines series_of(const ImportRun &run) {
    Lines all = run.arguments_of("PALLBOUNDFUNC");
    const Lines loads = run.arguments_of("PALLLOADFUNC");
    all.insert(all.end(), loads.begin(), loads.end());
    return all;
}

/// The first boundary has no series, so that the host gets the buffers as they are.
Records with_first_boundary_empty(const Records &records) {
    Records changed = with(records, "breakpoint count of the boundary", "0");
    const auto first = changed.begin() + static_cast<std::ptrdiff_t>(
                                             position_of(changed, "breakpoint of the boundary"));
    changed.erase(first, first + 2);
    return changed;
}

const char *const cleared_buffers =
    "int 1, int 1, real[170000] | 170000*0, real[170000] | 170000*0";

TEST(NetworkState, LaterSectionsReplaceTheSharedCounts) {
    const Records records = with(legacy_records(), "flow-field count", "1", 1);
    std::vector<std::int32_t> field_counts;
    std::vector<std::int32_t> system_counts;
    ImportSettings settings;
    settings.before = [&](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PNFIELD")
            field_counts.push_back(IMPORT_EXPORT.flow_field_count);
        if (command.keyword == "PNUMSYS" || command.keyword == "PNOBC" ||
            command.keyword == "PLOPT")
            system_counts.push_back(IMPORT_EXPORT.system_count);
    };
    Records changed = with(records, "system count", "2", 1);
    changed = with(changed, "system count", "1", 2);
    // away with the second flow field's records, the third system's boundaries, and the loads of
    // the second and third system
    const std::size_t second_field = position_of(changed, "caption of the flow field", 3);
    changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(second_field),
                  changed.begin() + static_cast<std::ptrdiff_t>(second_field) + 2);
    const std::size_t third_system = position_of(changed, "heading of the boundaries", 2);
    changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(third_system),
                  changed.begin() + static_cast<std::ptrdiff_t>(third_system) + 2);
    changed.resize(position_of(changed, "heading of the loads", 1));
    const ImportRun run = import_text(text_of(changed), settings);
    // the section behind the loads meets the end of the file
    ASSERT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).size(), 1U);
    EXPECT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED)[0].section, 8);
    EXPECT_EQ(field_counts, (std::vector<std::int32_t>{2, 1}));
    EXPECT_EQ(system_counts, (std::vector<std::int32_t>{3, 2, 2, 1}));
    EXPECT_EQ(IMPORT_EXPORT.state_variable_count, 2);
}

TEST(NetworkState, TheBuffersLiveAcrossImportsAndNothingElseDoes) {
    clear_send_buffers();
    const std::string text = text_of(legacy_records());
    const ImportRun first = import_text(text);
    EXPECT_EQ(series_of(first),
              (Lines{
                  "int 1, int 1, real[170000] 0.100000001 0.200000003 | 169998*0, "
                  "real[170000] 0 30 | 169998*0",
                  "int 1, int 2, real[170000] 0.300000012 | 1*0.200000003 169998*0, "
                  "real[170000] 0 | 1*30 169998*0",
                  "int 1, int 2, real[170000] 7.5 8.5 | 169998*0, real[170000] 0 30 | 169998*0",
                  "int 2, int 1, real[170000] 9.5 | 1*8.5 169998*0, real[170000] 0 | 1*30 169998*0",
              }));
    // A model whose first series is shorter finds the tail of the last one.
    const std::string shorter = text_of(with_first_boundary_empty(legacy_records()));
    EXPECT_EQ(series_of(import_text(shorter)).at(0),
              "int 1, int 1, real[170000] | 1*9.5 1*8.5 169998*0, "
              "real[170000] | 1*0 1*30 169998*0");
    EXPECT_EQ(import_text(text).log, first.log);
}

// A series is put into the buffers when it is sent.
TEST(NetworkState, WhatIsReadAndNotSentLeavesTheBuffersAlone) {
    for (const Records &records : {legacy_records(), current_records()}) {
        const std::string empty = text_of(with_first_boundary_empty(records));
        clear_send_buffers();
        ImportSettings transport;
        transport.transport_only = true;
        static_cast<void>(import_text(text_of(records), transport));
        EXPECT_EQ(series_of(import_text(empty)).at(0), cleared_buffers) << "transport only";
        clear_send_buffers();
        static_cast<void>(
            import_text(text_of(with(records, "breakpoint of the boundary", "x", 2))));
        EXPECT_EQ(IMPORT_EXPORT.import_error, 1);
        EXPECT_EQ(series_of(import_text(empty)).at(0), cleared_buffers) << "failed";
    }
    clear_send_buffers();
}

TEST(NetworkState, WhatTheHostWritesIntoTheBuffersStays) {
    clear_send_buffers();
    ImportSettings settings;
    settings.before = [](const kova_host::ReceivedCommand &command) {
        const float mark = 7;
        if (command.keyword == "PALLBOUNDFUNC" && command.integer(1) == 1)
            std::memcpy(static_cast<float *>(command.arguments[3]) + 169999, &mark, sizeof mark);
    };
    const Lines series = series_of(import_text(text_of(legacy_records()), settings));
    for (const std::string &line : series)
        EXPECT_TRUE(line.ends_with(" 1*7")) << line;
    clear_send_buffers();
}

TEST(NetworkState, APlaceholderSetsTwoEntriesOfTheBuffersAndNoMore) {
    clear_send_buffers();
    Records records = with(legacy_records(), "breakpoint count of the load", "3");
    records.insert(records.begin() +
                       static_cast<std::ptrdiff_t>(position_of(records, "breakpoint of the load")),
                   {"breakpoint of the load", "6.5 1"});
    records = with(records, "load count", "0", 1);
    records.resize(position_of(records, "load count", 1) + 1);
    records.push_back({"heading of the loads", "Third"});
    records.push_back({"load count", "0"});
    EXPECT_EQ(import_text(text_of(records)).arguments_of("PALLLOADFUNC"),
              (Lines{
                  "int 1, int 2, real[170000] 6.5 7.5 8.5 | 169997*0, "
                  "real[170000] 1 0 30 | 169997*0",
                  "int 2, int 1, real[170000] 0 0 | 1*8.5 169997*0, "
                  "real[170000] 0 0 | 1*30 169997*0",
              }));
}

TEST(NetworkState, AHostThatWritesTheCountsInMidSectionChangesNothing) {
    clear_send_buffers();
    const std::string text = text_of(legacy_records());
    const ImportRun undisturbed = import_text(text);
    import_export_data &data = IMPORT_EXPORT;
    const std::vector<std::pair<std::string_view, std::int32_t *>> writes = {
        {"PFLOWTYPE", &data.segment_count},    {"PNFIELD", &data.flow_field_count},
        {"PNFIELD", &data.segment_count},      {"PJQ", &data.flow_field_count},
        {"PNBRKQ", &data.flow_field_count},    {"PNTEX", &data.flow_field_count},
        {"PIBC", &data.system_count},          {"PNBWK", &data.system_count},
        {"PNBWK", &data.state_variable_count},
    };
    for (const std::int32_t count : {-1, 0, 1, std::numeric_limits<std::int32_t>::max()}) {
        ImportSettings settings;
        settings.before = [&](const kova_host::ReceivedCommand &command) {
            for (const auto &[keyword, member] : writes)
                if (command.keyword == keyword)
                    *member = count;
            // the initial conditions go to as many state variables as there are then
            if (command.keyword == "PTFSREFRESH")
                data.state_variable_count = 2;
        };
        clear_send_buffers();
        EXPECT_EQ(import_text(text, settings).log, undisturbed.log) << count;
    }
}

// Progress is all that is sent while a section reads.
TEST(NetworkState, AHostThatWritesTheCountsWhileBoundariesAreReadChangesNothing) {
    clear_send_buffers();
    const std::string text = text_of(legacy_records());
    const ImportRun undisturbed = import_text(text);
    for (const std::int32_t count : {-1, 0, 1, 3, std::numeric_limits<std::int32_t>::max()}) {
        ImportSettings settings;
        std::int32_t state_variable_count = 0;
        std::int32_t percentage = -1;
        settings.before = [&](const kova_host::ReceivedCommand &command) {
            if (command.keyword != "PPROGRESS")
                return;
            const bool in_section = percentage == 40;
            const std::int32_t shown = command.integer(0);
            if (shown == 40)
                state_variable_count = IMPORT_EXPORT.state_variable_count;
            if (shown == 40 || shown == 50)
                percentage = shown;
            if (in_section && shown != 50) {
                IMPORT_EXPORT.state_variable_count = count;
                IMPORT_EXPORT.system_count = count;
            } else if (in_section) {
                IMPORT_EXPORT.state_variable_count = state_variable_count;
            }
        };
        clear_send_buffers();
        EXPECT_EQ(import_text(text, settings).log, undisturbed.log) << count;
    }
}

TEST(NetworkState, MoreStateVariablesThanSystemsHaveNoBoundariesAndNoLoads) {
    ImportSettings settings;
    settings.before = [&](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PPROGRESS" && command.integer(0) == 40)
            IMPORT_EXPORT.state_variable_count = 40;
    };
    const ImportRun run = import_text(text_of(legacy_records()), settings);
    Lines counts = {"int 1, int 2", "int 2, int 0"};
    for (int system = 3; system <= 40; ++system)
        counts.push_back("int " + std::to_string(system) + ", int 0");
    EXPECT_EQ(run.arguments_of("PNOBC"), counts);
    EXPECT_EQ(run.arguments_of("PSCALW").size(), 38U);
}

TEST(NetworkState, FewerStateVariablesThanSystemsLeaveTheOthersOut) {
    ImportSettings settings;
    settings.before = [&](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PPROGRESS" && command.integer(0) == 40)
            IMPORT_EXPORT.state_variable_count = 1;
    };
    const ImportRun run = import_text(text_of(legacy_records()), settings);
    EXPECT_EQ(run.arguments_of("PNOBC"), Lines{"int 1, int 2"});
    EXPECT_EQ(run.arguments_of("PNBWK"), Lines{"int 1, int 2, int 2"});
    EXPECT_EQ(run.notices_of(IMPORT_EXPORT_CONDITION_UNMET).back().number, 2);
}

TEST(NetworkState, TheScopeIsAskedForWhenItMatters) {
    ImportSettings settings;
    settings.before = [&](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PPROGRESS" && command.integer(0) == 40)
            IMPORT_EXPORT.transport_only = 1;
    };
    const ImportRun run = import_text(text_of(legacy_records()), settings);
    EXPECT_EQ(run.arguments_of("PEXCHANGESREFRESH").size(), 1U);
    EXPECT_TRUE(run.arguments_of("PNOBC").empty());
    EXPECT_TRUE(run.arguments_of("PLOPT").empty());
}

TEST(NetworkState, EverySegmentGetsTheFlowOption) {
    EXPECT_EQ(import_text(text_of(legacy_records())).arguments_of("PFLOWTYPE"),
              (Lines{"int 1, int 3", "int 2, int 3"}));
}

TEST(NetworkState, WithoutSegmentsNoneGetsTheOptionAndTheFileIsSent) {
    for (const char *count : {"0", "-5"}) {
        Records records = with(legacy_records(), "segment count", count);
        std::erase_if(records, [](const Record &record) {
            return record.name == "segment name" || record.name == "segment geometry";
        });
        const ImportRun run = import_text(text_of(records));
        EXPECT_TRUE(run.arguments_of("PFLOWTYPE").empty());
        EXPECT_EQ(run.arguments_of("PHYDROFILE"), Lines{"text[512] \"river flows.hyd\" 497*\" \""});
        EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
    }
}

TEST(CurrentNetworkState, EverySegmentGetsTheOptionOfTheFirst) {
    const ImportRun linked = import_text(text_of(current_records()));
    EXPECT_EQ(linked.arguments_of("PIQOPT"), (Lines{"int 1, int 3", "int 2, int 4"}));
    EXPECT_EQ(linked.arguments_of("PFLOWTYPE"), (Lines{"int 1, int 3", "int 2, int 3"}));
    EXPECT_EQ(linked.arguments_of("PHYDROFILE").size(), 1U);
    // without the linkage the file has no record of it, whatever the second segment has
    Records records = current_records();
    const std::size_t file = position_of(records, "hydrodynamic file");
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(file));
    records = with(records, "segment geometry", "    1    0    1    4");
    records = with(records, "segment geometry", "    2    0    1    3", 1);
    const ImportRun plain = import_text(text_of(records));
    EXPECT_EQ(plain.arguments_of("PFLOWTYPE"), (Lines{"int 1, int 4", "int 2, int 4"}));
    EXPECT_TRUE(plain.arguments_of("PHYDROFILE").empty());
    EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
}

TEST(CurrentNetworkState, WithoutSegmentsNoneGetsAnOption) {
    for (const char *count : {"0", "-5"}) {
        Records records = with(current_records(), "segment count", count);
        std::erase_if(records, [](const Record &record) {
            return record.name == "segment name" || record.name == "segment geometry" ||
                   record.name == "hydrodynamic file";
        });
        const ImportRun run = import_text(text_of(records));
        EXPECT_TRUE(run.arguments_of("PFLOWTYPE").empty());
        EXPECT_TRUE(run.arguments_of("PHYDROFILE").empty());
        EXPECT_EQ(run.arguments_of("PNINQ").size(), 4U) << "flow paths and series";
        EXPECT_EQ(IMPORT_EXPORT.import_error, 0);
    }
}

TEST(CurrentNetworkState, SectionsReplaceTheSharedCounts) {
    // The second flow field and system go away from each section on.
    Records records = with(current_records(), "flow-field count", "1", 1);
    const auto erase = [&records](const char *name, std::size_t occurrence, std::size_t count) {
        const auto place =
            records.begin() + static_cast<std::ptrdiff_t>(position_of(records, name, occurrence));
        records.erase(place, place + static_cast<std::ptrdiff_t>(count));
    };
    erase("caption of the flow field", 3, 2);
    records = with(records, "system count", "1", 1);
    erase("heading of the boundaries", 1, 2);
    records = with(records, "system count", "0", 2);
    erase("heading of the loads", 0,
          position_of(records, "heading of the section", 5) -
              position_of(records, "heading of the loads"));
    std::vector<std::int32_t> field_counts;
    std::vector<std::int32_t> system_counts;
    ImportSettings settings;
    settings.before = [&](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PNFIELD")
            field_counts.push_back(IMPORT_EXPORT.flow_field_count);
        if (command.keyword == "PNUMSYS" || command.keyword == "PNOBC" ||
            command.keyword == "PLOPT" || command.keyword == "PTFSREFRESH")
            system_counts.push_back(IMPORT_EXPORT.system_count);
    };
    const ImportRun run = import_text(text_of(records), settings);
    EXPECT_TRUE(run.notices_of(IMPORT_EXPORT_READ_FAILED).empty());
    EXPECT_EQ(field_counts, (std::vector<std::int32_t>{2, 1}));
    EXPECT_EQ(system_counts, (std::vector<std::int32_t>{2, 1, 0, 0}));
    EXPECT_TRUE(run.arguments_of("PSCALW").empty());
}

TEST(CurrentNetworkState, TheBuffersKeepTheTailsOfLongerSeries) {
    clear_send_buffers();
    Records records = with(current_records(), "load count", "0", 1);
    const auto rest = static_cast<std::ptrdiff_t>(position_of(records, "load count", 1)) + 1;
    const auto next =
        static_cast<std::ptrdiff_t>(position_of(records, "heading of the section", 5));
    records.erase(records.begin() + rest, records.begin() + next);
    // the first load has three breakpoints, of which the placeholder leaves the last
    records = with(records, "breakpoint count of the load", "3");
    records = with(records, "breakpoint of the load", "8.5 30\n6.5 60", 1);
    const Lines expected = {
        "int 1, int 1, real[170000] 0.100000001 0.200000003 | 169998*0, "
        "real[170000] 0 30 | 169998*0",
        "int 1, int 2, real[170000] 0.300000012 | 1*0.200000003 169998*0, "
        "real[170000] 0 | 1*30 169998*0",
        "int 1, int 2, real[170000] 7.5 8.5 6.5 | 169997*0, real[170000] 0 30 60 | 169997*0",
        "int 2, int 1, real[170000] 0 0 | 1*6.5 169997*0, real[170000] 0 0 | 1*60 169997*0",
    };
    EXPECT_EQ(series_of(import_text(text_of(records))), expected);
    // what is left behind is there when the next import of either format starts
    Lines again = expected;
    again[0] = "int 1, int 1, real[170000] 0.100000001 0.200000003 | 1*6.5 169997*0, "
               "real[170000] 0 30 | 1*60 169997*0";
    again[1] = "int 1, int 2, real[170000] 0.300000012 | 1*0.200000003 1*6.5 169997*0, "
               "real[170000] 0 | 1*30 1*60 169997*0";
    EXPECT_EQ(series_of(import_text(text_of(records))), again);
    EXPECT_EQ(series_of(import_text(text_of(legacy_records()))).at(0), again[0]);
    clear_send_buffers();
}

TEST(CurrentNetworkState, AHostThatWritesTheCountsInMidSectionChangesNothing) {
    clear_send_buffers();
    const std::string text = text_of(current_records());
    const ImportRun undisturbed = import_text(text);
    import_export_data &data = IMPORT_EXPORT;
    const std::vector<std::pair<std::string_view, std::int32_t *>> writes = {
        {"PFLOWTYPE", &data.segment_count},  {"PNFIELD", &data.flow_field_count},
        {"PHYDROFILE", &data.segment_count}, {"PJQ", &data.flow_field_count},
        {"PNBRKQ", &data.flow_field_count},  {"PNTEX", &data.flow_field_count},
        {"PNTEX", &data.segment_count},      {"PIBC", &data.system_count},
        {"PNBWK", &data.system_count},       {"PLOPT", &data.segment_count},
    };
    for (const std::int32_t count : {-1, 0, 1, std::numeric_limits<std::int32_t>::max()}) {
        ImportSettings settings;
        std::int32_t percentage = 0;
        settings.before = [&](const kova_host::ReceivedCommand &command) {
            for (const auto &[keyword, member] : writes)
                if (command.keyword == keyword)
                    *member = count;
            // progress is all that is sent while the boundaries are read
            if (command.keyword != "PPROGRESS")
                return;
            const std::int32_t shown = command.integer(0);
            if (percentage == 40 && shown != 50)
                data.system_count = count;
            else
                percentage = shown;
        };
        clear_send_buffers();
        EXPECT_EQ(import_text(text, settings).log, undisturbed.log) << count;
    }
}

TEST(CurrentNetworkState, TheBoundariesAskForTheScopeWhenTheySend) {
    for (const bool at_once : {false, true}) {
        ImportSettings settings;
        bool in_section = false;
        settings.before = [&](const kova_host::ReceivedCommand &command) {
            if (command.keyword != "PPROGRESS")
                return;
            // while the section reads its systems, or before it starts
            if (in_section || (at_once && command.integer(0) == 40))
                IMPORT_EXPORT.transport_only = 1;
            in_section = command.integer(0) == 40;
        };
        const ImportRun run = import_text(text_of(current_records()), settings);
        EXPECT_EQ(run.arguments_of("PEXCHANGESREFRESH").size(), 1U);
        EXPECT_TRUE(run.arguments_of("PNOBC").empty());
        EXPECT_TRUE(run.arguments_of("PLOPT").empty());
        EXPECT_TRUE(run.notices_of(IMPORT_EXPORT_READ_FAILED).empty());
    }
}

} // namespace
} // namespace kova_test
