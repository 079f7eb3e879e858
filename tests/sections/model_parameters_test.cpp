#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

/// Everything that a section may send beside the report.
const Lines model_keywords = {"PFILENAME",       "PMODELTYPE",    "PSEEDTIME",
                              "PSEEDDATE",       "PHYDSKIPDATE",  "PHYDSKIPTIME",
                              "PENDJULIAN",      "PNUMSYS",       "PSYSNAME",
                              "PSYSTEMSREFRESH", "PSOLUTIONTYPE", "PNEGSLN",
                              "PICRD",           "PINTYP",        "PFRACMAXTS",
                              "PMAXDT",          "PMINDT",        "PMODELOUTPUTINTERVAL"};

bool sends_any(const ImportRun &run, const Lines &keywords) {
    return std::any_of(keywords.begin(), keywords.end(), [&run](const std::string &keyword) {
        return !run.arguments_of(keyword).empty();
    });
}

bool shows(const ImportRun &run, std::string_view text) {
    return std::any_of(run.log.begin(), run.log.end(), [text](const std::string &line) {
        return line.find(text) != std::string::npos;
    });
}

/// The cells of the table of model parameters.
Lines formatted_values(const ImportRun &run) {
    Lines values = run.arguments_of("GSPRINTFI");
    const Lines reals = run.arguments_of("GSPRINTFR");
    values.insert(values.end(), reals.begin(), reals.end());
    return values;
}

Lines system_names(const ImportRun &run) {
    Lines names;
    for (const std::string &arguments : run.arguments_of("PSYSNAME")) {
        const std::size_t start = arguments.find('"') + 1;
        const std::string name = arguments.substr(start, arguments.find('"', start) - start);
        names.push_back(name.substr(0, name.find_last_not_of(" \\0") + 1));
    }
    return names;
}

TEST(LegacyModelParameters, SendsTheModelInOrder) {
    const ImportRun run = import_text(text_of(legacy_records()));
    const Lines keywords = run.keywords();
    const auto start = std::find(keywords.begin(), keywords.end(), "PFILENAME");
    Lines expected = model_keywords;
    expected.insert(std::find(expected.begin(), expected.end(), "PSYSTEMSREFRESH"), "PSYSNAME");
    ASSERT_GE(static_cast<std::size_t>(keywords.end() - start), expected.size());
    EXPECT_EQ(Lines(start, start + static_cast<std::ptrdiff_t>(expected.size())), expected);

    EXPECT_EQ(run.arguments_of("PMODELTYPE"), Lines{"int 11"});
    EXPECT_EQ(run.arguments_of("PSEEDTIME"), Lines{"int 4, int 5, int 6"});
    EXPECT_EQ(run.arguments_of("PSEEDDATE"), Lines{"int 1, int 2, int 2003"});
    EXPECT_EQ(run.arguments_of("PHYDSKIPDATE"), Lines{"int 7, int 8, int 2009"});
    EXPECT_EQ(run.arguments_of("PHYDSKIPTIME"), Lines{"int 10, int 11, int 12"});
    EXPECT_EQ(run.arguments_of("PENDJULIAN"), Lines{"real 365.5"});
    EXPECT_EQ(run.arguments_of("PNUMSYS"), Lines{"int 2"});
    EXPECT_EQ(run.arguments_of("PSYSNAME"),
              (Lines{"int 1, text[31] \"Ammonia\" 23*\" \" \"\\0\", text[6] \"NH-34\\0\"",
                     "int 2, text[31] \"Nitrate/Nitrite\" 15*\" \" \"\\0\", "
                     "text[6] \"NO3O2\\0\""}));
    EXPECT_EQ(run.arguments_of("PSOLUTIONTYPE"), Lines{"int 1"});
    EXPECT_EQ(run.arguments_of("PNEGSLN"), Lines{"int 2"});
    EXPECT_EQ(run.arguments_of("PICRD"), Lines{"int 3"});
    EXPECT_EQ(run.arguments_of("PINTYP"), Lines{"int 4"});
    EXPECT_EQ(run.arguments_of("PFRACMAXTS"), Lines{"real 0.75"});
}

