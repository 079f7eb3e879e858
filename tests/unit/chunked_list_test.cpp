#include "control/chunked_list.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace kova_import {
namespace {

using Numbers = ChunkedList<std::int32_t>;

TEST(ChunkedList, KeepsItsRowsInOrderAcrossChunks) {
    constexpr std::size_t size = 3 * Numbers::rows_of_chunk + 1;
    Numbers numbers;
    for (std::size_t i = 0; i < size; ++i) {
        EXPECT_EQ(numbers.size(), i);
        numbers.push_back(static_cast<std::int32_t>(i));
    }
    RowWalk walk(numbers);
    for (std::size_t i = 0; i < size; ++i) {
        EXPECT_EQ(numbers[i], static_cast<std::int32_t>(i));
        ASSERT_FALSE(walk.at_end());
        EXPECT_EQ(walk.next(), static_cast<std::int32_t>(i));
    }
    EXPECT_TRUE(walk.at_end());
}

TEST(ChunkedList, RowsDoNotMove) {
    Numbers numbers;
    numbers.push_back(1);
    const std::int32_t *const first = &numbers[0];
    for (std::size_t i = 0; i < 5 * Numbers::rows_of_chunk; ++i)
        numbers.push_back(2);
    EXPECT_EQ(&numbers[0], first);
}

TEST(ChunkedList, IsEmptyAgainWhenCleared) {
    Numbers numbers;
    EXPECT_TRUE(RowWalk(numbers).at_end());
    numbers.push_back(1);
    numbers.clear();
    EXPECT_EQ(numbers.size(), 0U);
    EXPECT_TRUE(RowWalk(numbers).at_end());
    numbers.push_back(2);
    EXPECT_EQ(numbers[0], 2);
}

TEST(ChunkedList, SeriesTakeEightBytesAPair) {
    struct Pair {
        float first;
        float second;
    };
    EXPECT_EQ(ChunkedList<Pair>::rows_of_chunk, chunk_pool::chunk_bytes / 8);
}

} // namespace
} // namespace kova_import
