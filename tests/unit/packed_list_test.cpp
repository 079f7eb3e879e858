#include "control/packed_list.h"

#include "control/fixed_text.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>

namespace kova_import {
namespace {

struct Mixed {
    FixedText<5> text;
    std::array<char, 3> no_gap{};
    std::int32_t number = 0;
    std::array<float, 3> reals{};
};

struct Wide {
    std::array<std::int32_t, 20> numbers{};
};

std::ptrdiff_t packed_bytes(const Wide &row) {
    std::array<unsigned char, RowPacking<Wide>::largest> room{};
    return RowPacking<Wide>::pack(row, room.data()) - room.data();
}

TEST(PackedList, RowsComeBackBitForBit) {
    PackedList<Mixed> list;
    std::array<Mixed, 4> rows;
    rows[1].text.assign("a\0b");
    rows[1].number = -1;
    rows[1].reals = {-0.0F, 1.5F, 1.5F};
    rows[2].text.assign("12345");
    rows[2].number = std::bit_cast<std::int32_t>(0x20202020U);
    rows[3].reals = {0, 0, 1e-45F};
    for (const Mixed &row : rows)
        list.push_back(row);
    EXPECT_EQ(list.size(), rows.size());
    PackedWalk walk(list);
    for (const Mixed &row : rows) {
        ASSERT_FALSE(walk.at_end());
        const Mixed unpacked = walk.next();
        EXPECT_EQ(unpacked.text.view(), row.text.view());
        EXPECT_EQ(unpacked.number, row.number);
        for (std::size_t i = 0; i < row.reals.size(); ++i)
            EXPECT_EQ(std::bit_cast<std::uint32_t>(unpacked.reals[i]),
                      std::bit_cast<std::uint32_t>(row.reals[i]));
    }
    EXPECT_TRUE(walk.at_end());
}

TEST(PackedList, RowsOfEverySizeCrossChunks) {
    constexpr std::int32_t row_count = 20000;
    const auto row_of = [](std::int32_t i) {
        Wide row;
        for (std::size_t k = 0; k < row.numbers.size(); ++k)
            row.numbers[k] =
                i % 21 > static_cast<std::int32_t>(k) ? i + static_cast<std::int32_t>(k) : 0;
        return row;
    };
    PackedList<Wide> list;
    for (std::int32_t i = 0; i < row_count; ++i)
        list.push_back(row_of(i));
    PackedWalk walk(list);
    for (std::int32_t i = 0; i < row_count; ++i)
        ASSERT_EQ(walk.next().numbers, row_of(i).numbers) << i;
    EXPECT_TRUE(walk.at_end());
}

TEST(PackedList, RowsOfWhatShortRecordsGiveTakeTwoBitsAWord) {
    Wide row;
    EXPECT_EQ(packed_bytes(row), 5);
    row.numbers.fill(0x20202020);
    EXPECT_EQ(packed_bytes(row), 5);
    row.numbers.fill(7);
    EXPECT_EQ(packed_bytes(row), 5 + 4) << "a repeat count takes few characters";
    row.numbers[10] = 8;
    EXPECT_EQ(packed_bytes(row), 5 + 3 * 4);
}

TEST(PackedList, Swaps) {
    PackedList<Wide> one;
    PackedList<Wide> none;
    one.push_back({});
    one.swap(none);
    EXPECT_TRUE(PackedWalk(one).at_end());
    EXPECT_EQ(none.size(), 1U);
}

} // namespace
} // namespace kova_import
