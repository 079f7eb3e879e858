#include "cli/terminal.h"

#include "cli/platform.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace kova_command {

namespace {

std::string_view environment(const char *name) {
    const char *const value = std::getenv(name);
    return value == nullptr ? std::string_view() : value;
}

std::size_t terminal_width(std::FILE *stream) {
    constexpr std::size_t smallest = 20;
    constexpr std::size_t usual = 80;
    if (const auto columns = platform::terminal_columns(stream))
        return std::max(smallest, *columns);
    const std::string_view columns = environment("COLUMNS");
    std::size_t width = 0;
    const auto [end, error] =
        std::from_chars(columns.data(), columns.data() + columns.size(), width);
    if (error == std::errc() && end == columns.data() + columns.size())
        return std::max(smallest, width);
    return usual;
}

std::string_view code_of(Ink ink) {
    switch (ink) {
    case Ink::error:
        return "\033[1;31m";
    case Ink::warning:
        return "\033[1;35m";
    case Ink::note:
        return "\033[1;36m";
    case Ink::help:
    case Ink::mark:
        return "\033[1;32m";
    case Ink::strong:
        break;
    }
    return "\033[1m";
}

void write(std::FILE *stream, std::string_view text) {
    // Progress that cannot be shown is not worth an error.
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stream));
    static_cast<void>(std::fflush(stream));
}

} // namespace

Screen screen_of(std::FILE *stream) {
    Screen screen;
    screen.is_terminal = platform::is_terminal(stream);
    if (!screen.is_terminal)
        return screen;
    screen.overwrites = environment("TERM") != "dumb" && platform::obeys_escapes(stream);
    screen.colour = screen.overwrites && environment("NO_COLOR").empty();
    screen.width = terminal_width(stream);
    return screen;
}

std::string painted(std::string_view text, Ink ink, bool colour) {
    if (!colour)
        return std::string(text);
    return std::string(code_of(ink)).append(text).append("\033[0m");
}

std::string painted(const char *text, Ink ink, bool colour) {
    return painted(std::string_view(text), ink, colour);
}

std::string progress_bar(std::int32_t percentage, std::string_view section, std::size_t width) {
    constexpr std::int32_t all = 100;
    constexpr std::size_t longest = 30;
    const std::int32_t shown = std::clamp(percentage, 0, all);
    std::string number = std::to_string(shown);
    number.insert(0, 3 - number.size(), ' ');
    // Brackets, percentage and the blanks between, and the last column, where terminals would wrap.
    constexpr std::size_t around = 10;
    const std::size_t cells = std::min(longest, width > around ? width - around : 0);
    const std::size_t full = cells * static_cast<std::size_t>(shown) / 100;
    std::string line(1, '[');
    line.append(full, '#').append(cells - full, '.').append("] ");
    line += number + " % ";
    line += section;
    if (line.size() >= width)
        line.resize(width > 0 ? width - 1 : 0);
    return line;
}

void ProgressDisplay::show(std::int32_t percentage, std::string_view section) {
    std::string line;
    switch (style_) {
    case Style::none:
        return;
    case Style::lines:
        line.append("kova-import: ").append(std::to_string(percentage)).append(" % ");
        line.append(section.empty() ? "done" : section).append("\n");
        break;
    case Style::bar: {
        const std::string bar = progress_bar(percentage, section, width_);
        line.append("\r").append(bar);
        line.append(shown_ > bar.size() ? shown_ - bar.size() : 0, ' ');
        shown_ = bar.size();
        break;
    }
    }
    write(stream_, line);
}

void ProgressDisplay::finish() {
    if (shown_ == 0)
        return;
    write(stream_, std::string("\r").append(shown_, ' ').append("\r"));
    shown_ = 0;
}

} // namespace kova_command
