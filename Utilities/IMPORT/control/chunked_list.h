#pragma once

#include <cstddef>
#include <vector>

namespace kova_import {

/// A list that grows at its end and is read in its order. Rows are kept in chunks and never move,
/// so that a long list needs no more memory while it grows than for what stands in it.
template <class Row>
class ChunkedList {
  public:
    static constexpr std::size_t chunk_bytes = std::size_t{64} * 1024;
    static constexpr std::size_t rows_of_chunk = chunk_bytes / sizeof(Row);

    /// Throws std::bad_alloc when there is no memory for another chunk.
    void push_back(const Row &row) {
        if (chunks_.empty() || chunks_.back().size() == rows_of_chunk)
            chunks_.emplace_back().reserve(rows_of_chunk);
        chunks_.back().push_back(row);
    }

    [[nodiscard]] std::size_t size() const {
        return chunks_.empty() ? 0 : (chunks_.size() - 1) * rows_of_chunk + chunks_.back().size();
    }

    /// `i` is below `size()`.
    [[nodiscard]] Row &operator[](std::size_t i) {
        return chunks_[i / rows_of_chunk][i % rows_of_chunk];
    }
    [[nodiscard]] const Row &operator[](std::size_t i) const {
        return chunks_[i / rows_of_chunk][i % rows_of_chunk];
    }

    /// Gives all memory back.
    void clear() { chunks_ = {}; }

  private:
    std::vector<std::vector<Row>> chunks_;
};

/// Takes the rows of a list one after the other.
template <class Row>
class RowWalk {
  public:
    explicit RowWalk(const ChunkedList<Row> &list) : list_(&list) {}

    [[nodiscard]] bool at_end() const { return next_ == list_->size(); }
    /// Not at the end.
    const Row &next() { return (*list_)[next_++]; }

  private:
    const ChunkedList<Row> *list_;
    std::size_t next_ = 0;
};

} // namespace kova_import
