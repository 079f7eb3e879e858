#include "control/record_stream.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace kova_import {

const char *RecordStream::open(std::string_view path) {
    close();
    if (const char *reason = file_.open(path))
        return reason;
    try {
        buffer_ = std::make_unique_for_overwrite<char[]>(buffer_size);
    } catch (...) {
        close();
        throw;
    }
    cursor_ = end_ = buffer_.get();
    buffer_offset_ = 0;
    line_ = 1;
    line_start_ = previous_line_start_ = 0;
    all_read_ = read_error_ = utf16_ = false;
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
    utf16_ = block.starts_with("\xFF\xFE") || block.starts_with("\xFE\xFF");
    if (block.starts_with("\xEF\xBB\xBF")) {
        advance(3);
        line_start_ = offset();
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

bool RecordStream::go_back(LineMark mark) {
    if (!file_.seek(mark.offset))
        return false;
    cursor_ = end_ = buffer_.get();
    buffer_offset_ = line_start_ = previous_line_start_ = mark.offset;
    line_ = mark.line;
    all_read_ = read_error_ = false;
    return true;
}

void RecordStream::skip_line() {
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

std::string_view RecordStream::peek_line(std::size_t width) {
    const std::string_view block = peek_block();
    // One byte more tells whether a CR in the last column ends the line.
    const std::string_view start = block.substr(0, width + 1);
    const std::size_t line_end = start.find('\n');
    if (line_end == std::string_view::npos)
        return start.substr(0, width);
    const std::size_t length =
        line_end != 0 && start[line_end - 1] == '\r' ? line_end - 1 : line_end;
    return start.substr(0, length);
}

FilePlace RecordStream::end_place() const {
    if (offset() == line_start_ && line_ > 1) {
        // Behind the last line end: a person takes the line before it for the last one.
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
