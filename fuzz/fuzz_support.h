#pragma once

// What the fuzz targets share: broken invariants, a file in memory, and where things stand in it.

#include "control/record_stream.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace kova_fuzz {

/// Ends the process, with a sentence, when an invariant is broken.
inline void require(bool holds, const char *invariant) {
    if (holds) [[likely]]
        return;
    std::fprintf(stderr, "broken invariant: %s\n", invariant);
    std::abort();
}

/// One file in memory, which the library can open by its path.
class MemoryFile {
  public:
    MemoryFile() : handle_(memfd_create("fuzz", MFD_CLOEXEC)) {
        require(handle_ >= 0, "the system gives a file in memory");
    }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    ~MemoryFile() { close(handle_); }

    void write(std::string_view text) {
        require(ftruncate(handle_, 0) == 0, "the file can be emptied");
        std::size_t written = 0;
        while (written < text.size()) {
            const ssize_t count = pwrite(handle_, text.data() + written, text.size() - written,
                                         static_cast<off_t>(written));
            require(count > 0 || (count < 0 && errno == EINTR), "the file can be written");
            written += count > 0 ? static_cast<std::size_t>(count) : 0;
        }
    }

    [[nodiscard]] std::string path() const { return "/proc/self/fd/" + name(); }
    /// The file's name in the folder of its path.
    [[nodiscard]] std::string name() const { return std::to_string(handle_); }

  private:
    int handle_;
};

/// The lines of a text, found in the plainest way. A byte-order mark of UTF-8 is no part of them.
class TextLines {
  public:
    explicit TextLines(std::string_view text) : text_(text) {
        constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
        std::size_t start = text.starts_with(byte_order_mark) ? byte_order_mark.size() : 0;
        for (;;) {
            const std::size_t end = text.find('\n', start);
            starts_.push_back(start);
            if (end == std::string_view::npos)
                return;
            start = end + 1;
        }
    }

    [[nodiscard]] std::int64_t count() const { return static_cast<std::int64_t>(starts_.size()); }
    [[nodiscard]] bool has(std::int64_t line) const { return line >= 1 && line <= count(); }

    [[nodiscard]] std::int64_t offset(std::int64_t line) const {
        return static_cast<std::int64_t>(starts_[static_cast<std::size_t>(line - 1)]);
    }

    /// The line without its LF; a CR before that belongs to it.
    [[nodiscard]] std::string_view line(std::int64_t number) const {
        const auto row = static_cast<std::size_t>(number - 1);
        const std::size_t start = starts_[row];
        const bool is_last = row + 1 == starts_.size();
        return text_.substr(start, is_last ? text_.npos : starts_[row + 1] - 1 - start);
    }

    /// What stands from `place` on, line ends included.
    [[nodiscard]] std::string_view behind(kova_import::FilePlace place) const {
        return text_.substr(static_cast<std::size_t>(offset(place.line) + place.column - 1));
    }

    /// Whether `place` is a byte of a line, or the place just behind a line.
    [[nodiscard]] bool has(kova_import::FilePlace place) const {
        return has(place.line) && place.column >= 1 &&
               place.column <= static_cast<std::int64_t>(line(place.line).size()) + 1;
    }

    /// Behind the last character, on the line that a person takes for the last one.
    [[nodiscard]] kova_import::FilePlace end_place() const {
        std::int64_t last = count();
        std::string_view text = line(last);
        if (text.empty() && last > 1) {
            text = line(--last);
            if (text.ends_with('\r'))
                text.remove_suffix(1);
        }
        return {last, static_cast<std::int64_t>(text.size()) + 1};
    }

  private:
    std::string_view text_;
    std::vector<std::size_t> starts_;
};

/// What a person is shown of a failed read.
struct ShownFailure {
    kova_import::FilePlace place;
    std::int64_t width = 0;
    std::string_view found;
    std::string_view line_text;
    std::int64_t line_text_column = 1;
};

/// The place is in the file, or just behind it, and what is shown is what stands there.
inline void check_shown_failure(const ShownFailure &shown, const TextLines &lines) {
    require(lines.has(shown.place), "a failure lies in the file or just behind it");
    const std::string_view behind = lines.behind(shown.place);
    require(shown.width >= 0 && static_cast<std::size_t>(shown.width) <= behind.size(),
            "what failed is part of the file");
    const std::string_view line = lines.line(shown.place.line);
    const bool is_quoted = behind.starts_with('\'') || behind.starts_with('"');
    if (!is_quoted) {
        require(behind.starts_with(shown.found), "what was found stands at its place");
        require(behind.substr(0, static_cast<std::size_t>(shown.width)).find('\n') ==
                    std::string_view::npos,
                "what failed lies in one line");
    }

    require(shown.line_text_column >= 1, "columns count from 1");
    const auto start = static_cast<std::size_t>(shown.line_text_column - 1);
    require(start <= line.size(), "the shown text starts in its line");
    require(line.substr(start).starts_with(shown.line_text), "the shown text is part of the line");
    require(shown.line_text.find('\n') == std::string_view::npos, "the shown text is one line");
    if (shown.line_text.empty())
        return;
    const auto column = static_cast<std::size_t>(shown.place.column - 1);
    const bool behind_carriage_return = column == line.size() && line.ends_with('\r');
    require(start <= column && column <= start + shown.line_text.size() + behind_carriage_return,
            "the place is in the shown text or just behind it");
}

/// Whether the stream has certainly kept enough of the line to show it: a short value, not quoted.
inline bool must_show_line(const ShownFailure &shown, const TextLines &lines) {
    constexpr std::int64_t short_value = 90;
    const std::string_view behind = lines.behind(shown.place);
    return shown.width <= short_value && !behind.starts_with('\'') && !behind.starts_with('"') &&
           !lines.line(shown.place.line).empty();
}

} // namespace kova_fuzz
