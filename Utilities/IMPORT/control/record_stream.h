#pragma once

#include "control/input_file.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace kova_import {

/// A place in the file, as a person counts: from 1, columns in bytes.
struct FilePlace {
    std::int64_t line = 1;
    std::int64_t column = 1;
};

/// A position in the file, to go back to. Offsets are bytes from the start of the file.
struct StreamMark {
    std::int64_t line = 1;
    std::int64_t line_start = 0;
    std::int64_t offset = 0;

    [[nodiscard]] FilePlace place() const { return {line, offset - line_start + 1}; }
};

/// Part of one line, for showing.
struct LineExcerpt {
    std::string_view text;
    std::int64_t column = 1; ///< of its first character
};

/// The import file as lines. It owns the file and one sliding buffer, and it alone knows what ends
/// a line (LF, CR LF or the end of the file) and the file. A line of any length costs no memory.
class RecordStream {
  public:
    static constexpr int end_of_file = -1;

    /// Opens the file and goes to its first line; a UTF-8 byte-order mark is no part of it. Returns
    /// null, or why the file cannot be opened. May throw std::bad_alloc.
    [[nodiscard]] const char *open(std::string_view path);
    void close();
    [[nodiscard]] bool is_open() const { return file_.is_open(); }

    /// The next character, or `end_of_file`.
    [[nodiscard]] int peek() {
        if (cursor_ != end_) [[likely]]
            return static_cast<unsigned char>(*cursor_);
        return refill() ? static_cast<unsigned char>(*cursor_) : end_of_file;
    }

    /// Goes behind the character that `peek` gave, which is no LF.
    void advance() { ++cursor_; }

    /// Goes back to a mark. Says whether the file still has it.
    [[nodiscard]] bool go_back(StreamMark mark);

    /// Goes behind the LF that `peek` gave.
    void advance_line() {
        ++cursor_;
        previous_line_start_ = line_start_;
        line_start_ = offset();
        ++line_;
    }

    /// Goes to the start of the next line, over what is left of this one. At the end of the file it
    /// does nothing.
    void skip_line() {
        if (cursor_ != end_ && *cursor_ == '\n') [[likely]]
            advance_line();
        else
            skip_rest_of_line();
    }

    /// The first `width` bytes of the line from here on, or what there is of it, without its end.
    /// The view holds until the stream moves. `width` is below `longest_view`.
    [[nodiscard]] std::string_view peek_line(std::size_t width);

    /// What of the file is in memory from here on: at least `longest_view` bytes, or all that is
    /// left.
    [[nodiscard]] std::string_view peek_block() {
        if (static_cast<std::size_t>(end_ - cursor_) < longest_view) [[unlikely]]
            refill();
        return {cursor_, static_cast<std::size_t>(end_ - cursor_)};
    }

    /// What of the file is in memory from here on, however little.
    [[nodiscard]] std::string_view in_memory() const {
        return {cursor_, static_cast<std::size_t>(end_ - cursor_)};
    }

    /// Goes `count` bytes on, none of which is an LF, within the last view.
    void advance(std::size_t count) { cursor_ += count; }

    [[nodiscard]] bool at_end_of_file() { return peek() == end_of_file; }

    /// Whether the end that was met is an error of the system.
    [[nodiscard]] bool read_error() const { return read_error_; }

    /// Whether an error of the system hides the end of the present line.
    [[nodiscard]] bool line_is_cut() const {
        return read_error_ && in_memory().find('\n') == std::string_view::npos;
    }

    /// Whether the file starts like a text in UTF-16 or UTF-32.
    [[nodiscard]] bool has_wide_characters() const { return wide_characters_; }

    [[nodiscard]] std::int64_t line() const { return line_; }
    [[nodiscard]] StreamMark mark() const { return {line_, line_start_, offset()}; }
    [[nodiscard]] FilePlace place() const { return mark().place(); }

    /// The place behind the last character of the file, on its last line.
    [[nodiscard]] FilePlace end_place() const;

    /// The line around `place` as far as it is in memory, which may first be filled up.
    [[nodiscard]] LineExcerpt excerpt(FilePlace place);

    static constexpr std::size_t longest_view = 1024;

  private:
    // What lies before the cursor is kept for showing the line of a bad field.
    static constexpr std::size_t history = 256;
    static constexpr std::size_t buffer_size = std::size_t{64} * 1024;

    bool refill();
    void skip_rest_of_line();
    void skip_byte_order_mark();
    [[nodiscard]] std::int64_t offset() const { return buffer_offset_ + (cursor_ - buffer_.get()); }

    InputFile file_;
    std::unique_ptr<char[]> buffer_;
    const char *cursor_ = nullptr;
    const char *end_ = nullptr;
    std::int64_t buffer_offset_ = 0; ///< of the buffer's first byte in the file
    std::int64_t line_ = 1;
    std::int64_t line_start_ = 0; ///< offset in the file
    std::int64_t previous_line_start_ = 0;
    bool all_read_ = true;
    bool read_error_ = false;
    bool wide_characters_ = false;
};

} // namespace kova_import
