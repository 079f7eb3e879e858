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
    EXPECT_TRUE(run.notices_of(IMPORT_EXPORT_READ_FAILED).empty());
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
    Records shorter = with(legacy_records(), "breakpoint count of the boundary", "0");
    const std::size_t breakpoint = position_of(shorter, "breakpoint of the boundary");
    shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(breakpoint),
                  shorter.begin() + static_cast<std::ptrdiff_t>(breakpoint) + 2);
    EXPECT_EQ(series_of(import_text(text_of(shorter))).at(0),
              "int 1, int 1, real[170000] | 1*9.5 1*8.5 169998*0, "
              "real[170000] | 1*0 1*30 169998*0");
    EXPECT_EQ(import_text(text).log, first.log);
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
        {"PFLOWTYPE", &data.segment_count},    {"PJQ", &data.flow_field_count},
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
        };
        EXPECT_EQ(import_text(text, settings).keywords(), undisturbed.keywords()) << count;
    }
}

} // namespace
} // namespace kova_test
