#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace kova_test {
namespace {

using Lines = std::vector<std::string>;

const Lines segment_keywords = {"PNUMSEG", "PBEDOPT",  "PBEDDT",          "PSCALV",
                                "PCONVV",  "PSEGNAME", "PSEGMENTSREFRESH"};

Lines segment_commands(const ImportRun &run) {
    const auto is_start = [](const std::string &line) { return line.find(" PNUMSEG[") == 1; };
    const auto start = std::find_if(run.log.begin(), run.log.end(), is_start);
    const auto end = std::find(start, run.log.end(), "0 PSEGMENTSREFRESH[17]");
    return end == run.log.end() ? Lines{} : Lines{start, end + 1};
}

ImportSettings without_index() {
    ImportSettings settings;
    settings.index_segment_names = false;
    return settings;
}

TEST(LegacySegments, SendsTheNetworkInOrder) {
    const ImportRun run = import_text(text_of(legacy_records()));
    EXPECT_EQ(segment_commands(run),
              (Lines{
                  "1 PNUMSEG[8] int 2",
                  "1 PBEDOPT[8] int 1",
                  "1 PBEDDT[7] real 0.25",
                  "1 PSCALV[7] real 2",
                  "1 PCONVV[7] real 0.5",
                  "1 PINFOHTML[10] text[51] \"<li><span style=\\\"font-weight: bold; color: "
                  "blue;\\\">\\0\"",
                  "1 PINFOHTML[10] text[42] \"Importing Segment Information</span></li>\\0\"",
                  "2 PSEGNAME[9] int 1, text[40] \"Seg-1-Upper Pool\\0\\0\" 22*\" \"",
                  "2 PBOTSEG[8] int 1, int 2",
                  "2 PSEGTYPE[9] int 1, int 3",
                  "2 PVOLUME[8] int 1, real 10",
                  "2 PVMULT[7] int 1, real 11",
                  "2 PVEXP[6] int 1, real 12",
                  "2 PDMULT[7] int 1, real 13",
                  "2 PDEXP[6] int 1, real 14",
                  "2 PSEGSLOPE[10] int 1, real 16",
                  "2 PSEGLENGTH[11] int 1, real 15",
                  "2 PSEGWIDTH[10] int 1, real 17",
                  "2 PSEGROUGH[10] int 1, real 18",
                  "2 PSEGMINDEPTH[13] int 1, real 19",
                  "2 PSEGNAME[9] int 2, text[40] \"Seg-2-Mouth\\0\\0\" 27*\" \"",
                  "2 PBOTSEG[8] int 2, int 0",
                  "2 PSEGTYPE[9] int 2, int 1",
                  "2 PVOLUME[8] int 2, real 20",
                  "2 PVMULT[7] int 2, real 21",
                  "2 PVEXP[6] int 2, real 22",
                  "2 PDMULT[7] int 2, real 23",
                  "2 PDEXP[6] int 2, real 24",
                  "2 PSEGSLOPE[10] int 2, real 26",
                  "2 PSEGLENGTH[11] int 2, real 25",
                  "2 PSEGWIDTH[10] int 2, real 27",
                  "2 PSEGROUGH[10] int 2, real 28",
                  "2 PSEGMINDEPTH[13] int 2, real 29",
                  "0 PSEGMENTSREFRESH[17]",
              }));
}

TEST(LegacySegments, TellsTheConsoleWhatItReadsAndSets) {
    Lines console = import_text(text_of(legacy_opening())).console;
    console.pop_back(); // the section behind has met the end of the file
    EXPECT_EQ(console,
              (Lines{"Reading Segment: 1 Name: Upper Pool", "Reading Segment: 2 Name: Mouth",
                     "Setting Number of Segments to: 2", "Setting Segment Name: Seg-1-Upper Pool",
                     "Setting Segment Name: Seg-2-Mouth"}));
}

TEST(CurrentSegments, SendsTheNetworkInOrder) {
    const ImportRun run = import_text(text_of(current_records()));
    const Lines commands = segment_commands(run);
    EXPECT_EQ(Lines(commands.begin(), commands.begin() + 27),
              (Lines{
                  "1 PNUMSEG[8] int 2",
                  "1 PBEDOPT[8] int 1",
                  "1 PBEDDT[7] real 0.25",
                  "1 PSCALV[7] real 2",
                  "1 PCONVV[7] real 0.5",
                  "1 PINFOHTML[10] text[51] \"<li><span style=\\\"font-weight: bold; color: "
                  "blue;\\\">\\0\"",
                  "1 PINFOHTML[10] text[42] \"Importing Segment Information</span></li>\\0\"",
                  "2 PSEGNAME[9] int 1, text[40] \"Seg-1-Upper-Pool\\0\\0\" 22*\" \"",
                  "2 PBOTSEG[8] int 1, int 2",
                  "2 PSEGTYPE[9] int 1, int 3",
                  "2 PIQOPT[7] int 1, int 3",
                  "2 PVOLUME[8] int 1, real 10",
                  "2 PVMULT[7] int 1, real 11",
                  "2 PVEXP[6] int 1, real 12",
                  "2 PDMULT[7] int 1, real 13",
                  "2 PDEXP[6] int 1, real 14",
                  "2 PSEGSLOPE[10] int 1, real 16",
                  "2 PSEGLENGTH[11] int 1, real 15",
                  "2 PSEGWIDTH[10] int 1, real 17",
                  "2 PSEGROUGH[10] int 1, real 18",
                  "2 PSEGMINDEPTH[13] int 1, real 19",
                  "2 PINITIALSURFACEELEVATION[25] int 1, real 20",
                  "2 PBOTTOMELEVATION[17] int 1, real 21",
                  "2 PSIDESLOPE[11] int 1, real 22",
                  "2 PINITIALDEPTH[14] int 1, real 23",
                  "2 PWEIRHEIGHT[12] int 1, real 24",
                  "2 GWEIRTYPE[10] int 1, real 25",
              }));
    EXPECT_EQ(commands.size(), 7U + 2U * 20U + 1U);
    for (const std::string &line : run.console)
        EXPECT_TRUE(line.find("Segment:") == std::string::npos &&
                    line.find("Segments to:") == std::string::npos &&
                    line.find("Segment Name:") == std::string::npos)
            << line;
    EXPECT_EQ(run.console.front(), "Reading Boundary Information");
}

TEST(LegacySegments, NamesWithoutTheirNumberCarryTwoNuls) {
    EXPECT_EQ(import_text(text_of(legacy_records()), without_index()).arguments_of("PSEGNAME"),
              (Lines{"int 1, text[40] \"Upper Pool\\0\\0\" 28*\" \"",
                     "int 2, text[40] \"Mouth\\0\\0\" 33*\" \""}));
}

TEST(CurrentSegments, NamesWithoutTheirNumberKeepTheirBlanks) {
    EXPECT_EQ(import_text(text_of(current_records()), without_index()).arguments_of("PSEGNAME"),
              (Lines{"int 1, text[40] \"Upper Pool\\0\\0\" 28*\" \"",
                     "int 2, text[40] \"Mouth\\0\\0\" 33*\" \""}));
}

std::string repeated(char character, std::size_t count) { return std::string(count, character); }

TEST(LegacySegments, LongNamesLoseTheirNulsAndThenTheirEnd) {
    struct Case {
        std::size_t length;
        std::string plain;
        std::string indexed;
    };
    const std::string x = "x";
    for (const Case &each : std::vector<Case>{
             {33, repeated('x', 33) + "\\0\\0     ", "Seg-1-" + repeated('x', 33) + "\\0"},
             {34, repeated('x', 34) + "\\0\\0    ", "Seg-1-" + repeated('x', 34)},
             {38, repeated('x', 38) + "\\0\\0", "Seg-1-" + repeated('x', 34)},
             {39, repeated('x', 39) + "\\0", "Seg-1-" + repeated('x', 34)},
             {40, repeated('x', 40), "Seg-1-" + repeated('x', 34)},
             {70, repeated('x', 40), "Seg-1-" + repeated('x', 34)},
         }) {
        const std::string text =
            text_of(with(legacy_records(), "segment name", "1 " + repeated('x', each.length)));
        EXPECT_EQ(import_text(text, without_index()).arguments_of("PSEGNAME").at(0),
                  "int 1, text[40] \"" + each.plain + "\"");
        EXPECT_EQ(import_text(text).arguments_of("PSEGNAME").at(0),
                  "int 1, text[40] \"" + each.indexed + "\"");
    }
}

TEST(LegacySegments, NamesWithBlanksMustBeQuoted) {
    const Records records = with(legacy_records(), "segment name", "1 Upper Pool");
    EXPECT_EQ(import_text(text_of(records)).arguments_of("PSEGNAME").at(0),
              "int 1, text[40] \"Seg-1-Upper\\0\\0\" 27*\" \"");
}

TEST(LegacySegments, NamesThatAreLeftOutAreNuls) {
    for (const char *record : {"1 /", "1,,", "/"}) {
        const std::string text = text_of(with(legacy_records(), "segment name", record));
        EXPECT_EQ(import_text(text, without_index()).arguments_of("PSEGNAME").at(0),
                  "int 1, text[40] 40*\"\\0\"");
        const ImportRun run = import_text(text);
        EXPECT_EQ(run.arguments_of("PSEGNAME").at(0), "int 1, text[40] \"Seg-1-\" 34*\"\\0\"");
        EXPECT_EQ(run.console.at(0), "Reading Segment: 1 Name: ");
    }
}

TEST(CurrentSegments, NamesThatAreLeftOutAreBlank) {
    const std::string text = text_of(with(current_records(), "segment name", "    1"));
    EXPECT_EQ(import_text(text, without_index()).arguments_of("PSEGNAME").at(0),
              "int 1, text[40] \"\\0\\0\" 38*\" \"");
    EXPECT_EQ(import_text(text).arguments_of("PSEGNAME").at(0),
              "int 1, text[40] \"Seg-1-\\0\\0\" 32*\" \"");
}

TEST(CurrentSegments, BlanksInIndexedNamesBecomeHyphens) {
    Records records = with(current_records(), "segment name", "    1      two  blanks inside");
    records =
        with(records, "segment name",
             "    2     " + repeated('y', 20) + " " + repeated('y', 25) + "beyond column 50", 1);
    EXPECT_EQ(
        import_text(text_of(records)).arguments_of("PSEGNAME"),
        (Lines{"int 1, text[40] \"Seg-1--two--blanks-inside\\0\\0\" 13*\" \"",
               "int 2, text[40] \"Seg-2-" + repeated('y', 20) + "-" + repeated('y', 13) + "\""}));
}

Records many_segments(int count, bool current) {
    Records records = current ? current_records() : legacy_records();
    records = with(records, "segment count", std::to_string(count));
    const std::size_t names = position_of(records, "segment name");
    const std::size_t caption = position_of(records, "caption of the segment geometry");
    records.resize(caption + 1);
    Records result(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(names));
    for (int i = 0; i < count; ++i)
        result.push_back({"segment name", current ? "    1     A B" : "1 'A B'"});
    result.push_back(records[caption]);
    for (int i = 0; i < count; ++i)
        result.push_back({"segment geometry", current ? "" : "1 0 1 10*0.5"});
    return result;
}

TEST(LegacySegments, IndexedNamesHaveGapsAt999And9999) {
    const Lines names = import_text(text_of(many_segments(10000, false))).arguments_of("PSEGNAME");
    ASSERT_EQ(names.size(), 10000U);
    const std::map<int, std::string> expected = {
        {1, "\"Seg-1-A B\\0\\0\" 29*\" \""},
        {9, "\"Seg-9-A B\\0\\0\" 29*\" \""},
        {10, "\"Seg-10-A B\\0\\0\" 28*\" \""},
        {99, "\"Seg-99-A B\\0\\0\" 28*\" \""},
        {100, "\"Seg-100-A B\\0\\0\" 27*\" \""},
        {998, "\"Seg-998-A B\\0\\0\" 27*\" \""},
        {999, "40*\"\\0\""},
        {1000, "\"Seg-1000-A B\\0\\0\" 26*\" \""},
        {9998, "\"Seg-9998-A B\\0\\0\" 26*\" \""},
        {9999, "40*\"\\0\""},
        {10000, "40*\"\\0\""},
    };
    for (const auto &[number, name] : expected)
        EXPECT_EQ(names.at(static_cast<std::size_t>(number - 1)),
                  "int " + std::to_string(number) + ", text[40] " + name);
    const Lines plain =
        import_text(text_of(many_segments(1000, false)), without_index()).arguments_of("PSEGNAME");
    EXPECT_EQ(plain.at(998), "int 999, text[40] \"A B\\0\\0\" 35*\" \"");
}

TEST(LegacySegments, TheConsoleTellsOfASegmentWithoutItsNumberBySendingNoName) {
    const Lines console = import_text(text_of(many_segments(999, false))).console;
    EXPECT_EQ(console.at(998), "Reading Segment: 999 Name: A B");
    EXPECT_EQ(console.at(999), "Setting Number of Segments to: 999");
    EXPECT_EQ(console.at(1000 + 997), "Setting Segment Name: Seg-998-A B");
    EXPECT_EQ(console.at(1000 + 998), "Setting Segment Name: ");
}

TEST(CurrentSegments, IndexedNamesHaveGapsAt999And9999) {
    const Lines names = import_text(text_of(many_segments(10000, true))).arguments_of("PSEGNAME");
    ASSERT_EQ(names.size(), 10000U);
    const std::map<int, std::string> expected = {
        {9, "\"Seg-9-A-B\\0\\0\" 29*\" \""},
        {10, "\"Seg-10-A-B\\0\\0\" 28*\" \""},
        {100, "\"Seg-100-A-B\\0\\0\" 27*\" \""},
        {998, "\"Seg-998-A-B\\0\\0\" 27*\" \""},
        {999, "40*\" \""},
        {1000, "\"Seg-1000-A-B\\0\\0\" 26*\" \""},
        {9998, "\"Seg-9998-A-B\\0\\0\" 26*\" \""},
        {9999, "40*\" \""},
        {10000, "40*\" \""},
    };
    for (const auto &[number, name] : expected)
        EXPECT_EQ(names.at(static_cast<std::size_t>(number - 1)),
                  "int " + std::to_string(number) + ", text[40] " + name);
}

void expect_no_segments(Records records, const char *count) {
    records = with(records, "segment count", count);
    std::erase_if(records, [](const Record &record) {
        return record.name == "segment name" || record.name == "segment geometry";
    });
    const ImportRun run = import_text(text_of(records));
    const Lines commands = segment_commands(run);
    ASSERT_EQ(commands.size(), 8U);
    EXPECT_EQ(commands.front(), std::string("1 PNUMSEG[8] int ") + count);
    for (const Notice &failure : run.notices_of(IMPORT_EXPORT_READ_FAILED))
        EXPECT_EQ(failure.section_name, "flow paths") << "which meets the end of the file";
    EXPECT_EQ(IMPORT_EXPORT.segment_count, std::stoi(count));
}

TEST(LegacySegments, NoneOrNegativeManyAreSentAsRead) {
    expect_no_segments(legacy_opening(), "0");
    expect_no_segments(legacy_opening(), "-7");
}

TEST(CurrentSegments, NoneOrNegativeManyAreSentAsRead) {
    expect_no_segments(current_opening(), "0");
    expect_no_segments(current_opening(), "-7");
}

TEST(Segments, ACountThatIsLeftOutIsNoneAlsoBehindAnImportThatHadSome) {
    for (const bool current : {false, true}) {
        Records records = current ? current_opening() : legacy_opening();
        ASSERT_EQ(import_text(text_of(records)).arguments_of("PNUMSEG"), Lines{"int 2"});
        std::erase_if(records, [](const Record &record) {
            return record.name == "segment name" || record.name == "segment geometry";
        });
        const ImportRun run = import_text(text_of(with(records, "segment count", "/")));
        EXPECT_EQ(run.arguments_of("PNUMSEG"), Lines{"int 0"});
        EXPECT_EQ(run.arguments_of("PSEGMENTSREFRESH"), Lines{""});
    }
}

TEST(Segments, KeepTheirCountWhereALaterRecordFails) {
    for (const Records &records : {legacy_records(), current_records()}) {
        const ImportRun run = import_text(text_of(with(records, "bed-volume option", "x")));
        EXPECT_TRUE(run.arguments_of("PNUMSEG").empty());
        EXPECT_EQ(IMPORT_EXPORT.segment_count, 2);
    }
}

TEST(LegacySegments, TheOrderOfTheRecordsCountsAndNotTheirNumbers) {
    Records records = with(legacy_records(), "segment name", "2 First");
    records = with(records, "segment name", "1 Second", 1);
    records = with(records, "segment geometry", "99 5 5 10*1");
    const ImportRun run = import_text(text_of(records), without_index());
    EXPECT_EQ(run.arguments_of("PSEGNAME").at(0), "int 1, text[40] \"First\\0\\0\" 33*\" \"");
    EXPECT_EQ(run.arguments_of("PBOTSEG").at(0), "int 1, int 5");
}

TEST(LegacySegments, AGeometryRecordMayRunOverLinesAndStillCountsOnce) {
    Records records =
        with(legacy_records(), "segment geometry", "1 2 3 10 11\n12 13 14 15\n\n16 17 18 19");
    EXPECT_EQ(import_text(text_of(records)).arguments_of("PSEGMINDEPTH").at(0), "int 1, real 19");
    records = with(records, "segment geometry", "bad", 1);
    const ImportRun run = import_text(text_of(records));
    const auto position = position_of(records, "segment geometry", 1);
    EXPECT_EQ(run.console.back(),
              "Error Reading Import File at Line: " + std::to_string(position + 2));
    EXPECT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).at(0).line,
              static_cast<std::int64_t>(position + 1 + 3));
}

