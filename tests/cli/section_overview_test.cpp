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
constexpr std::size_t time_functions = 7;
constexpr std::size_t parameters = 8;
constexpr std::size_t constants = 9;
constexpr std::size_t initial_conditions = 10;

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
    EXPECT_EQ(text_of(outcome, time_functions), "1 function, 2 series, 3 breakpoints");
    EXPECT_EQ(text_of(outcome, parameters), "2 parameters, 5 values");
    EXPECT_EQ(text_of(outcome, constants), "3 constants, 1 time function");
    EXPECT_EQ(text_of(outcome, initial_conditions), "1 system, 2 concentrations");
}

TEST(SectionOverview, AnEmptyModelHasNoRemarks) {
    const ImportOutcome outcome = outcome_of({}, 0);
    EXPECT_EQ(text_of(outcome, flow_paths), "0 fields");
    EXPECT_EQ(text_of(outcome, flow_series), "0 breakpoints");
    EXPECT_EQ(text_of(outcome, exchanges), "0 fields");
    EXPECT_EQ(text_of(outcome, boundaries), "0 boundaries");
    EXPECT_EQ(text_of(outcome, loads), "0 loads");
    EXPECT_EQ(text_of(outcome, time_functions), "0 functions");
    EXPECT_EQ(text_of(outcome, parameters), "0 parameters");
    EXPECT_EQ(text_of(outcome, constants), "0 constants");
    EXPECT_EQ(text_of(outcome, initial_conditions), "0 systems");
}

TEST(SectionOverview, LeavesOutWhatThereIsNoneOf) {
    kova_host::Model model;
    model.time_functions = {{37, true, {}}, {38, true, {}}};
    const ImportOutcome outcome = outcome_of(model, 0);
    EXPECT_EQ(text_of(outcome, time_functions), "0 functions");
    EXPECT_EQ(text_of(outcome, constants), "2 time functions");
}

TEST(SectionOverview, ANegativeFieldCountIsNone) {
    kova_host::Model model;
    model.flow_field_count = -3;
    model.exchange_field_count = -3;
    const ImportOutcome outcome = outcome_of(model, 0);
    EXPECT_EQ(text_of(outcome, flow_paths), "0 fields");
    EXPECT_EQ(text_of(outcome, exchanges), "0 fields");
}

TEST(SectionOverview, TellsOne) {
    kova_host::Model model = small_model();
    model.systems[0].loads[0].times_announced = 2;
    const ImportOutcome outcome = outcome_of(model, 1);
    EXPECT_EQ(remarks_text(outcome.sections[flow_paths]), "1 text cut");
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
    EXPECT_EQ(remarks_text(outcome.sections[flow_paths]), "2 texts cut");
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

/// The remarks of a section of which the library has told one thing of each kind.
std::string remarks_on_each_kind(std::int32_t section) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    for (const NoticeKind &kind : notice_kinds())
        if (kind.level != Level::error)
            add_notice(outcome, notice_of(kind.number, section, "Because."));
    describe(outcome, {});
    return remarks_text(outcome.sections[static_cast<std::size_t>(section - 1)]);
}

