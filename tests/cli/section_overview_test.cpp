#include "cli/section_overview.h"

#include "cli/diagnostics.h"
#include "cli/json_output.h"
#include "cli/summary.h"

#include "outcomes.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

namespace kova_command {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t flow_paths = 2;
constexpr std::size_t flow_series = 3;
constexpr std::size_t exchanges = 4;
constexpr std::size_t boundaries = 5;
constexpr std::size_t loads = 6;

/// An outcome with `model` and so many notices of each of the kinds that are counted by section.
ImportOutcome outcome_of(const kova_host::Model &model, int times) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    for (int i = 0; i < times; ++i) {
        add_notice(outcome, notice_of(IMPORT_EXPORT_CUT, 3, "Cut."));
        add_notice(outcome, notice_of(IMPORT_EXPORT_REPLACED, 4, "Changed."));
        add_notice(outcome, notice_of(IMPORT_EXPORT_REPLACED, 5, "Changed."));
        add_notice(outcome, notice_of(IMPORT_EXPORT_CUT, 5, "Cut."));
        for (const std::int32_t section : {6, 7}) {
            add_notice(outcome, notice_of(IMPORT_EXPORT_CONDITION_UNMET, section, "Dropped."));
            add_notice(outcome, notice_of(IMPORT_EXPORT_NOT_IMPORTED, section, "Not sent."));
        }
    }
    describe(outcome, model);
    return outcome;
}

std::string text_of(const ImportOutcome &outcome, std::size_t section) {
    return section_text(outcome.sections[section]);
}

TEST(SectionOverview, CountsWhatTheHostHolds) {
    const ImportOutcome outcome = outcome_of(small_model(), 0);
    EXPECT_EQ(text_of(outcome, 0), "2 systems");
    EXPECT_EQ(text_of(outcome, 1), "2 segments");
    EXPECT_EQ(text_of(outcome, flow_paths), "2 fields, 1 function, 2 pairs");
    EXPECT_EQ(text_of(outcome, flow_series), "3 breakpoints");
    EXPECT_EQ(text_of(outcome, exchanges), "3 fields, 1 function, 1 pair, 2 breakpoints");
    EXPECT_EQ(text_of(outcome, boundaries), "2 boundaries, 3 breakpoints");
    EXPECT_EQ(text_of(outcome, loads),
              "1 load, 3 breakpoints, 1 placeholder, 2 loads replaced by later ones");
}

TEST(SectionOverview, AnEmptyModelHasNoRemarks) {
    const ImportOutcome outcome = outcome_of({}, 0);
    EXPECT_EQ(text_of(outcome, flow_paths), "0 fields, 0 functions, 0 pairs");
    EXPECT_EQ(text_of(outcome, flow_series), "0 breakpoints");
    EXPECT_EQ(text_of(outcome, exchanges), "0 fields, 0 functions, 0 pairs, 0 breakpoints");
    EXPECT_EQ(text_of(outcome, boundaries), "0 boundaries, 0 breakpoints");
    EXPECT_EQ(text_of(outcome, loads), "0 loads, 0 breakpoints");
}

TEST(SectionOverview, ANegativeFieldCountIsNone) {
    kova_host::Model model;
    model.flow_field_count = -3;
    model.exchange_field_count = -3;
    const ImportOutcome outcome = outcome_of(model, 0);
    EXPECT_EQ(text_of(outcome, flow_paths), "0 fields, 0 functions, 0 pairs");
    EXPECT_EQ(text_of(outcome, exchanges), "0 fields, 0 functions, 0 pairs, 0 breakpoints");
}

TEST(SectionOverview, TellsOne) {
    kova_host::Model model = small_model();
    model.systems[0].loads[0].times_announced = 2;
    const ImportOutcome outcome = outcome_of(model, 1);
    EXPECT_EQ(remarks_text(outcome.sections[flow_paths]), "1 description cut");
    EXPECT_EQ(remarks_text(outcome.sections[flow_series]), "1 datum replaced by a later one");
    EXPECT_EQ(remarks_text(outcome.sections[exchanges]),
              "1 datum replaced by a later one, 1 description cut");
    EXPECT_EQ(remarks_text(outcome.sections[boundaries]), "1 system dropped, 1 factor dropped");
    EXPECT_EQ(remarks_text(outcome.sections[loads]),
              "1 placeholder, 1 load replaced by a later one, 1 system dropped, 1 factor dropped");
}

