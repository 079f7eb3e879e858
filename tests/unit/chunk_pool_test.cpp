#include "control/chunk_pool.h"

#include "control/chunked_list.h"
#include "control/packed_list.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace kova_import {
namespace {

class ChunkPool : public testing::Test {
  protected:
    void TearDown() override { chunk_pool::release(); }
};

TEST_F(ChunkPool, WhatIsGivenBackIsTakenAgain) {
    void *const first = chunk_pool::take();
    void *const second = chunk_pool::take();
    EXPECT_NE(first, second);
    std::memset(first, 1, chunk_pool::chunk_bytes);
    std::memset(second, 2, chunk_pool::chunk_bytes);
    chunk_pool::give_back(first);
    chunk_pool::give_back(second);
    void *const third = chunk_pool::take();
    void *const fourth = chunk_pool::take();
    EXPECT_EQ(third, second);
    EXPECT_EQ(fourth, first);
    chunk_pool::give_back(third);
    chunk_pool::give_back(fourth);
}

TEST_F(ChunkPool, ListsOfAllKindsShareTheChunks) {
    const void *chunk = nullptr;
    {
        ChunkedList<std::int32_t> numbers;
        numbers.push_back(1);
        chunk = &numbers[0];
    }
    PackedList<std::int32_t> packed;
    packed.push_back(1);
    void *const next = chunk_pool::take();
    EXPECT_NE(next, chunk) << "the packed list has it";
    chunk_pool::give_back(next);
}

TEST_F(ChunkPool, ReleaseOfNothingEnds) {
    // more than ever wait in this process
    std::array<void *, 100> chunks{};
    for (void *&chunk : chunks)
        chunk = chunk_pool::take();
    chunk_pool::release();
    for (void *chunk : chunks)
        chunk_pool::give_back(chunk);
}

TEST_F(ChunkPool, ReleaseLeavesWhatListsUse) {
    ChunkedList<std::int32_t> numbers;
    numbers.push_back(7);
    chunk_pool::give_back(chunk_pool::take());
    chunk_pool::release();
    chunk_pool::release();
    EXPECT_EQ(numbers[0], 7);
}

} // namespace
} // namespace kova_import
