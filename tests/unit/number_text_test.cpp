#include "control/number_text.h"
#include "control/plain_number.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kova_import {
namespace {

NumberText number_of(std::string_view text) {
    NumberText number;
    for (const char character : text)
        number.push(character);
    return number;
}

std::optional<std::uint32_t> bits_of(std::optional<float> value) {
    if (!value)
        return std::nullopt;
    return std::bit_cast<std::uint32_t>(*value);
}

std::optional<std::int32_t> integer_field(std::string_view field) {
    std::int32_t value = 0;
    return convert_field(field, value) ? std::optional(value) : std::nullopt;
}

std::optional<float> real_field(std::string_view field, std::size_t implied_decimals) {
    float value = 0;
    return convert_field(field, implied_decimals, value) ? std::optional(value) : std::nullopt;
}

/// A plain number from the start of a text; `length` is how much of the text it took.
template <class T>
std::optional<T> plain(std::string_view text, std::size_t &length) {
    const char *first = text.data();
    T value{};
    const bool taken = take_plain_number(first, text.data() + text.size(), value);
    length = static_cast<std::size_t>(first - text.data());
    return taken ? std::optional(value) : std::nullopt;
}

struct RealCase {
    std::string text;
    std::optional<std::uint32_t> bits;
};

std::string zeros(std::size_t count) { return std::string(count, '0'); }

TEST(NumberText, ConvertsRealsToTheNearestSinglePrecisionNumber) {
    const std::vector<RealCase> cases = {
        {"0", 0x00000000},
        {"-0", 0x80000000},
        {"-0.0E5", 0x80000000},
        {"1", 0x3F800000},
        {"+1", 0x3F800000},
        {"1.", 0x3F800000},
        {".5", 0x3F000000},
        {"-.5", 0xBF000000},
        {"1.5", 0x3FC00000},
        {"15e-1", 0x3FC00000},
        {"0.15E1", 0x3FC00000},
        {"1.5+3", 0x44BB8000},
        {"1.5-3", 0x3AC49BA6},
        {"1500d0", 0x44BB8000},
        {"1500D+00", 0x44BB8000},
        {"1.5q3", 0x44BB8000},
        {"1.5Q+3", 0x44BB8000},
        {"0.1", 0x3DCCCCCD},
        {"16777216", 0x4B800000},
        {"16777217", 0x4B800000}, // the middle: to even
        {"16777219", 0x4B800002}, // the middle: to even, upwards
        {"16777217.0000000000000000000000000000000001", 0x4B800001},
        {"3.4028235e38", 0x7F7FFFFF},
        // 2^128 - 2^103, the middle to the next number, which would be infinite
        {"340282356779733661637539395458142568448", std::nullopt},
        {"340282356779733661637539395458142568447.9", 0x7F7FFFFF},
        {"3.5e38", std::nullopt},
        {"-1e39", std::nullopt},
        {"1e99999999999999999999", std::nullopt},
        {"0e99999999999999999999", 0x00000000},
        {"1e-99999999999999999999", 0x00000000},
        {"-1e-60", 0x80000000},
        {"1.17549435e-38", 0x00800000},
        {"1e-45", 0x00000001},
        {"7.1e-46", 0x00000001},
        {"7.0e-46", 0x00000000},
        {"1e-46", 0x00000000},
        {zeros(5000) + "1.5", 0x3FC00000},
        {"0." + zeros(5000) + "15e5001", 0x3FC00000},
        {"15" + zeros(5000) + "e-5001", 0x3FC00000},
        // 1 + 2^-24 is the middle between 1 and the next number; a digit behind 200 zeros decides.
        {"1.000000059604644775390625" + zeros(200), 0x3F800000},
        {"1.000000059604644775390625" + zeros(200) + "1", 0x3F800001},
        {"", std::nullopt},
        {"+", std::nullopt},
        {"-", std::nullopt},
        {".", std::nullopt},
        {"+.", std::nullopt},
        {".e5", std::nullopt},
        {"e5", std::nullopt},
        {"1e", std::nullopt},
        {"1e+", std::nullopt},
        {"1d", std::nullopt},
        {"1+", std::nullopt},
        {"1e5.", std::nullopt},
        {"1.5.2", std::nullopt},
        {"1e5e5", std::nullopt},
        {"--1", std::nullopt},
        {"1,5", std::nullopt},
        {"0x10", std::nullopt},
        {"nan", std::nullopt},
        {"NaN", std::nullopt},
        {"inf", std::nullopt},
        {"-Infinity", std::nullopt},
        {"1;", std::nullopt},
        {"1 5", std::nullopt},
    };
    for (const RealCase &each : cases)
        EXPECT_EQ(bits_of(number_of(each.text).real()), each.bits) << each.text.substr(0, 60);
}

TEST(NumberText, ConvertsIntegersOf32Bits) {
    struct Case {
        std::string text;
        std::optional<std::int32_t> value;
    };
    const std::vector<Case> cases = {
        {"0", 0},
        {"-0", 0},
        {"+7", 7},
        {"-12", -12},
        {zeros(300) + "42", 42},
        {"2147483647", 2147483647},
        {"-2147483648", std::numeric_limits<std::int32_t>::min()},
        {"2147483648", std::nullopt},
        {"-2147483649", std::nullopt},
        {"99999999999", std::nullopt},
        {"1" + zeros(200), std::nullopt},
        {"1.0", std::nullopt},
        {"1.", std::nullopt},
        {"1e2", std::nullopt},
        {"1+2", std::nullopt},
        {"", std::nullopt},
        {"-", std::nullopt},
        {"1a", std::nullopt},
        {"a1", std::nullopt},
    };
    for (const Case &each : cases)
        EXPECT_EQ(number_of(each.text).integer(), each.value) << each.text.substr(0, 60);
}

TEST(NumberText, RoundsImpliedDecimalsOnce) {
    EXPECT_EQ(real_field("12345", 4), 1.2345F);
    EXPECT_EQ(real_field("100000", 5), 1.0F);
    EXPECT_EQ(real_field("12345", 0), 12345.0F);
    // 33554433 lies in the middle of two numbers, and its hundred-thousandth part does not:
    // rounding twice would miss by one.
    EXPECT_EQ(real_field("33554433", 5), 335.54433F);
}

TEST(NumberText, ReadsFixedColumnFields) {
    EXPECT_EQ(integer_field("     "), 0);
    EXPECT_EQ(integer_field(""), 0);
    EXPECT_EQ(integer_field("   12"), 12);
    EXPECT_EQ(integer_field("1 2 3"), 123);
    EXPECT_EQ(integer_field("- 5  "), -5);
    EXPECT_EQ(integer_field("  -  "), std::nullopt);
    EXPECT_EQ(integer_field("1\t2"), std::nullopt);
    EXPECT_EQ(integer_field("1,2"), std::nullopt);
    EXPECT_EQ(integer_field("12."), std::nullopt);
    EXPECT_EQ(integer_field(std::string_view("1\0", 2)), std::nullopt);
    EXPECT_EQ(real_field("          ", 0), 0.0F);
    EXPECT_EQ(real_field("  1 2.5   ", 5), 12.5F);
    EXPECT_EQ(real_field("12E3", 4), 12000.0F); // an exponent: read as written
    EXPECT_EQ(real_field("12+3", 4), 12000.0F);
    EXPECT_EQ(real_field("1.5", 4), 1.5F);
    EXPECT_EQ(real_field("-7", 1), -0.7F);
    EXPECT_EQ(real_field(".", 0), std::nullopt);
    EXPECT_EQ(real_field("+", 0), std::nullopt);
    EXPECT_EQ(real_field("1.5,", 0), std::nullopt);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(*real_field("-0", 5)), 0x80000000U);
}