TEST(LegacyModelParameters, MinimumTimeStepIsTheFirstOfItsRecordAlthoughItIsSentSecond) {
    const ImportRun run = import_text(text_of(legacy_records()));
    EXPECT_EQ(run.arguments_of("PMAXDT"), Lines{"real 0.5"});
    EXPECT_EQ(run.arguments_of("PMINDT"), Lines{"real 0.125"});
}

TEST(LegacyModelParameters, TheLastOutputIntervalWins) {
    const ImportRun run = import_text(text_of(legacy_records()));
    EXPECT_EQ(run.arguments_of("PMODELOUTPUTINTERVAL"), Lines{"real 0.25"});
    EXPECT_EQ(run.arguments_of("GSPRINTFR").at(1),
              "text[132] -> \"0.250000\" 124*\" \", text[3] \"%F\\0\", real 0.25");
}

TEST(LegacyModelParameters, ShowsTheTableBeforeTheBypassRecordIsRead) {
    const ImportRun run = import_text(text_of(with(legacy_records(), "bypass flags", "0 0 x")));
    EXPECT_TRUE(shows(run, "KOVA7 Model Parameters"));
    EXPECT_TRUE(shows(run, "Adv. Eutrophication"));
    EXPECT_EQ(formatted_values(run).size(), 6U);
    EXPECT_FALSE(shows(run, "State Variables Imported"));
    EXPECT_FALSE(sends_any(run, model_keywords));
}

TEST(LegacyModelParameters, ShowsItsValues) {
    const ImportRun run = import_text(text_of(legacy_records()));
    EXPECT_EQ(run.arguments_of("GSPRINTFI"),
              (Lines{"text[132] -> \"1\" 131*\" \", text[3] \"%d\\0\", int 1",
                     "text[132] -> \"2\" 131*\" \", text[3] \"%d\\0\", int 2",
                     "text[132] -> \"2003\" 128*\" \", text[3] \"%d\\0\", int 2003",
                     "text[132] -> \"3\" 131*\" \", text[3] \"%d\\0\", int 3"}));
    EXPECT_EQ(run.arguments_of("GSPRINTFR").at(0),
              "text[132] -> \"365.500000\" 122*\" \", text[3] \"%f\\0\", real 365.5");
}

TEST(LegacyModelParameters, OtherModelTypesHaveNoStateVariables) {
    for (const int type : {8, 7}) {
        const ImportRun run = import_text(
            text_of(with(legacy_records(), "header", "    " + std::to_string(type) + "      2")));
        EXPECT_EQ(run.arguments_of("PNUMSYS"), Lines{"int 0"});
        EXPECT_TRUE(run.arguments_of("PSYSNAME").empty());
        EXPECT_EQ(run.arguments_of("PSYSTEMSREFRESH").size(), 1U);
        EXPECT_EQ(shows(run, "Advanced Toxicant"), type == 8);
        EXPECT_FALSE(shows(run, "Adv. Eutrophication"));
        EXPECT_EQ(shows(run, "1 PINFOHTML[10] text[133] 132*\" \" \"\\0\""), type == 7);
        EXPECT_EQ(IMPORT_EXPORT.state_variable_count, 0);
        EXPECT_EQ(IMPORT_EXPORT.ammonia_present, 0);
    }
}

TEST(LegacyModelParameters, NumbersStateVariablesWithoutGaps) {
    Records records = with(legacy_records(), "system count", "12");
    records = with(records, "bypass flags", "7*0 1 0 1 2*0");
    const ImportRun run = import_text(text_of(records));
    EXPECT_EQ(run.arguments_of("PNUMSYS"), Lines{"int 10"});
    EXPECT_EQ(system_names(run), (Lines{"Ammonia", "Nitrate/Nitrite", "Diss Org N", "Inorganic P",
                                        "Diss Org P", "Inorganic Si", "Organic Si", "CBOD-2",
                                        "Dissolved Oxygen", "Detrital Carbon"}));
    EXPECT_EQ(run.arguments_of("PSYSNAME").at(7),
              "int 8, text[31] \"CBOD-2\" 24*\" \" \"\\0\", text[6] \"CBODU\\0\"");
    EXPECT_EQ(IMPORT_EXPORT.cbod_count, 1);
}