TEST(LegacySegments, ValuesThatARecordLeavesOutAreZero) {
    const ImportRun run =
        import_text(text_of(with(legacy_records(), "segment geometry", "2 0 /", 1)));
    EXPECT_EQ(run.arguments_of("PSEGTYPE").at(1), "int 2, int 0");
    EXPECT_EQ(run.arguments_of("PVOLUME").at(1), "int 2, real 0");
}

TEST(CurrentSegments, RealsWithoutAPointHaveFiveDecimals) {
    Records records =
        with(current_records(), "segment geometry",
             geometry_line({1, 2, 3, 4}, {"12345", "12345.", "1E2", "-1", "100000", "0", "",
                                          "1 2 3", "7", "8", "9", "10", "11", "12", "13", "14"}));
    const ImportRun run = import_text(text_of(records));
    EXPECT_EQ(run.arguments_of("PVOLUME").at(0), "int 1, real 0.123450004");
    EXPECT_EQ(run.arguments_of("PVMULT").at(0), "int 1, real 12345");
    EXPECT_EQ(run.arguments_of("PVEXP").at(0), "int 1, real 100");
    EXPECT_EQ(run.arguments_of("PDMULT").at(0), "int 1, real -9.99999975e-06");
    EXPECT_EQ(run.arguments_of("PDEXP").at(0), "int 1, real 1");
    EXPECT_EQ(run.arguments_of("PSEGSLOPE").at(0), "int 1, real 0");
    EXPECT_EQ(run.arguments_of("PSEGWIDTH").at(0), "int 1, real 0.00123000005");
}