// The fast path, the long way and the library's conversion agree in every bit.
void expect_all_ways_agree(const std::string &text) {
    float expected = 0;
    const char *const start = text.data() + (text.front() == '+' ? 1 : 0);
    ASSERT_EQ(std::from_chars(start, text.data() + text.size(), expected).ec, std::errc{}) << text;
    ASSERT_EQ(bits_of(number_of(text).real()), bits_of(expected)) << text;
    std::size_t length = 0;
    if (const std::optional<float> value = plain<float>(text, length)) {
        ASSERT_EQ(bits_of(value), bits_of(expected)) << text;
        ASSERT_EQ(length, text.size()) << text;
    }
}

TEST(NumberText, AgreesWithTheLibraryOnDecimalsAsFilesHaveThem) {
    std::mt19937_64 random(20191);
    for (int i = 0; i < 300000; ++i) {
        const auto digits = static_cast<int>(random() % 18) + 1;
        std::string text = random() % 3 == 0 ? "-" : "";
        for (int j = 0; j < digits; ++j)
            text += static_cast<char>('0' + random() % 10);
        if (random() % 4 != 0)
            text.insert(text.size() - random() % static_cast<unsigned>(digits), ".");
        expect_all_ways_agree(text);
    }
}

TEST(NumberText, AgreesWithTheLibraryAroundTheMiddleOfTwoNumbers) {
    std::mt19937_64 random(20192);
    for (int i = 0; i < 100000; ++i) {
        const auto mantissa = static_cast<std::uint32_t>(random() % (1U << 23));
        const auto exponent = static_cast<std::uint32_t>(100 + random() % 60);
        const float value = std::bit_cast<float>((exponent << 23) | mantissa);
        const double middle =
            (static_cast<double>(value) + static_cast<double>(std::nextafter(value, INFINITY))) / 2;
        char buffer[64];
        for (const int precision : {9, 12, 15, 17, 40}) {
            const auto result = std::to_chars(buffer, buffer + sizeof buffer, middle,
                                              std::chars_format::fixed, precision);
            expect_all_ways_agree(std::string(buffer, result.ptr));
        }
    }
}

