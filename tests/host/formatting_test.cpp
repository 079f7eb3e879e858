#include "host_test.h"

#include <cfenv>
#include <clocale>
#include <limits>

namespace {

using namespace host_test;

struct FormattingTest : HostTest {
    static std::string formatted(std::string_view format, std::int32_t value,
                                 std::size_t width = 80) {
        const auto values = send("GSPRINTFI", field("untouched", width), literal(format), value);
        return std::get<Text>(values[0]).bytes;
    }
    static std::string formatted_real(std::string_view format, float value,
                                      std::size_t width = 80) {
        const auto values = send("GSPRINTFR", field("untouched", width), literal(format), value);
        return std::get<Text>(values[0]).bytes;
    }
};

TEST_F(FormattingTest, FormatsIntegers) {
    const struct {
        std::string_view format;
        std::int32_t value;
        std::string_view text;
    } rows[] = {
        {"%d", 0, "0"},
        {"%d", -17, "-17"},
        {"%i", 17, "17"},
        {"%d", std::numeric_limits<std::int32_t>::min(), "-2147483648"},
        {"%d", std::numeric_limits<std::int32_t>::max(), "2147483647"},
        {"Error Reading Import File at Line # %d </span></li>", 42,
         "Error Reading Import File at Line # 42 </span></li>"},
        {"100%% of %d%%", 7, "100% of 7%"},
        {"%%d %d", 7, "%d 7"},
        {"[%5d]", 42, "[   42]"},
        {"[%-5d]", 42, "[42   ]"},
        {"[%05d]", -42, "[-0042]"},
        {"[%-05d]", 42, "[42   ]"},
        {"[%+d]", 42, "[+42]"},
        {"[% d]", 42, "[ 42]"},
        {"[%+ d]", 42, "[+42]"},
        {"[%.4d]", -42, "[-0042]"},
        {"[%8.4d]", -42, "[   -0042]"},
        {"[%08.4d]", 42, "[    0042]"},
        {"[%.0d]", 0, "[]"},
        {"[%+.d]", 0, "[+]"},
        {"[%1d]", 12345, "[12345]"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(formatted(row.format, row.value), field(row.text, 80).bytes) << row.format;
    EXPECT_EQ(host.violation_count(), 0U) << violations();
}

TEST_F(FormattingTest, RefusesOtherIntegerFormats) {
    for (const std::string_view format :
         {"",     "x",   "%",   "%%",  "%d%d", "%d %i", "%s",   "%n",     "%f",
          "%u",   "%x",  "%ld", "%hd", "%lld", "%*d",   "%.*d", "%1000d", "%.1000d",
          "%1$d", "%'d", "%#d", "%5",  "%d %", "%d %s", "%.-1d"}) {
        host.reset();
        EXPECT_EQ(formatted(format, 1), field("untouched", 80).bytes) << format;
        EXPECT_EQ(violations(), "the format is \"" + std::string(format) +
                                    "\", one with a single conversion of the value was expected\n");
    }
}

TEST_F(FormattingTest, AFormatEndsAtItsFirstNul) {
    const auto values = send("GSPRINTFI", field("", 80), Text{std::string("%d\0%s\0", 6)}, 5);
    EXPECT_EQ(std::get<Text>(values[0]).bytes, field("5", 80).bytes);
    EXPECT_EQ(host.violation_count(), 0U);
}

TEST_F(FormattingTest, PadsAndCutsAtTheFieldsLength) {
    EXPECT_EQ(formatted("%d", 3, 132), field("3", 132).bytes);
    const std::string exact(79, 'a');
    EXPECT_EQ(formatted(exact + "%d", 3), exact + "3");
    EXPECT_EQ(formatted(exact + "%d", 34), exact + "3");
    EXPECT_EQ(formatted("%999d", 3, 132), std::string(132, ' '));
    EXPECT_EQ(formatted("%0999d", -3, 132), "-" + std::string(131, '0'));
}

TEST_F(FormattingTest, FormatsReals) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<std::pair<float, std::string_view>> rows = {
        {0.0F, "0.000000"},
        {-0.0F, "-0.000000"},
        {1.5F, "1.500000"},
        {-2.25F, "-2.250000"},
        {0.1F, "0.100000"},
        {16777216.0F, "16777216.000000"},
        {0.0078125F, "0.007812"}, // a tie goes to the even digit
        {0.0234375F, "0.023438"},
        {1e-7F, "0.000000"},
        {-1e-7F, "-0.000000"},
        {std::numeric_limits<float>::max(), "340282346638528859811704183484516925440.000000"},
        {infinity, "inf"},
        {-infinity, "-inf"},
        {nan, "nan"},
        {-nan, "nan"},
    };
    for (const auto &[value, text] : rows) {
        EXPECT_EQ(formatted_real("%f", value), field(text, 80).bytes);
        EXPECT_EQ(formatted_real("%F", value, 132), field(text, 132).bytes);
    }
    EXPECT_EQ(host.violation_count(), 0U);
}

TEST_F(FormattingTest, RefusesOtherRealFormats) {
    for (const std::string_view format :
         {"", "%", "%g", "%d", "%.2f", "%f%f", " %f", "%f ", "%lf"}) {
        host.reset();
        EXPECT_EQ(formatted_real(format, 1), field("untouched", 80).bytes) << format;
        EXPECT_EQ(host.violation_count(), 1U) << format;
    }
}

TEST_F(FormattingTest, IgnoresTheRoundingMode) {
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        ASSERT_EQ(std::fesetround(mode), 0);
        const std::string text = formatted_real("%f", 0.1F);
        const std::string negative = formatted_real("%f", -2.0000003F);
        send("PBEDDT", 0.1F);
        std::fesetround(FE_TONEAREST);
        EXPECT_EQ(text, field("0.100000", 80).bytes);
        EXPECT_EQ(negative, field("-2.000000", 80).bytes);
        EXPECT_NE(log().find("PBEDDT[7] real 0.100000001\n"), std::string::npos);
    }
}

TEST_F(FormattingTest, IgnoresTheLocale) {
    // Where no such locale is installed, the process keeps its own and the expectation stands all
    // the same.
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(formatted_real("%f", 1234.5F), field("1234.500000", 80).bytes);
    std::setlocale(LC_ALL, "C");
}

TEST_F(FormattingTest, GivesTheImportFile) {
    host.set_import_file("a b.inp");
    EXPECT_EQ(std::get<Text>(send("GFILENAME", field("", 512))[0]).bytes,
              field("a b.inp", 512).bytes);
    host.set_import_file(std::string(600, 'p'));
    EXPECT_EQ(std::get<Text>(send("GFILENAME", field("", 512))[0]).bytes, std::string(512, 'p'));
    host.set_import_file("");
    EXPECT_EQ(std::get<Text>(send("GFILENAME", field("x", 512))[0]).bytes, std::string(512, ' '));
}

} // namespace
