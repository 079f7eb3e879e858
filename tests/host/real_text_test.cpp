#include "number_proof.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

using namespace host_test;

void expect_right(std::uint32_t bits) {
    const std::string complaint = complaint_about(bits);
    EXPECT_EQ(complaint, "");
    // The other sign.
    EXPECT_EQ(complaint_about(bits ^ 0x8000'0000U), "");
}

std::string text_of(float value) {
    NumberText text;
    return std::string(text_in(text, kova_host::write_real(text.data(), value)));
}

TEST(RealText, OfAMillionBitPatterns) {
    constexpr std::uint64_t patterns = std::uint64_t{1} << 32U;
    constexpr std::uint64_t step = 4099; // a prime
    for (std::uint64_t bits = 1; bits < patterns && !testing::Test::HasFailure(); bits += step)
        EXPECT_EQ(complaint_about(static_cast<std::uint32_t>(bits)), "");
}

TEST(RealText, AroundPowersOfTwoAndTen) {
    const auto around = [](float value) {
        const auto bits = std::bit_cast<std::uint32_t>(value);
        for (std::uint32_t other = bits - 50; other != bits + 50; ++other)
            expect_right(other);
    };
    for (std::uint32_t exponent = 1; exponent < 255; ++exponent)
        around(std::bit_cast<float>(exponent << 23U));
    for (const float power :
         {1e-10F, 1e-9F, 1e-8F, 1e-7F, 1e-6F, 1e-5F, 1e-4F, 1e-3F, 1e-2F, 1e-1F,
          1e1F,   1e2F,  1e3F,  1e4F,  1e5F,  1e6F,  1e7F,  1e8F,  1e9F,  1e10F})
        around(power);
}

TEST(RealText, WhereTheFastConversionBeginsAndEnds) {
    constexpr float smallest = 1.0F / 536870912.0F;
    constexpr float end = 1e9F;
    EXPECT_TRUE(kova_host::is_plain_real(smallest));
    EXPECT_TRUE(kova_host::is_plain_real(-smallest));
    EXPECT_FALSE(kova_host::is_plain_real(std::nextafter(smallest, 0.0F)));
    EXPECT_FALSE(kova_host::is_plain_real(end));
    EXPECT_TRUE(kova_host::is_plain_real(-std::nextafter(end, 0.0F)));
    EXPECT_FALSE(kova_host::is_plain_real(0.0F));
    EXPECT_FALSE(kova_host::is_plain_real(-0.0F));
    EXPECT_FALSE(kova_host::is_plain_real(std::numeric_limits<float>::infinity()));
    EXPECT_FALSE(kova_host::is_plain_real(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(text_of(smallest), "1.86264515e-09");
    EXPECT_EQ(text_of(std::nextafter(end, 0.0F)), "999999936");
    EXPECT_EQ(text_of(end), "1e+09");
}

// 2^-13 is 0.0001220703125: its nine digits end in 3125, and half of the last one goes to the even.
TEST(RealText, HalvesGoToTheEvenDigit) {
    EXPECT_EQ(text_of(1.0F / 8192), "0.000122070312");
    EXPECT_EQ(text_of(3.0F / 8192), "0.000366210938");
}

TEST(RealText, TrailingZerosAndThePoint) {
    EXPECT_EQ(text_of(-0.5F), "-0.5");
    EXPECT_EQ(text_of(1000000.0F), "1000000");
    EXPECT_EQ(text_of(1000000.5F), "1000000.5");
    EXPECT_EQ(text_of(12.25F), "12.25");
    EXPECT_EQ(text_of(1.0F / 65536), "1.52587891e-05");
    EXPECT_EQ(text_of(5e-5F), "4.99999987e-05");
}

TEST(RealText, Integers) {
    for (const std::int64_t power :
         {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000})
        for (std::int64_t other = power - 2; other < power + 3; ++other)
            for (const std::int64_t integer : {other, -other, other * 2})
                EXPECT_EQ(complaint_about(static_cast<std::uint32_t>(integer)), "") << integer;
    for (const std::int32_t integer :
         {0, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()})
        expect_right(static_cast<std::uint32_t>(integer));
}

} // namespace
