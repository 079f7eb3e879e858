#pragma once

#include "control/chunk_pool.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace kova_import {

/// How rows are packed: word by word, each with a tag of two bits. Only words that are neither
/// zero, nor blank, nor like the word before them take room of their own: a record of a few
/// characters can fill a row of many words, and must not take much more memory than it takes in the
/// file.
template <class Row>
struct RowPacking {
    static_assert(std::is_trivially_copyable_v<Row>);

    using Word = std::uint32_t;
    enum class Tag : unsigned { zero, blank, repeated, literal };

    static constexpr Word blank = 0x20202020;
    static constexpr std::size_t word_count = (sizeof(Row) + sizeof(Word) - 1) / sizeof(Word);
    static constexpr std::size_t tags_of_byte = 4;
    static constexpr std::size_t tag_bytes = (word_count + tags_of_byte - 1) / tags_of_byte;
    static constexpr std::size_t largest = tag_bytes + word_count * sizeof(Word);

    /// Writes the row at `target`, where there is room for the largest, and returns its end.
    static unsigned char *pack(const Row &row, unsigned char *target) {
        std::array<Word, word_count> words{};
        words.back() = blank; // rows that are not whole words end with text
        std::memcpy(words.data(), &row, sizeof(Row));
        std::array<unsigned char, tag_bytes> tags{};
        unsigned char *end = target + tag_bytes;
        Word before = 0;
        for (std::size_t i = 0; i < word_count; ++i) {
            const Tag tag = tag_of(words[i], before);
            before = words[i];
            tags[i / tags_of_byte] = static_cast<unsigned char>(
                tags[i / tags_of_byte] | static_cast<unsigned>(tag) << i % tags_of_byte * 2);
            if (tag != Tag::literal)
                continue;
            std::memcpy(end, &words[i], sizeof(Word));
            end += sizeof(Word);
        }
        std::memcpy(target, tags.data(), tag_bytes);
        return end;
    }

    /// Reads the row at `source` and moves `source` behind it.
    static Row unpack(const unsigned char *&source) {
        const unsigned char *const tags = source;
        source += tag_bytes;
        std::array<Word, word_count> words{};
        Word before = 0;
        for (std::size_t i = 0; i < word_count; ++i) {
            const auto tag = static_cast<Tag>(tags[i / tags_of_byte] >> i % tags_of_byte * 2 & 3U);
            if (tag == Tag::blank) {
                words[i] = blank;
            } else if (tag == Tag::repeated) {
                words[i] = before;
            } else if (tag == Tag::literal) {
                std::memcpy(&words[i], source, sizeof(Word));
                source += sizeof(Word);
            }
            before = words[i];
        }
        Row row;
        std::memcpy(static_cast<void *>(&row), words.data(), sizeof(Row));
        return row;
    }

  private:
    static Tag tag_of(Word word, Word before) {
        if (word == 0)
            return Tag::zero;
        if (word == blank)
            return Tag::blank;
        return word == before ? Tag::repeated : Tag::literal;
    }
};

/// A list that grows at its end and is read in its order only, for rows that are much wider than
/// their shortest record. `Row` has no bytes between its members.
template <class Row>
class PackedList {
  public:
    PackedList() = default;
    PackedList(const PackedList &) = delete;
    PackedList &operator=(const PackedList &) = delete;
    ~PackedList() = default;

    /// Throws std::bad_alloc when there is no memory for another chunk.
    void push_back(const Row &row) {
        if (chunks_.empty() ||
            chunk_pool::chunk_bytes - chunks_.back().size < RowPacking<Row>::largest)
            add_chunk();
        Chunk &chunk = chunks_.back();
        unsigned char *const start = chunk.bytes.get();
        chunk.size =
            static_cast<std::size_t>(RowPacking<Row>::pack(row, start + chunk.size) - start);
        ++size_;
    }

    [[nodiscard]] std::size_t size() const { return size_; }

    void swap(PackedList &other) noexcept {
        chunks_.swap(other.chunks_);
        std::swap(size_, other.size_);
    }

  private:
    template <class Any>
    friend class PackedWalk;

    struct GiveBack {
        void operator()(unsigned char *bytes) const { chunk_pool::give_back(bytes); }
    };
    struct Chunk {
        std::unique_ptr<unsigned char[], GiveBack> bytes;
        std::size_t size = 0;
    };

    void add_chunk() {
        Chunk chunk;
        chunk.bytes.reset(static_cast<unsigned char *>(chunk_pool::take()));
        chunks_.push_back(std::move(chunk));
    }

    std::vector<Chunk> chunks_;
    std::size_t size_ = 0;
};

/// Takes the rows of a packed list one after the other. The list does not grow meanwhile.
template <class Row>
class PackedWalk {
  public:
    explicit PackedWalk(const PackedList<Row> &list) : list_(&list), rows_left_(list.size()) {}

    [[nodiscard]] bool at_end() const { return rows_left_ == 0; }

    /// Not at the end.
    Row next() {
        if (next_ == chunk_end_)
            enter_chunk();
        --rows_left_;
        return RowPacking<Row>::unpack(next_);
    }

  private:
    void enter_chunk() {
        const auto &chunk = list_->chunks_[chunk_++];
        next_ = chunk.bytes.get();
        chunk_end_ = next_ + chunk.size;
    }

    const PackedList<Row> *list_;
    std::size_t chunk_ = 0; ///< the one to be entered next
    std::size_t rows_left_;
    const unsigned char *next_ = nullptr;
    const unsigned char *chunk_end_ = nullptr;
};

} // namespace kova_import
