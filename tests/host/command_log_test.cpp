#include "host_test.h"

#include <limits>

namespace {

using namespace host_test;
using namespace std::string_literals;

struct CommandLogTest : HostTest {};

TEST_F(CommandLogTest, WritesACommandWithoutArguments) {
    send("PSEGMENTSREFRESH");
    EXPECT_EQ(log(), "0 PSEGMENTSREFRESH[17]\n");
}

TEST_F(CommandLogTest, WritesIntegers) {
    send("PPROGRESS", 5);
    send("PSEEDDATE", -1, std::numeric_limits<std::int32_t>::min(),
         std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(log(), "1 PPROGRESS[10] int 5\n"
                     "3 PSEEDDATE[10] int -1, int -2147483648, int 2147483647\n");
}

TEST_F(CommandLogTest, WritesRealsWithNineSignificantDigits) {
    const std::vector<std::pair<float, std::string>> rows = {
        {125000.5F, "125000.5"},
        {0.1F, "0.100000001"},
        {0.0F, "0"},
        {-0.0F, "-0"},
        {1.0F, "1"},
        {-3.0F, "-3"},
        {100000000.0F, "100000000"},
        {999999936.0F, "999999936"},
        {1e9F, "1e+09"},
        {-1e10F, "-1e+10"},
        {16777217.0F, "16777216"},
        {1e-4F, "9.99999975e-05"},
        {0.001F, "0.00100000005"},
        {std::numeric_limits<float>::max(), "3.40282347e+38"},
        {std::numeric_limits<float>::denorm_min(), "1.40129846e-45"},
        {std::numeric_limits<float>::infinity(), "inf"},
        {-std::numeric_limits<float>::infinity(), "-inf"},
        {std::numeric_limits<float>::quiet_NaN(), "nan"},
        {-std::numeric_limits<float>::quiet_NaN(), "nan"},
    };
    for (const auto &[value, text] : rows) {
        send("PBEDDT", value);
        EXPECT_EQ(log(), "1 PBEDDT[7] real " + text + "\n");
    }
}

TEST_F(CommandLogTest, WritesTexts) {
    send("PSEGNAME", 3, field("Seg-3-Upper Pool\0\0"s, 40));
    EXPECT_EQ(log(), "2 PSEGNAME[9] int 3, text[40] \"Seg-3-Upper Pool\\0\\0\" 22*\" \"\n");
    send("PINFOHTML", literal("Say \"a\\b\"\t\x7f\xf8 ~"));
    EXPECT_EQ(log(), "1 PINFOHTML[10] text[15] \"Say \\\"a\\\\b\\\"\\x09\\x7f\\xf8 ~\\0\"\n");
}

TEST_F(CommandLogTest, WritesRunsOfEightOrMoreBlanksOrNulsApart) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"a"s + std::string(7, ' ') + "b\0"s, "text[10] \"a       b\\0\""},
        {"a"s + std::string(8, ' ') + "b\0"s, "text[11] \"a\" 8*\" \" \"b\\0\""},
        {std::string(7, '\0'), "text[7] \"\\0\\0\\0\\0\\0\\0\\0\""},
        {std::string(8, '\0'), "text[8] 8*\"\\0\""},
        {std::string(9, ' ') + std::string(20, '\0'), "text[29] 9*\" \" 20*\"\\0\""},
        {std::string(8, ' ') + "\0"s, "text[9] 8*\" \" \"\\0\""},
        {"x"s + std::string(8, '\0') + "y"s + std::string(100, '\0'),
         "text[110] \"x\" 8*\"\\0\" \"y\" 100*\"\\0\""},
    };
    for (const auto &[bytes, text] : rows) {
        send("PINFOHTML", Text{bytes});
        EXPECT_EQ(log(), "1 PINFOHTML[10] " + text + "\n");
    }
}

TEST_F(CommandLogTest, WritesAnEmptyText) {
    send("PINFOHTML", Text{});
    EXPECT_EQ(log(), "1 PINFOHTML[10] text[0] \"\"\n");
    EXPECT_EQ(host.violation_count(), 1U);
}

TEST_F(CommandLogTest, WritesTheAnswerOnArrivalAndAsLeft) {
    host.answer_dialogs(kova_host::DialogScript{{0}});
    send("PDIALOG", literal("Set Verbose Option:"), literal("Yes or No?"), literal("Yes"),
         literal("No"), -1);
    EXPECT_EQ(log(),
              "5 PDIALOG[8] text[20] \"Set Verbose Option:\\0\", text[11] \"Yes or No?\\0\", "
              "text[4] \"Yes\\0\", text[3] \"No\\0\", int -1 -> 0\n");
}

TEST_F(CommandLogTest, WritesResultsAsLeft) {
    host.set_import_file("samples/river.inp");
    send("GFILENAME", field("", 512));
    send("GSPRINTFI", field("old", 132), literal("%d"), 12);
    send("GSPRINTFR", field("", 80), literal("%f"), 1.5F);
    EXPECT_EQ(log(),
              "1 GFILENAME[10] text[512] -> \"samples/river.inp\" 495*\" \"\n"
              "3 GSPRINTFI[10] text[132] -> \"12\" 130*\" \", text[3] \"%d\\0\", int 12\n"
              "3 GSPRINTFR[10] text[80] -> \"1.500000\" 72*\" \", text[3] \"%f\\0\", real 1.5\n");
}

