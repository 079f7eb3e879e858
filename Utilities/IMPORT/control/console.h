#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <string_view>

/// Lines on the process's standard output. A process without one loses them, and nothing else.
namespace kova_import::console {

inline void write(std::string_view text) {
    // There is nobody to tell that the console is gone.
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stdout));
}

inline void write(std::integral auto number) {
    char digits[24];
    write(std::string_view(digits, std::to_chars(digits, digits + sizeof digits, number).ptr));
}

/// One line of texts and numbers, without padding.
template <class... Part>
void write_line(const Part &...parts) {
    (write(parts), ...);
    write("\n");
}

inline void flush() { static_cast<void>(std::fflush(stdout)); }

} // namespace kova_import::console