TEST(CurrentSegments, AShortGeometryRecordIsPaddedWithBlanks) {
    const ImportRun run =
        import_text(text_of(with(current_records(), "segment geometry", "    1    2")));
    EXPECT_EQ(run.arguments_of("PBOTSEG").at(0), "int 1, int 2");
    EXPECT_EQ(run.arguments_of("PIQOPT").at(0), "int 1, int 0");
    EXPECT_EQ(run.arguments_of("GWEIRTYPE").at(0), "int 1, real 0");
}

TEST(LegacySegments, AQuotedNameEndsAtItsQuote) {
    const ImportRun run =
        import_text(text_of(with(legacy_records(), "segment name", "2 'Mouth'x", 1)));
    const Notice notice = run.notices_of(IMPORT_EXPORT_READ_FAILED).at(0);
    EXPECT_EQ(notice.field, "quoted text");
    EXPECT_EQ(notice.column, 3);
    for (const std::string &keyword : segment_keywords)
        EXPECT_TRUE(run.arguments_of(keyword).empty()) << keyword;
}

TEST(Segments, TheEndOfTheFileBeforeTheUnguardedCaptionIsFoundByTheNextRecord) {
    for (const bool current : {false, true}) {
        Records records = current ? current_records() : legacy_records();
        const std::size_t caption = position_of(records, "caption of the segment geometry");
        records.resize(caption);
        const ImportRun run = import_text(text_of(records));
        ASSERT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).size(), 1U);
        EXPECT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED)[0].statement, "segment geometry");
        // both statements have counted
        EXPECT_EQ(run.console.back(),
                  "Error Reading Import File at Line: " + std::to_string(caption + 3));
    }
}

