#include "fuzz/import_input.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kova_fuzz {

namespace {

/// Without the first, which lets the file bring its own.
constexpr std::array<std::string_view, 7> headers =
    is_current_target ? std::array<std::string_view, 7>{"   11      3\n",
                                                        "    8      3\n",
                                                        "   11     99 rest\n",
                                                        "   1100000 8\r\n",
                                                        "   12     +4\n",
                                                        "-9999XXXXX 3\n",
                                                        "\xEF\xBB\xBF   11      3\n"}
                      : std::array<std::string_view, 7>{"   11      2\n",
                                                        "    8      2\n",
                                                        "   11\n",
                                                        "   1100000 1\r\n",
                                                        "   12     -4 rest\n",
                                                        "-9999XXXXX 0\n",
                                                        "\xEF\xBB\xBF   11      2\n"};

} // namespace

Input input_of(std::string_view data) {
    Input input;
    const auto options =
        data.empty() ? 0U : static_cast<unsigned>(static_cast<unsigned char>(data[0]));
    data.remove_prefix(std::min<std::size_t>(1, data.size()));
    if (const unsigned header = options % 8; header != 0)
        input.file = headers[header - 1];
    input.file += data;
    input.transport_only = (options & 0x08U) != 0;
    input.index_segment_names = (options & 0x10U) == 0;
    input.path = static_cast<Path>(options >> 5U & 0x03U);
    input.answers = (options & 0x80U) == 0;

    // Some inputs, always the same ones, are imported twice, and some get their tables.
    std::uint32_t hash = 2166136261U;
    for (const char character : data)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    input.repeat = hash % 8 == 0;
    input.has_tables = hash / 8 % 4 == 0;
    // A large file takes as long as thousands of small ones.
    constexpr std::uint32_t seldom = 8192;
    input.is_stretched = hash / 64 % seldom == 0;
    input.hash = hash;
    return input;
}

std::string path_of(const MemoryFile &file, Path kind) {
    constexpr std::size_t field_width = 512;
    switch (kind) {
    case Path::missing:
        return "/nowhere/" + file.name();
    case Path::full_stop:
        return "/proc/./self/fd/" + file.name();
    case Path::long_one: {
        const std::string end = "./" + file.name();
        std::string path = "/proc/self/fd/";
        path.append(field_width - path.size() - end.size(), '/');
        return path + end;
    }
    case Path::plain:
        break;
    }
    return file.path();
}

} // namespace kova_fuzz