TEST(LegacyModelParameters, KnowsAll28SystemsAndNoMore) {
    Records records = with(legacy_opening(), "system count", "40");
    records = with(records, "bypass flags", "20*0\n20*0");
    const ImportRun run = import_text(text_of(records));
    EXPECT_EQ(run.arguments_of("PNUMSYS"), Lines{"int 28"});
    EXPECT_EQ(system_names(run), (Lines{"Ammonia",         "Nitrate/Nitrite",  "Diss Org N",
                                        "Inorganic P",     "Diss Org P",       "Inorganic Si",
                                        "Organic Si",      "CBOD-1",           "CBOD-2",
                                        "CBOD-3",          "Dissolved Oxygen", "Detrital Carbon",
                                        "Detrital N",      "Detrital P",       "Detrital Si",
                                        "Total Detritus",  "Salinity",         "Benthic Algae",
                                        "Benthic Algae-N", "Benthic Algae-P",  "Solid 1",
                                        "Solid 2",         "Solid 3",          "Phytoplankton 1",
                                        "Phytoplankton 2", "Phytoplankton 3",  "pH",
                                        "Alkalinity"}));
    const import_export_data &data = IMPORT_EXPORT;
    for (const std::int32_t flag :
         {data.ammonia_present, data.nitrate_present, data.organic_nitrogen_present,
          data.inorganic_phosphorus_present, data.organic_phosphorus_present,
          data.inorganic_silica_present, data.organic_silica_present, data.oxygen_present,
          data.detrital_carbon_present, data.detrital_nitrogen_present,
          data.detrital_phosphorus_present, data.detrital_silica_present,
          data.total_detritus_present, data.salinity_present, data.benthic_algae_present,
          data.benthic_algae_nitrogen_present, data.benthic_algae_phosphorus_present,
          data.ph_present, data.alkalinity_present})
        EXPECT_EQ(flag, 1);
    EXPECT_EQ(data.cbod_count, 3);
    EXPECT_EQ(data.solids_count, 3);
    EXPECT_EQ(data.phytoplankton_count, 3);
    EXPECT_EQ(data.system_count, 40);
}

TEST(LegacyModelParameters, EachSystemSetsItsOwnFlagOrCount) {
    struct Case {
        int system;
        std::int32_t import_export_data::*member;
    };
    using Data = import_export_data;
    const std::vector<Case> cases = {{1, &Data::ammonia_present},
                                     {2, &Data::nitrate_present},
                                     {3, &Data::organic_nitrogen_present},
                                     {4, &Data::inorganic_phosphorus_present},
                                     {5, &Data::organic_phosphorus_present},
                                     {6, &Data::inorganic_silica_present},
                                     {7, &Data::organic_silica_present},
                                     {8, &Data::cbod_count},
                                     {9, &Data::cbod_count},
                                     {10, &Data::cbod_count},
                                     {11, &Data::oxygen_present},
                                     {12, &Data::detrital_carbon_present},
                                     {13, &Data::detrital_nitrogen_present},
                                     {14, &Data::detrital_phosphorus_present},
                                     {15, &Data::detrital_silica_present},
                                     {16, &Data::total_detritus_present},
                                     {17, &Data::salinity_present},
                                     {18, &Data::benthic_algae_present},
                                     {19, &Data::benthic_algae_nitrogen_present},
                                     {20, &Data::benthic_algae_phosphorus_present},
                                     {21, &Data::solids_count},
                                     {22, &Data::solids_count},
                                     {23, &Data::solids_count},
                                     {24, &Data::phytoplankton_count},
                                     {25, &Data::phytoplankton_count},
                                     {26, &Data::phytoplankton_count},
                                     {27, &Data::ph_present},
                                     {28, &Data::alkalinity_present}};
    // the systems of a class stand together
    std::vector<std::int32_t Data::*> members;
    for (const Case &each : cases)
        if (members.empty() || members.back() != each.member)
            members.push_back(each.member);
    for (const Case &each : cases) {
        std::string flags;
        for (int system = 1; system <= 28; ++system)
            flags += system == each.system ? "0 " : "1 ";
        const Records records =
            with(with(legacy_records(), "system count", "28"), "bypass flags", flags);
        static_cast<void>(import_text(text_of(records)));
        EXPECT_EQ(IMPORT_EXPORT.*each.member, 1) << each.system;
        std::int32_t sum = 0;
        for (const auto member : members)
            sum += IMPORT_EXPORT.*member;
        EXPECT_EQ(sum, 1) << each.system;
    }
}