TEST(Segments, WithoutSegmentsTheFileMayEndBeforeTheUnguardedCaption) {
    for (const bool current : {false, true}) {
        Records records =
            with(current ? current_records() : legacy_records(), "segment count", "0");
        records.resize(position_of(records, "segment name"));
        const ImportRun run = import_text(text_of(records));
        // the section behind meets the end of the file, where it is read already
        for (const Notice &failure : run.notices_of(IMPORT_EXPORT_READ_FAILED))
            EXPECT_EQ(failure.section_name, "flow paths");
        EXPECT_EQ(run.arguments_of("PNUMSEG"), Lines{"int 0"});
        EXPECT_EQ(run.arguments_of("PSEGMENTSREFRESH"), Lines{""});
    }
}

TEST(Segments, TheEndOfTheFileInAnyRecordSendsNothingOfTheSection) {
    for (const bool current : {false, true}) {
        const Records records = current ? current_opening() : legacy_opening();
        for (std::size_t i = position_of(records, "segment count"); i < records.size(); ++i) {
            if (records[i].name == "caption of the segment geometry")
                continue;
            const ImportRun run = import_text(
                text_of({records.begin(), records.begin() + static_cast<std::ptrdiff_t>(i)}));
            ASSERT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).size(), 1U);
            EXPECT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED)[0].statement, records[i].name);
            EXPECT_TRUE(run.arguments_of("PNUMSEG").empty());
        }
    }
}

TEST(Segments, AHugeCountEndsWithTheFile) {
    for (const bool current : {false, true}) {
        const ImportRun run = import_text(text_of(
            with(current ? current_records() : legacy_records(), "segment count", "2000000000")));
        EXPECT_TRUE(run.arguments_of("PNUMSEG").empty());
        EXPECT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).at(0).kind, IMPORT_EXPORT_READ_FAILED);
    }
}

TEST(Segments, IgnoreTheOptionForTransportOnly) {
    ImportSettings settings;
    settings.transport_only = true;
    for (const std::string &text : {text_of(legacy_records()), text_of(current_records())})
        EXPECT_EQ(segment_commands(import_text(text, settings)),
                  segment_commands(import_text(text)));
}

} // namespace
} // namespace kova_test