TEST(SectionOverview, NothingToldOfASectionIsLeftOut) {
    EXPECT_EQ(remarks_on_each_kind(1),
              "1 placeholder, 1 datum replaced by a later one, 1 system bypassed, 1 datum without "
              "a counterpart, 1 name cut, 1 datum converted, 1 datum given a default, 1 other "
              "notice");
    EXPECT_EQ(remarks_on_each_kind(2),
              "1 placeholder, 1 datum replaced by a later one, 1 datum of something that is not "
              "simulated, 1 name dropped, 1 name cut, 1 segment renumbered, 1 datum given a "
              "default, 1 other notice");
    EXPECT_EQ(remarks_on_each_kind(4),
              "1 placeholder, 1 datum replaced by a later one, 1 datum of something that is not "
              "simulated, 1 datum without a counterpart, 1 text cut, 1 datum converted, 1 datum "
              "given a default, 1 other notice");
    EXPECT_EQ(remarks_on_each_kind(8),
              "1 empty series, 1 function replaced by a later one, 1 function of something that is "
              "not simulated, 1 function without a counterpart, 1 name cut, 1 function converted, "
              "1 datum given a default, 1 other notice");
    EXPECT_EQ(remarks_on_each_kind(9),
              "1 placeholder, 1 value replaced by a later one, 1 parameter of something that is "
              "not simulated, 1 parameter without a counterpart, 1 text cut, 1 parameter "
              "converted, 1 datum given a default, 1 other notice");
    EXPECT_EQ(remarks_on_each_kind(10),
              "1 placeholder, 1 constant replaced by a later one, 1 constant of something that is "
              "not simulated, 1 constant without a counterpart, 1 text cut, 1 constant converted, "
              "1 datum given a default, 1 other notice");
    EXPECT_EQ(remarks_on_each_kind(11),
              "1 placeholder, 1 concentration replaced by a later one, 1 system dropped, 1 maximum "
              "concentration dropped, 1 text cut, 1 datum converted, 1 datum given a default, 1 "
              "other notice");
}

TEST(SectionOverview, ChangesAreNoLosses) {
    const ImportOutcome outcome = outcome_of({}, 0);
    for (const SectionOutcome &section : outcome.sections)
        for (const Fact &fact : section.facts) {
            const bool is_change = fact.id == "placeholders" || fact.id == "empty_series" ||
                                   fact.id == "data_defaulted" ||
                                   fact.singular.ends_with("converted") ||
                                   fact.id == "segments_renumbered";
            if (fact.is_remark()) {
                EXPECT_EQ(fact.kind, is_change ? FactKind::changed : FactKind::lost) << fact.id;
            }
        }
}

TEST(SectionOverview, JsonHasAllCountsAlways) {
    const auto sections_of = [](const ImportOutcome &outcome) {
        return Json::parse(import_json(outcome))["summary"]["sections"];
    };
    const Json none = sections_of(outcome_of({}, 0));
    EXPECT_EQ(none[0]["remarks"].dump(),
              R"({"placeholders":0,"data_replaced":0,"systems_bypassed":0,)"
              R"("data_without_counterpart":0,"names_cut":0,"data_converted":0,)"
              R"("data_defaulted":0,"other_notices":0})");
    EXPECT_EQ(none[loads]["remarks"].dump(),
              R"({"placeholders":0,"loads_replaced":0,"systems_dropped":0,"factors_dropped":0,)"
              R"("texts_cut":0,"data_converted":0,"data_defaulted":0,"other_notices":0})");
    EXPECT_EQ(none[time_functions]["brought"].dump(),
              R"({"functions":0,"series":0,"breakpoints":0})");
    EXPECT_EQ(none[time_functions]["remarks"].dump(),
              R"({"empty_series":0,"functions_replaced":0,"functions_not_simulated":0,)"
              R"("functions_without_counterpart":0,"names_cut":0,"functions_converted":0,)"
              R"("data_defaulted":0,"other_notices":0})");
    const Json some = sections_of(outcome_of(small_model(), 3));
    EXPECT_EQ(some[exchanges]["brought"].dump(),
              R"({"fields":3,"functions":1,"pairs":1,"breakpoints":2})");
    EXPECT_EQ(some[exchanges]["remarks"]["data_replaced"], 3);
    EXPECT_EQ(some[exchanges]["remarks"]["descriptions_cut"], 3);
    EXPECT_EQ(some[loads]["brought"].dump(), R"({"loads":1,"breakpoints":3})");
    EXPECT_EQ(some[loads]["remarks"]["placeholders"], 1);
    EXPECT_EQ(some[loads]["remarks"]["loads_replaced"], 2);
    EXPECT_EQ(some[loads]["remarks"]["systems_dropped"], 3);
    EXPECT_EQ(some[parameters]["brought"].dump(), R"({"parameters":2,"values":5})");
    EXPECT_EQ(some[constants]["brought"].dump(), R"({"constants":3,"time_functions":1})");
    EXPECT_EQ(some[initial_conditions]["brought"].dump(), R"({"systems":1,"concentrations":2})");
}

} // namespace
} // namespace kova_command