TEST(LegacyModelParameters, NoSystemsHaveAnEmptyBypassRecord) {
    for (const char *count : {"0", "-3"}) {
        const Records records =
            with(with(legacy_opening(), "system count", count), "bypass flags", "any text at all");
        const ImportRun run = import_text(text_of(records));
        EXPECT_EQ(run.arguments_of("PNUMSYS"), Lines{"int 0"});
        EXPECT_EQ(run.arguments_of("PNUMSEG"), Lines{"int 2"});
        EXPECT_EQ(IMPORT_EXPORT.system_count, std::stoi(count));
    }
}

TEST(LegacyModelParameters, FlagsThatTheRecordLeavesOutMeanSimulated) {
    const ImportRun run = import_text(text_of(with(legacy_records(), "bypass flags", "1 /")));
    EXPECT_EQ(system_names(run), (Lines{"Nitrate/Nitrite", "Diss Org N"}));
}

TEST(LegacyModelParameters, TakesThePlacesOfAHugeCountWithoutMemory) {
    const Records records =
        with(with(legacy_records(), "system count", "2000000000"), "bypass flags", "2000000000*0");
    EXPECT_EQ(import_text(text_of(records)).arguments_of("PNUMSYS"), Lines{"int 28"});
}

/// A guarded record, a text that cannot be read there, and the field that is to blame.
struct Fault {
    const char *record;
    std::size_t occurrence;
    const char *text;
    const char *field;
    std::int64_t column;
    const char *found;
};

void expect_fault(const Records &records, const Fault &fault, bool in_pane) {
    const ImportRun run =
        import_text(text_of(with(records, fault.record, fault.text, fault.occurrence)));
    const auto position =
        static_cast<std::int64_t>(position_of(records, fault.record, fault.occurrence));
    // the counter starts at 1 and is advanced before each read
    const std::string counter = std::to_string(position + 2);
    ASSERT_FALSE(run.console.empty()) << fault.record;
    EXPECT_EQ(run.console.back(), "Error Reading Import File at Line: " + counter) << fault.record;
    ASSERT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).size(), 1U) << fault.record;
    const Notice notice = run.notices_of(IMPORT_EXPORT_READ_FAILED)[0];
    EXPECT_EQ(notice.kind, IMPORT_EXPORT_READ_FAILED);
    EXPECT_EQ(notice.statement, fault.record);
    EXPECT_EQ(notice.statement_number, position + 2);
    EXPECT_EQ(notice.line, position + 1);
    EXPECT_EQ(notice.column, fault.column) << fault.record;
    EXPECT_EQ(notice.field, fault.field) << fault.record;
    EXPECT_EQ(notice.found, fault.found) << fault.record;
    EXPECT_EQ(notice.width, static_cast<std::int64_t>(notice.found.size()));
    EXPECT_EQ(notice.line_text, fault.text);
    EXPECT_FALSE(notice.expected.empty());
    EXPECT_EQ(IMPORT_EXPORT.import_error, 1);

    const auto error_line = std::find_if(run.log.begin(), run.log.end(), [](const auto &line) {
        return line.find("text[80] -> ") != std::string::npos;
    });
    ASSERT_EQ(error_line != run.log.end(), in_pane) << fault.record;
    if (!in_pane)
        return;
    const std::string message = "Error Reading Import File at Line # " + counter + " </span></li>";
    const std::string padding = std::to_string(80 - message.size()) + "*\" \"";
    const Lines expected = {
        "3 GSPRINTFI[10] text[80] -> \"" + message + "\" " + padding +
            ", text[52] \"Error Reading Import File at Line # %d </span></li>\\0\", int " + counter,
        "1 PINFOHTML[10] text[51] \"<li><span style=\\\"font-weight: bold; color: "
        "blue;\\\">\\0\"",
        "1 PINFOHTML[10] text[80] \"" + message + "\" " + padding,
    };
    EXPECT_EQ(Lines(error_line, error_line + 3), expected);
}

