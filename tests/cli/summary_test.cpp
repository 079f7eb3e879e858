#include "cli/summary.h"

#include "outcomes.h"

#include <gtest/gtest.h>

namespace kova_command {
namespace {

kova_host::ModelSettings settings_of(kova_host::Date date, kova_host::TimeOfDay time, float days) {
    kova_host::ModelSettings settings;
    settings.start_date = date;
    settings.start_time = time;
    settings.simulation_length = days;
    return settings;
}

TEST(Summary, TellsThePeriod) {
    EXPECT_EQ(period_text(settings_of({1, 1, 2019}, {}, 365)),
              "2019-01-01 00:00:00 to 2020-01-01 00:00:00 (365 days)");
    EXPECT_EQ(period_text(settings_of({2, 28, 2020}, {12, 30, 5}, 1)),
              "2020-02-28 12:30:05 to 2020-02-29 12:30:05 (1 day)");
    EXPECT_EQ(period_text(settings_of({1, 1, 2000}, {}, 0.25F)),
              "2000-01-01 00:00:00 to 2000-01-01 06:00:00 (0.25 days)");
}

TEST(Summary, TellsAPeriodThatIsNone) {
    EXPECT_EQ(period_text(settings_of({13, 40, 0}, {99, -1, 0}, 10)),
              "month 13, day 40, year 0, 99:-1:00, for 10 days");
    EXPECT_EQ(period_text(settings_of({2, 30, 2019}, {}, 10)),
              "month 2, day 30, year 2019, 0:00:00, for 10 days");
    EXPECT_EQ(period_text(settings_of({1, 1, 2019}, {}, 3e38F)),
              "2019-01-01 00:00:00, for 3e+38 days");
    EXPECT_EQ(period_text(settings_of({1, 1, 2019}, {}, -5)), "2019-01-01 00:00:00, for -5 days");
}

TEST(Summary, TellsWhatEachSectionBrought) {
    EXPECT_EQ(section_text({"x", SectionStatus::imported, {{1, "field", "fields"}, {0, "a", "b"}}}),
              "1 field");
    EXPECT_EQ(section_text({"x", SectionStatus::imported, {{0, "field", "fields"}, {0, "a", "b"}}}),
              "0 fields");
    EXPECT_EQ(section_text({"x", SectionStatus::imported, {}}), "");
    EXPECT_EQ(section_text({"x", SectionStatus::left_out, {}}), "left out as asked");
    EXPECT_EQ(section_text({"x", SectionStatus::not_reached, {}}), "not reached");
}

TEST(Summary, TellsRemarksOnlyWhenThereAreAny) {
    SectionOutcome section{"x",
                           SectionStatus::imported,
                           {{2, "load", "loads"},
                            {0, "placeholder", "placeholders", FactKind::changed},
                            {1, "system dropped", "systems dropped", FactKind::lost, "dropped"}}};
    EXPECT_EQ(brought_text(section), "2 loads");
    EXPECT_EQ(remarks_text(section), "1 system dropped");
    EXPECT_EQ(section_text(section), "2 loads, 1 system dropped");
    section.facts[2].count = 0;
    EXPECT_EQ(remarks_text(section), "");
    EXPECT_EQ(section_text(section), "2 loads");
}

TEST(Summary, CountsEveryKindOfNotice) {
    for (const NoticeKind &kind : notice_kinds()) {
        ImportOutcome outcome = outcome_with(Verdict::imported);
        add_notice(outcome, notice_of(kind.number, 2, "Because."));
        EXPECT_EQ(notices_text(outcome), "1 " + std::string(kind.singular));
        EXPECT_NE(summary_text(outcome, false).find(kind.singular), std::string::npos);
        add_notice(outcome, notice_of(kind.number, 2, "Because."));
        EXPECT_EQ(notices_text(outcome), "2 " + std::string(kind.plural));
    }
    EXPECT_EQ(notices_text(outcome_with(Verdict::imported)), "none");
}

TEST(Summary, NamesTheVerdict) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    EXPECT_EQ(verdict_text(outcome), "imported");
    EXPECT_EQ(check_verdict_text(outcome, false), "river.inp: whole\n");
    add_notice(outcome, notice_of(IMPORT_EXPORT_DEFAULTED, 9, "Because."));
    EXPECT_EQ(verdict_text(outcome), "imported, with changes");
    EXPECT_EQ(check_verdict_text(outcome, false), "river.inp: whole (1 datum given a default)\n");
    add_notice(outcome, notice_of(IMPORT_EXPORT_NOT_IMPORTED, 9, "Because."));
    EXPECT_EQ(verdict_text(outcome), "imported, with warnings");
    EXPECT_EQ(check_verdict_text(outcome, false),
              "river.inp: not whole (1 datum without a counterpart, 1 datum given a default)\n");
}

TEST(Summary, HasALineForEverySection) {
    ImportOutcome outcome = outcome_with(Verdict::imported);
    outcome.header_read = true;
    const std::string text = summary_text(outcome, false);
    for (const SectionDescription &section : section_descriptions())
        EXPECT_NE(text.find("    " + std::string(section.name)), std::string::npos);
}

TEST(ExitStatus, TellsHowTheImportEnded) {
    EXPECT_EQ(exit_status_of(Verdict::imported), 0);
    EXPECT_EQ(exit_status_of(Verdict::stopped), 1);
    EXPECT_EQ(exit_status_of(Verdict::cancelled), 2);
    EXPECT_EQ(exit_status_of(Verdict::not_opened), 3);
    EXPECT_EQ(exit_status_of(Verdict::internal_error), 70);
}

} // namespace
} // namespace kova_command
