#pragma once

// Text of a model file, made without anything that differs from machine to machine: numbers are
// integers until they are digits, and random numbers come from a generator of our own.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace kova_import::bench {

/// The same numbers for the same seed, everywhere.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    /// From 0 up to, and without, `limit`, which is at most 2^32.
    std::int64_t below(std::int64_t limit) {
        return static_cast<std::int64_t>(((next() >> 32U) * static_cast<std::uint64_t>(limit)) >>
                                         32U);
    }

  private:
    std::uint64_t next() {
        std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15U;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    std::uint64_t state_;
};

/// A number with a fixed number of decimals: 12345 with 4 decimals is 1.2345.
struct Decimal {
    std::int64_t scaled = 0;
    int decimals = 4;
};

/// Text that goes to a file in large pieces. `finish()` says whether all of it arrived.
class ModelText {
  public:
    explicit ModelText(std::FILE *file) : file_(file) {}

    ModelText &text(std::string_view text);
    /// Padded with blanks behind it.
    ModelText &text(std::string_view text, std::size_t width);
    /// Padded with blanks before it, as are the other numbers.
    ModelText &number(std::int64_t number, std::size_t width = 0);
    ModelText &number(Decimal number, std::size_t width = 0);
    void end_line() { *room(1) = '\n'; }
    void line(std::string_view line) { text(line).end_line(); }

    /// A free-form record of one integer, with a remark behind it.
    void count(std::int64_t count, std::string_view remark);

    /// Characters so far.
    [[nodiscard]] std::int64_t size() const { return written_ + static_cast<std::int64_t>(size_); }

    [[nodiscard]] bool finish();

  private:
    static constexpr std::size_t most_digits = 24;

    /// Room for so many more characters.
    char *room(std::size_t size) {
        if (buffer_.size() - size_ < size)
            write_out();
        char *const start = buffer_.data() + size_;
        size_ += size;
        return start;
    }
    void write_out();

    std::FILE *file_;
    bool failed_ = false;
    std::int64_t written_ = 0;
    std::size_t size_ = 0;
    std::array<char, std::size_t{256} * 1024> buffer_{};
};

} // namespace kova_import::bench