const std::vector<Fault> faults_of_both_formats = {
    {"start of the simulation", 0, "1 2 2003 4 x 6", "start minute", 12, "x"},
    {"start of the simulation", 0, "1.5 2 2003 4 5 6", "start month", 1, "1.5"},
    {"hydrodynamic skip date", 0, "7 8 '2009' 10 11 12", "skip year", 5, "'2009'"},
    {"simulation length", 0, "year", "simulation length", 1, "year"},
    {"system count", 0, "99999999999", "system count", 1, "99999999999"},
    {"option behind the system count", 0, "0*1", "repeat count", 1, "0"},
    {"solution type", 0, "one", "solution type", 1, "one"},
    {"negative-solution option", 0, "1;2", "negative-solution option", 1, "1;2"},
    {"ICRD option", 0, "-", "ICRD option", 1, "-"},
    {"INTYP option", 0, " 0x1", "INTYP option", 2, "0x1"},
    {"option behind INTYP", 0, "NaN", "option behind INTYP", 1, "NaN"},
    {"fraction of the maximum time step", 0, "Inf", "fraction of the maximum time step", 1, "Inf"},
    {"time-step limits", 0, "0.125 1e99", "maximum time step", 7, "1e99"},
    {"time-step limits", 0, "1e 0.5", "minimum time step", 1, "1e"},
};

TEST(LegacyModelParameters, AFaultInAnyRecordStopsTheImport) {
    for (const Fault &fault : faults_of_both_formats)
        expect_fault(legacy_records(), fault, false);
    for (const Fault &fault : std::vector<Fault>{
             {"output-interval count", 0, "two", "output-interval count", 1, "two"},
             {"output interval", 0, "x 1.5", "time", 1, "x"},
             {"output interval", 1, "10 .", "output interval", 4, "."},
             {"bypass flags", 0, "0 0 yes", "bypass flag", 5, "yes"},
             {"count of the first skipped block", 0, "many", "count of the first skipped block", 1,
              "many"},
             {"count of the second skipped block", 0, "1.", "count of the second skipped block", 1,
              "1."},
         })
        expect_fault(legacy_records(), fault, false);
}

TEST(CurrentModelParameters, AFaultInAnyRecordStopsTheImport) {
    for (const Fault &fault : faults_of_both_formats)
        expect_fault(current_records(), fault, true);
    expect_fault(current_records(), {"output interval", 0, "1d", "output interval", 1, "1d"}, true);
}

// Cuts the file in front of every record of the opening block, and sees which statement finds its
// end.
void expect_end_at_every_record(const Records &records, std::size_t block_size) {
    for (std::size_t i = 1; i < block_size; ++i) {
        if (records[i].name == "title")
            continue; // the record behind it finds the end
        const ImportRun run = import_text(
            text_of({records.begin(), records.begin() + static_cast<std::ptrdiff_t>(i)}));
        ASSERT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).size(), 1U) << records[i].name;
        EXPECT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED)[0].statement, records[i].name);
        EXPECT_EQ(run.console.back(),
                  "Error Reading Import File at Line: " + std::to_string(i + 2));
        EXPECT_FALSE(sends_any(run, model_keywords)) << records[i].name;
    }
}

TEST(LegacyModelParameters, TheEndOfTheFileInAnyRecordStopsTheImport) {
    expect_end_at_every_record(legacy_records(), position_of(legacy_records(), "segment count"));
}

