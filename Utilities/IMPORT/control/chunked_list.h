#pragma once

#include "control/chunk_pool.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace kova_import {

/// A list that grows at its end and is read in its order. Rows are kept in chunks and never move,
/// so that a long list needs no more memory while it grows than for what stands in it.
template <class Row>
class ChunkedList {
    static_assert(std::is_trivially_copyable_v<Row> && std::is_trivially_destructible_v<Row>);

  public:
    static constexpr std::size_t rows_of_chunk = chunk_pool::chunk_bytes / sizeof(Row);

    constexpr ChunkedList() = default;
    ChunkedList(const ChunkedList &) = delete;
    ChunkedList &operator=(const ChunkedList &) = delete;
    ~ChunkedList() = default;

    /// Throws std::bad_alloc when there is no memory for another chunk.
    void push_back(const Row &row) {
        if (next_ == chunk_end_)
            add_chunk();
        std::construct_at(next_++, row);
    }

    [[nodiscard]] std::size_t size() const {
        return chunks_.size() * rows_of_chunk - static_cast<std::size_t>(chunk_end_ - next_);
    }

    /// `i` is below `size()`.
    [[nodiscard]] Row &operator[](std::size_t i) {
        return chunks_[i / rows_of_chunk].get()[i % rows_of_chunk];
    }
    [[nodiscard]] const Row &operator[](std::size_t i) const {
        return chunks_[i / rows_of_chunk].get()[i % rows_of_chunk];
    }

    /// Gives all chunks back.
    void clear() {
        chunks_ = std::vector<Chunk>();
        next_ = chunk_end_ = nullptr;
    }

  private:
    template <class Any>
    friend class RowWalk;

    struct GiveBack {
        void operator()(Row *rows) const { chunk_pool::give_back(rows); }
    };
    using Chunk = std::unique_ptr<Row, GiveBack>; ///< rows behind the last one do not exist yet

    void add_chunk() {
        Chunk chunk(static_cast<Row *>(chunk_pool::take()));
        chunks_.push_back(std::move(chunk));
        next_ = chunks_.back().get();
        chunk_end_ = next_ + rows_of_chunk;
    }

    std::vector<Chunk> chunks_;
    Row *next_ = nullptr; ///< place of the next row in the last chunk
    Row *chunk_end_ = nullptr;
};

/// Takes the rows of a list one after the other. The list does not grow meanwhile.
template <class Row>
class RowWalk {
  public:
    explicit RowWalk(const ChunkedList<Row> &list) : list_(&list), rows_left_(list.size()) {}

    [[nodiscard]] bool at_end() const { return next_ == chunk_end_ && rows_left_ == 0; }

    /// Not at the end.
    const Row &next() {
        if (next_ == chunk_end_)
            enter_chunk();
        return *next_++;
    }

  private:
    void enter_chunk() {
        const std::size_t rows = std::min(rows_left_, ChunkedList<Row>::rows_of_chunk);
        next_ = list_->chunks_[chunk_++].get();
        chunk_end_ = next_ + rows;
        rows_left_ -= rows;
    }

    const ChunkedList<Row> *list_;
    std::size_t chunk_ = 0; ///< the one to be entered next
    std::size_t rows_left_; ///< in chunks that have not been entered
    const Row *next_ = nullptr;
    const Row *chunk_end_ = nullptr;
};

} // namespace kova_import
