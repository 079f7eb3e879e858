#include "control/record_stream.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace kova_import {

const char *RecordStream::open(std::string_view path) {
    if (buffer_ == nullptr)
        buffer_ = std::make_unique_for_overwrite<char[]>(buffer_size);
    if (const char *reason = file_.open(path)) {
        close();
        return reason;
    }
    cursor_ = end_ = buffer_.get();
    buffer_offset_ = 0;
    line_ = 1;
    line_start_ = previous_line_start_ = 0;
    all_read_ = read_error_ = false;
    skip_byte_order_mark();
    return nullptr;
}

void RecordStream::close() {
    file_.close();
    buffer_.reset();
    cursor_ = end_ = nullptr;
    all_read_ = true;
}

void RecordStream::skip_byte_order_mark() {
    const std::string_view block = peek_block();
    // A header starts with blanks and digits, so without a mark every other byte is a NUL.
    const auto is_nul = [block](std::size_t i) { return i < block.size() && block[i] == '\0'; };
    wide_characters_ = block.starts_with("\xFF\xFE") || block.starts_with("\xFE\xFF") ||
                       (is_nul(0) && !is_nul(1) && is_nul(2)) ||
                       (!is_nul(0) && is_nul(1) && is_nul(3));
    if (block.starts_with("\xEF\xBB\xBF")) {
        advance(3);
        line_start_ = previous_line_start_ = offset();
    }
}

// Slides what is not yet read, and some of what was, to the front and fills the rest. Says whether
// there is anything to read.
bool RecordStream::refill() {
    if (!all_read_) {
        char *const front = buffer_.get();
        const char *const keep =
            cursor_ - std::min(static_cast<std::ptrdiff_t>(history), cursor_ - front);
        const std::ptrdiff_t moved = keep - front;
        std::memmove(front, keep, static_cast<std::size_t>(end_ - keep));
        cursor_ -= moved;
        end_ -= moved;
        buffer_offset_ += moved;
        while (end_ - cursor_ < static_cast<std::ptrdiff_t>(longest_view)) {
            char *const target = front + (end_ - front);
            const std::optional<std::size_t> count =
                file_.read(target, buffer_size - static_cast<std::size_t>(end_ - front));
            if (!count || *count == 0) {
                read_error_ = !count;
                all_read_ = true;
                break;
            }
            end_ += *count;
        }
    }
    return cursor_ != end_;
}

bool RecordStream::go_back(StreamMark mark) {
    // What stands before the mark in its line comes along, for showing.
    const std::int64_t start =
        std::max(mark.line_start, mark.offset - static_cast<std::int64_t>(history));
    if (!file_.seek(start))
        return false;
    cursor_ = end_ = buffer_.get();
    buffer_offset_ = start;
    line_ = mark.line;
    line_start_ = previous_line_start_ = mark.line_start;
    all_read_ = read_error_ = false;
    const std::string_view block = peek_block();
    const auto before = static_cast<std::size_t>(mark.offset - start);
    advance(std::min(before, block.size()));
    return before <= block.size();
}

void RecordStream::skip_rest_of_line() {
    while (peek() != end_of_file) {
        const void *line_end = std::memchr(cursor_, '\n', static_cast<std::size_t>(end_ - cursor_));
        if (line_end != nullptr) {
            cursor_ = static_cast<const char *>(line_end);
            advance_line();
            return;
        }
        cursor_ = end_;
    }
}

namespace {

/// The first LF of a short text, or its end. Eight bytes at a time, and without a call, since
/// records are short.
const char *find_line_end(const char *first, const char *last) {
    constexpr std::uint64_t ones = 0x0101010101010101;
    for (; last - first >= 8; first += 8) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, first, sizeof bytes);
        bytes ^= ones * '\n';
        if (((bytes - ones) & ~bytes & (ones << 7)) != 0)
            break; // one of them has become 0
    }
    while (first != last && *first != '\n')
        ++first;
    return first;
}

} // namespace

std::string_view RecordStream::peek_line(std::size_t width) {
    // One byte more tells whether a CR in the last column ends the line.
    const std::string_view start = peek_block().substr(0, width + 1);
    const char *const first = start.data();
    const char *const line_end = find_line_end(first, first + start.size());
    if (line_end == first + start.size())
        return start.substr(0, width);
    const bool has_carriage_return = line_end != first && line_end[-1] == '\r';
    return {first, static_cast<std::size_t>(line_end - first) - (has_carriage_return ? 1 : 0)};
}

FilePlace RecordStream::end_place() const {
    if (cursor_ == end_ && offset() == line_start_ && previous_line_start_ < line_start_) {
        // Behind the last line end: a person takes the line before it for the last one. Behind a
        // jump back nobody knows how long that was.
        const bool has_carriage_return =
            offset() - buffer_offset_ >= 2 && cursor_[-2] == '\r' && cursor_[-1] == '\n';
        return {line_ - 1, line_start_ - previous_line_start_ - (has_carriage_return ? 1 : 0)};
    }
    return place();
}

LineExcerpt RecordStream::excerpt(FilePlace place) {
    static_cast<void>(peek_block());
    const std::int64_t start = place.line == line_ ? line_start_ : previous_line_start_;
    if (place.line < line_ - 1 || buffer_ == nullptr)
        return {};
    const std::int64_t field = start + place.column - 1 - buffer_offset_;
    if (field < 0 || field > end_ - buffer_.get())
        return {};
    constexpr std::int64_t shown_before = 160;
    constexpr std::size_t shown = 400;
    const std::int64_t first =
        std::max({start - buffer_offset_, field - shown_before, std::int64_t{0}});
    std::string_view text(buffer_.get() + first,
                          static_cast<std::size_t>(end_ - buffer_.get() - first));
    text = text.substr(0, std::min(shown, text.find('\n')));
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    return {text, first + buffer_offset_ - start + 1};
}

} // namespace kova_import