TEST(CurrentModelParameters, TheEndOfTheFileInAnyRecordStopsTheImport) {
    expect_end_at_every_record(current_records(),
                               position_of(current_records(), "heading of the section"));
}

TEST(CurrentModelParameters, SendsEverySystemOfTheFile) {
    const ImportRun run = import_text(text_of(current_records()));
    EXPECT_EQ(run.arguments_of("PNUMSYS"), Lines{"int 2"});
    EXPECT_EQ(run.arguments_of("PSYSNAME"),
              (Lines{"int 1, text[31] \"Ammonia\" 23*\" \" \"\\0\", text[6] \"NH-34\\0\"",
                     "int 2, text[31] \"Dissolved Oxygen\" 14*\" \" \"\\0\", "
                     "text[6] \"DISOX\\0\""}));
    EXPECT_TRUE(shows(run, "KOVA8 Model Parameters"));
    EXPECT_TRUE(shows(run, "KOVA 8 State Variables Imported"));
    EXPECT_EQ(run.arguments_of("PMODELOUTPUTINTERVAL"), Lines{"real 0.25"});
    EXPECT_EQ(IMPORT_EXPORT.state_variable_count, 0);
    EXPECT_EQ(IMPORT_EXPORT.ammonia_present, 0);
}

TEST(CurrentModelParameters, TheModelTypeOnlySelectsTheNameInTheTable) {
    for (const int type : {11, 8, 3}) {
        const std::string number = (type < 10 ? "    " : "   ") + std::to_string(type);
        const ImportRun run =
            import_text(text_of(with(current_records(), "header", number + "      3")));
        EXPECT_EQ(run.arguments_of("PSYSNAME").size(), 2U);
        EXPECT_EQ(shows(run, "Adv. Eutrophication"), type == 11);
        EXPECT_EQ(shows(run, "Advanced Toxicant"), type == 8);
    }
}

TEST(CurrentModelParameters, WithoutSystemsStillRefreshes) {
    for (const char *count : {"0", "-2"}) {
        Records records = with(current_records(), "system count", count);
        records.erase(records.begin() +
                          static_cast<std::ptrdiff_t>(position_of(records, "system name")),
                      records.begin() +
                          static_cast<std::ptrdiff_t>(position_of(records, "system name", 1)) + 1);
        const ImportRun run = import_text(text_of(records));
        EXPECT_EQ(run.arguments_of("PNUMSYS"), Lines{std::string("int ") + count});
        EXPECT_TRUE(run.arguments_of("PSYSNAME").empty());
        EXPECT_EQ(run.arguments_of("PSYSTEMSREFRESH").size(), 1U);
        EXPECT_EQ(run.arguments_of("PNUMSEG"), Lines{"int 2"});
    }
}

TEST(CurrentModelParameters, SystemNamesAreSentAsTheyStand) {
    Records records = with(current_records(), "system name", "AB");
    records = with(records, "system name", " x y z?????  A name that is longer than 30 columns", 1);
    EXPECT_EQ(import_text(text_of(records)).arguments_of("PSYSNAME"),
              (Lines{"int 1, text[31] 30*\" \" \"\\0\", text[6] \"AB   \\0\"",
                     "int 2, text[31] \"?  A name that is longer than \\0\", text[6] \" x y "
                     "\\0\""}));
}

TEST(CurrentModelParameters, ATitleMayBeAnything) {
    for (const char *title :
         {"A river", "'quoted, with / everything'", "'tis open", "0*x", "/", ","})
        EXPECT_EQ(
            import_text(text_of(with(current_records(), "title", title))).arguments_of("PNUMSEG"),
            Lines{"int 2"})
            << title;
}

TEST(CurrentModelParameters, AHugeCountOfSystemsEndsWithTheFile) {
    const ImportRun run =
        import_text(text_of(with(current_records(), "system count", "2000000000")));
    EXPECT_TRUE(run.arguments_of("PNUMSYS").empty());
    EXPECT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).at(0).statement, "system name");
    EXPECT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).at(0).reason,
              "The file ends here, but the section is not complete.");
}

} // namespace
} // namespace kova_test
