// A host that sums up every byte of every command, to show that two programs send the same stream.

#include "bench_host.h"

#include "control/host_commands.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

using kova_import::ArgumentKind;

const char *file = "";
std::uint64_t commands = 0;
std::uint64_t checksum = 0;

void add(std::uint64_t word) {
    checksum = (checksum ^ word) * 0x9E3779B97F4A7C15U;
    checksum ^= checksum >> 29U;
}

void add(const void *data, std::size_t size) {
    const auto *bytes = static_cast<const char *>(data);
    add(size);
    while (size > 0) {
        std::uint64_t word = 0;
        const std::size_t part = std::min(size, sizeof word);
        std::memcpy(&word, bytes, part);
        add(word);
        bytes += part;
        size -= part;
    }
}

/// Without what differs from build to build: the rest of the version page's lines.
std::string_view without_stamp(std::string_view text) {
    constexpr std::array<std::string_view, 8> stamped = {
        "Built on: ",   "Model sha: ", "Model branch: ", "Gui sha: ",
        "Gui branch: ", "Platform: ",  "Architecture: ", "Build type: "};
    for (const std::string_view label : stamped)
        if (text.starts_with(label))
            return label;
    return text;
}

void add_text(const void *data, std::size_t length) {
    const std::string_view text = without_stamp({static_cast<const char *>(data), length});
    add(length);
    add(text.data(), text.size());
}

template <std::size_t count>
void receive(const char *keyword, const std::array<void *, count> &arguments,
             const std::array<std::size_t, count + 1> &lengths) {
    ++commands;
    add_text(keyword, lengths[0]);
    const std::string_view name(keyword, lengths[0] - 1);
    const kova_import::HostCommand *const command = kova_import::find_host_command(name);
    if (command == nullptr || command->argument_count() != count)
        std::abort();
    std::size_t texts = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const ArgumentKind kind = command->arguments[i].kind;
        if (kind == ArgumentKind::send_buffer) {
            add(arguments[i], kova_import::send_buffer_size * sizeof(float));
        } else if (!kova_import::is_text(kind)) {
            add(arguments[i], sizeof(std::int32_t));
        } else if (kind == ArgumentKind::result) {
            const std::size_t length = lengths[++texts];
            add(length);
            auto *const field = static_cast<char *>(arguments[i]);
            std::fill_n(field, length, ' ');
            if (name == "GFILENAME")
                std::copy_n(file, std::min(std::strlen(file), length), field);
        } else {
            add_text(arguments[i], lengths[++texts]);
        }
    }
    while (texts < count)
        add(lengths[++texts]);
}

} // namespace

void bench_host_set_file(const char *path) { file = path; }
std::uint64_t bench_host_commands() { return commands; }
std::uint64_t bench_host_checksum() { return checksum; }

void KOVA_HOST_CALL host_call_0(char *k, std::size_t l0) { receive<0>(k, {}, {l0}); }

void KOVA_HOST_CALL host_call_1(char *k, void *a, std::size_t l0, std::size_t l1) {
    receive<1>(k, {a}, {l0, l1});
}

void KOVA_HOST_CALL host_call_2(char *k, void *a, void *b, std::size_t l0, std::size_t l1,
                                std::size_t l2) {
    receive<2>(k, {a, b}, {l0, l1, l2});
}

void KOVA_HOST_CALL host_call_3(char *k, void *a, void *b, void *c, std::size_t l0, std::size_t l1,
                                std::size_t l2, std::size_t l3) {
    receive<3>(k, {a, b, c}, {l0, l1, l2, l3});
}

void KOVA_HOST_CALL host_call_4(char *k, void *a, void *b, void *c, void *d, std::size_t l0,
                                std::size_t l1, std::size_t l2, std::size_t l3, std::size_t l4) {
    receive<4>(k, {a, b, c, d}, {l0, l1, l2, l3, l4});
}

void KOVA_HOST_CALL host_call_5(char *k, void *a, void *b, void *c, void *d, void *e,
                                std::size_t l0, std::size_t l1, std::size_t l2, std::size_t l3,
                                std::size_t l4, std::size_t l5) {
    receive<5>(k, {a, b, c, d, e}, {l0, l1, l2, l3, l4, l5});
}