TEST(NumberText, AgreesWithTheLibraryOnExponents) {
    std::mt19937_64 random(20193);
    for (int i = 0; i < 200000; ++i) {
        std::string text = std::to_string(random() % 10000000);
        if (random() % 2 == 0)
            text.insert(random() % (text.size() + 1), ".");
        if (text == ".")
            continue;
        text += random() % 2 == 0 ? "e" : "E";
        text += std::to_string(static_cast<int>(random() % 61) - 30);
        expect_all_ways_agree(text);
    }
}

TEST(PlainNumber, TakesWhatFilesAreMadeOf) {
    struct Case {
        const char *text;
        float value;
        std::size_t length;
    };
    for (const Case &each : std::vector<Case>{{"12.5 7", 12.5F, 4},
                                              {"-.5,", -0.5F, 3},
                                              {"+3.", 3.0F, 3},
                                              {"1E3/", 1000.0F, 3},
                                              {"1.5e-02x", 0.015F, 7},
                                              {"0.1234E+05\n", 12340.0F, 10}}) {
        std::size_t length = 0;
        EXPECT_EQ(plain<float>(each.text, length), each.value) << each.text;
        EXPECT_EQ(length, each.length) << each.text;
    }
}

TEST(PlainNumber, EndsAtTheCharactersBesideTheDigits) {
    for (const char *text : {"12/", "12:"}) {
        std::size_t length = 0;
        EXPECT_EQ(plain<float>(text, length), 12.0F) << text;
        EXPECT_EQ(length, 2U) << text;
        EXPECT_EQ(plain<std::int32_t>(text, length), 12) << text;
        EXPECT_EQ(length, 2U) << text;
    }
}

TEST(PlainNumber, LeavesWhatNeedsTheLongWayAlone) {
    std::size_t length = 0;
    for (const char *text : {"", "+", ".", "-.", "1234567890123456", "abc", "16777217.0", "1e",
                             "1e+", "1e1234", "1e23", "1e-23"}) {
        EXPECT_EQ(plain<float>(text, length), std::nullopt) << text;
        EXPECT_EQ(length, 0U) << text;
    }
    for (const char *text : {"", "-", "1234567890", "x"}) {
        EXPECT_EQ(plain<std::int32_t>(text, length), std::nullopt) << text;
        EXPECT_EQ(length, 0U) << text;
    }
}

} // namespace
} // namespace kova_import