TEST_F(CommandLogTest, WritesTheAnnouncedEntriesOfASendBufferAndTheRestAsRuns) {
    SendBuffer values(kova_import::send_buffer_size);
    SendBuffer times(kova_import::send_buffer_size);
    values[0] = 1.5F;
    values[1] = 2;
    values[2] = -0.0F;
    values[169999] = 7;
    times[1] = 1;
    times[2] = std::numeric_limits<float>::quiet_NaN();
    times[3] = -times[2];
    send("PNBFP", 1, 1, 2);
    log();
    send("PALLBOUNDFUNC", 1, 1, &values, &times);
    EXPECT_EQ(log(), "4 PALLBOUNDFUNC[14] int 1, int 1, real[170000] 1.5 2 | 1*-0 169996*0 1*7, "
                     "real[170000] 0 1 | 2*nan 169996*0\n");
}

TEST_F(CommandLogTest, ClampsTheAnnouncedEntries) {
    SendBuffer fives(kova_import::send_buffer_size, 5);
    send("PNBWK", 1, 1, -3);
    log();
    send("PALLLOADFUNC", 1, 1, &fives, &fives);
    EXPECT_EQ(log(), "4 PALLLOADFUNC[13] int 1, int 1, real[170000] | 170000*5, "
                     "real[170000] | 170000*5\n");
    send("PNBWK", 1, 1, 170001);
    log();
    send("PALLLOADFUNC", 1, 1, &fives, &fives);
    std::string all = "real[170000]";
    for (std::size_t count = 0; count < fives.size(); ++count)
        all += " 5";
    all += " |";
    EXPECT_TRUE(log() == "4 PALLLOADFUNC[13] int 1, int 1, " + all + ", " + all + "\n");
    EXPECT_EQ(host.model().systems[0].loads[0].series.size(), 170000U);
}

TEST_F(CommandLogTest, WritesAQuestionMarkForArgumentsOfUnknownKind) {
    send("PNONSENSE", 1, 2);
    send("PNUMSEG", 1, 2);
    send("P\nQ", 1);
    EXPECT_EQ(log(), "2 PNONSENSE[10] ?\n2 PNUMSEG[8] ?\n1 P\\x0aQ[4] ?\n");
}

TEST_F(CommandLogTest, WritesAQuestionMarkForANullReference) {
    send("PVOLUME", Null{}, Null{});
    send("PALLLOADFUNC", 1, 1, Null{}, Null{});
    send("PINFOHTML", Null{});
    EXPECT_EQ(log(), "2 PVOLUME[8] int ?, real ?\n"
                     "4 PALLLOADFUNC[13] int 1, int 1, real[170000] ?, real[170000] ?\n"
                     "1 PINFOHTML[10] text[0] ?\n");
}

TEST_F(CommandLogTest, SendsWholeAndCompletePiecesThroughItsBuffer) {
    std::string expected;
    for (int number = 0; number < 50000; ++number) {
        send("PNUMSEG", number);
        expected += "1 PNUMSEG[8] int " + std::to_string(number) + "\n";
    }
    const std::string huge(2'000'000, 'x');
    send("PINFOHTML", literal(huge));
    expected += "1 PINFOHTML[10] text[2000001] \"" + huge + "\\0\"\n";
    EXPECT_TRUE(log() == expected);
}

// Numbers of every length, so that lines and buffers end in all places of the log's own buffer.
TEST_F(CommandLogTest, WritesNumbersWhereverItsBufferEnds) {
    std::string expected;
    SendBuffer values(kova_import::send_buffer_size);
    std::string entries = "real[170000] |";
    for (std::size_t index = 0; index < values.size(); ++index) {
        const float value = static_cast<float>(index + 1) / (index % 2 == 0 ? 8.0F : -64.0F);
        values[index] = value;
        std::array<char, 64> text{};
        static_cast<void>(
            std::snprintf(text.data(), text.size(), "%.9g", static_cast<double>(value)));
        entries += std::string(" 1*") + text.data();
        if (index % 4 == 0) {
            send("PCONSTPARAM", 1, 2, 3, value);
            expected += std::string("4 PCONSTPARAM[12] int 1, int 2, int 3, real ") + text.data();
            expected += '\n';
        }
    }
    send("PNBFP", 1, 1, 0);
    send("PALLBOUNDFUNC", 1, 1, &values, &values);
    expected += "3 PNBFP[6] int 1, int 1, int 0\n4 PALLBOUNDFUNC[14] int 1, int 1, ";
    EXPECT_TRUE(log() == expected + entries + ", " + entries + '\n');
}

TEST_F(CommandLogTest, EndsWithAnEmptySink) {
    send("PPROGRESS", 1);
    host.log_to({});
    send("PPROGRESS", 2);
    EXPECT_EQ(log(), "1 PPROGRESS[10] int 1\n");
}

} // namespace
