#pragma once

// What a stream is connected to, and what may be written there.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace kova_command {

/// What a stream can show.
struct Screen {
    bool is_terminal = false;
    bool colour = false;     ///< a terminal, and nobody has asked for no colour
    bool overwrites = false; ///< a terminal on which a line can be written again
    std::size_t width = 100; ///< columns
};

[[nodiscard]] Screen screen_of(std::FILE *stream);

enum class Ink : std::uint8_t { error, warning, note, help, mark, strong };

/// `text` in a colour, where colours are shown.
[[nodiscard]] std::string painted(std::string_view text, Ink ink, bool colour);
[[nodiscard]] std::string painted(const char *text, Ink ink, bool colour);

/// Follows the percentages of an import on a stream.
class ProgressDisplay {
  public:
    enum class Style : std::uint8_t { none, lines, bar };

    ProgressDisplay(std::FILE *stream, Style style, std::size_t width)
        : stream_(stream), style_(style), width_(width) {}
    ~ProgressDisplay() { finish(); }
    ProgressDisplay(const ProgressDisplay &) = delete;
    ProgressDisplay &operator=(const ProgressDisplay &) = delete;
    ProgressDisplay(ProgressDisplay &&) = delete;
    ProgressDisplay &operator=(ProgressDisplay &&) = delete;

    /// `section` starts; empty at the end.
    void show(std::int32_t percentage, std::string_view section);
    /// Takes the bar away.
    void finish();

  private:
    std::FILE *stream_;
    Style style_;
    std::size_t width_;
    std::size_t shown_ = 0; ///< columns of the bar on the screen
};

/// One line with a bar, not longer than `width`.
[[nodiscard]] std::string progress_bar(std::int32_t percentage, std::string_view section,
                                       std::size_t width);

} // namespace kova_command
