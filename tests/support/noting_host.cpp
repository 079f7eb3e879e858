#include "tests/support/noting_host.h"

#include "control/host_commands.h"
#include "host_calls.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <span>
#include <stdexcept>
#include <utility>

namespace kova_test {

namespace {

using kova_import::ArgumentKind;
using kova_import::HostCommand;

std::int32_t announced_breakpoints = 0;

std::int32_t integer_at(const void *address) {
    std::int32_t value = 0;
    std::memcpy(&value, address, sizeof value);
    return value;
}

/// FNV-1a: different arguments have different sums as far as a test can tell.
std::uint64_t sum(std::uint64_t start, const void *address, std::size_t size) {
    constexpr std::uint64_t prime = 0x100000001b3;
    const auto *bytes = static_cast<const unsigned char *>(address);
    for (std::size_t i = 0; i < size; ++i)
        start = (start ^ bytes[i]) * prime;
    return start;
}

/// Writes what a person would answer, and notes the command. A series counts as far as it has been
/// announced: what stands behind it in the buffers is older than the import.
void take(char *keyword, std::initializer_list<void *> argument_list,
          std::initializer_list<std::size_t> length_list) {
    NotingHost &host = noting_host();
    const std::span arguments(argument_list.begin(), argument_list.size());
    const std::span lengths(length_list.begin(), length_list.size());
    const std::string_view name(keyword, lengths[0] - 1);
    if (host.before)
        host.before(name);
    const HostCommand *command = kova_import::find_host_command(name);
    if (command == nullptr)
        throw std::logic_error("no such host command: " + std::string(name));
    std::uint64_t total = 0xcbf29ce484222325;
    std::size_t text = 1;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        switch (command->arguments[i].kind) {
        case ArgumentKind::integer:
        case ArgumentKind::real:
            total = sum(total, arguments[i], sizeof(std::int32_t));
            break;
        case ArgumentKind::answer: {
            const std::int32_t answer =
                std::string_view(static_cast<const char *>(arguments[0])) == "Import Options" &&
                        host.transport_only
                    ? 0
                    : 1;
            std::memcpy(arguments[i], &answer, sizeof answer);
            break;
        }
        case ArgumentKind::result:
            std::memset(arguments[i], ' ', lengths[text]);
            if (name == "GFILENAME")
                std::memcpy(arguments[i], host.import_path.data(), host.import_path.size());
            ++text;
            break;
        case ArgumentKind::send_buffer:
            total = sum(total, arguments[i],
                        sizeof(float) * static_cast<std::size_t>(
                                            announced_breakpoints > 0 ? announced_breakpoints : 0));
            break;
        default:
            total = sum(total, arguments[i], lengths[text++]);
        }
    }
    if (name == "PNBFP" || name == "PNBWK")
        announced_breakpoints = integer_at(arguments[2]);
    std::string line = std::to_string(arguments.size()) + " " + std::string(name) + "[" +
                       std::to_string(lengths[0]) + "]";
    if (name == "PPROGRESS") {
        line += " int " + std::to_string(integer_at(arguments[0]));
    } else if (!arguments.empty()) {
        std::array<char, 16> digits{};
        constexpr int base = 16;
        line += ' ';
        line.append(digits.data(),
                    std::to_chars(digits.data(), digits.data() + digits.size(), total, base).ptr);
    }
    host.log.push_back(std::move(line));
    if (host.after)
        host.after(HostCall{*command, keyword, arguments, lengths});
}

} // namespace

NotingHost &noting_host() {
    static NotingHost host;
    return host;
}

} // namespace kova_test

using kova_test::take;

void KOVA_HOST_CALL host_call_0(char *keyword, size_t keyword_length) {
    take(keyword, {}, {keyword_length});
}

void KOVA_HOST_CALL host_call_1(char *keyword, void *a, size_t keyword_length, size_t length_1) {
    take(keyword, {a}, {keyword_length, length_1});
}

void KOVA_HOST_CALL host_call_2(char *keyword, void *a, void *b, size_t keyword_length,
                                size_t length_1, size_t length_2) {
    take(keyword, {a, b}, {keyword_length, length_1, length_2});
}

void KOVA_HOST_CALL host_call_3(char *keyword, void *a, void *b, void *c, size_t keyword_length,
                                size_t length_1, size_t length_2, size_t length_3) {
    take(keyword, {a, b, c}, {keyword_length, length_1, length_2, length_3});
}

void KOVA_HOST_CALL host_call_4(char *keyword, void *a, void *b, void *c, void *d,
                                size_t keyword_length, size_t length_1, size_t length_2,
                                size_t length_3, size_t length_4) {
    take(keyword, {a, b, c, d}, {keyword_length, length_1, length_2, length_3, length_4});
}

void KOVA_HOST_CALL host_call_5(char *keyword, void *a, void *b, void *c, void *d, void *e,
                                size_t keyword_length, size_t length_1, size_t length_2,
                                size_t length_3, size_t length_4, size_t length_5) {
    take(keyword, {a, b, c, d, e},
         {keyword_length, length_1, length_2, length_3, length_4, length_5});
}