TEST(SectionOverview, TellsMany) {
    kova_host::Model model = small_model();
    for (const char *name : {"Nitrate", "Phosphate", "Detritus"})
        model.systems.push_back(system_without_loads(name));
    const ImportOutcome outcome = outcome_of(model, 2);
    EXPECT_EQ(remarks_text(outcome.sections[flow_paths]), "2 descriptions cut");
    EXPECT_EQ(remarks_text(outcome.sections[flow_series]), "2 data replaced by later ones");
    EXPECT_EQ(text_of(outcome, boundaries),
              "2 boundaries, 3 breakpoints, 2 systems dropped, 2 factors dropped");
    EXPECT_EQ(text_of(outcome, loads), "1 load, 3 breakpoints, 4 placeholders, 2 loads replaced by "
                                       "later ones, 2 systems dropped, 2 factors dropped");
}

TEST(SectionOverview, NoticesOfOtherSectionsDoNotCount) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    for (const std::int32_t section : {1, 5, 7})
        add_notice(outcome, notice_of(IMPORT_EXPORT_CONDITION_UNMET, section, "Dropped."));
    for (const std::int32_t section : {0, 12, -1, 2147483647}) {
        Notice notice = notice_of(IMPORT_EXPORT_CONDITION_UNMET, 1, "Dropped.");
        notice.section = section;
        add_notice(outcome, notice);
    }
    describe(outcome, {});
    EXPECT_EQ(remarks_text(outcome.sections[boundaries]), "");
    EXPECT_EQ(remarks_text(outcome.sections[loads]), "1 system dropped");
    EXPECT_EQ(kind_count(outcome, IMPORT_EXPORT_CONDITION_UNMET), 7);
}

// Notices beyond those that are kept are counted all the same.
TEST(SectionOverview, CountsNoticesThatAreNotKept) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    for (std::size_t i = 0; i < most_notices; ++i)
        add_notice(outcome, notice_of(IMPORT_EXPORT_REPLACED, 4, "Changed."));
    add_notice(outcome, notice_of(IMPORT_EXPORT_CONDITION_UNMET, 6, "Dropped."));
    describe(outcome, {});
    EXPECT_EQ(dropped_notice_count(outcome), 1);
    EXPECT_EQ(remarks_text(outcome.sections[boundaries]), "1 system dropped");
}

TEST(SectionOverview, JsonHasRemarksAlways) {
    const auto sections_of = [](const ImportOutcome &outcome) {
        return Json::parse(import_json(outcome))["summary"]["sections"];
    };
    const Json none = sections_of(outcome_of({}, 0));
    EXPECT_EQ(none[0]["remarks"].dump(), "{}");
    EXPECT_EQ(none[flow_paths]["remarks"].dump(), R"({"descriptions_cut":0})");
    EXPECT_EQ(none[flow_series]["remarks"].dump(), R"({"data_replaced":0})");
    EXPECT_EQ(none[exchanges]["remarks"].dump(), R"({"data_replaced":0,"descriptions_cut":0})");
    EXPECT_EQ(none[boundaries]["remarks"].dump(), R"({"systems_dropped":0,"factors_dropped":0})");
    EXPECT_EQ(none[loads]["remarks"].dump(), R"({"placeholders":0,"loads_replaced":0,)"
                                             R"("systems_dropped":0,"factors_dropped":0})");
    const Json some = sections_of(outcome_of(small_model(), 3));
    EXPECT_EQ(some[exchanges]["brought"].dump(),
              R"({"fields":3,"functions":1,"pairs":1,"breakpoints":2})");
    EXPECT_EQ(some[loads]["brought"].dump(), R"({"loads":1,"breakpoints":3})");
    EXPECT_EQ(some[loads]["remarks"].dump(), R"({"placeholders":1,"loads_replaced":2,)"
                                             R"("systems_dropped":3,"factors_dropped":3})");
}

} // namespace
} // namespace kova_command
