#include "host/command_log.h"

#include "host/number_format.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>

namespace kova_host {

using kova_import::ArgumentKind;
using kova_import::send_buffer_size;

namespace {

constexpr std::size_t buffer_size = std::size_t{512} * 1024;
constexpr std::size_t shortest_run = 8;
constexpr std::string_view hexadecimal = "0123456789abcdef";

/// Entry `index` of a send buffer, which a host may be handed at any address.
float entry(const char *entries, std::size_t index) {
    float value = 0;
    std::memcpy(&value, entries + index * sizeof value, sizeof value);
    return value;
}

/// Whether two numbers are written alike. Zeros of different sign are not.
bool written_alike(float left, float right) {
    return std::bit_cast<std::uint32_t>(left) == std::bit_cast<std::uint32_t>(right) ||
           (std::isnan(left) && std::isnan(right));
}

/// The end of the run of numbers like entry `first`.
std::size_t run_end(const char *entries, std::size_t first) {
    constexpr std::size_t block = 64;
    constexpr std::size_t width = sizeof(float);
    std::size_t end = first + 1;
    // Equal blocks one entry apart hold one number; long runs are the rule here.
    while (end + block <= send_buffer_size &&
           std::memcmp(entries + end * width, entries + (end - 1) * width, block * width) == 0)
        end += block;
    const float value = entry(entries, first);
    while (end < send_buffer_size && written_alike(entry(entries, end), value))
        ++end;
    return end;
}

} // namespace

void CommandLog::open(Sink sink) {
    if (is_open())
        flush();
    if (sink && !buffer_)
        buffer_ = std::make_unique<char[]>(buffer_size);
    size_ = 0;
    sink_ = std::move(sink);
}

void CommandLog::write(const ReceivedCommand &command, std::int32_t announced) {
    put_integer(static_cast<std::int64_t>(command.entry_point));
    put(' ');
    put_escaped(command.keyword);
    put_count("[", command.keyword_length);
    if (command.command == nullptr) {
        put(" ?\n");
        return;
    }
    for (std::size_t index = 0; index < command.entry_point; ++index) {
        put(index == 0 ? " " : ", ");
        put_argument(command, index, announced);
    }
    put('\n');
}

void CommandLog::flush() {
    const std::size_t size = std::exchange(size_, 0);
    if (size > 0 && sink_)
        sink_({buffer_.get(), size});
}

void CommandLog::reserve(std::size_t size) {
    if (buffer_size - size_ < size)
        flush();
}

void CommandLog::put(char character) {
    reserve(1);
    buffer_[size_++] = character;
}

void CommandLog::put(std::string_view text) {
    while (!text.empty()) {
        reserve(1);
        const std::size_t size = std::min(text.size(), buffer_size - size_);
        std::copy_n(text.data(), size, buffer_.get() + size_);
        size_ += size;
        text.remove_prefix(size);
    }
}

void CommandLog::put_integer(std::int64_t value) {
    reserve(number_text_size);
    size_ = static_cast<std::size_t>(write_integer(buffer_.get() + size_, value) - buffer_.get());
}

void CommandLog::put_count(std::string_view prefix, std::size_t count) {
    put(prefix);
    put_integer(static_cast<std::int64_t>(count));
    put(']');
}

void CommandLog::put_real(float value) {
    reserve(number_text_size);
    size_ = static_cast<std::size_t>(write_real(buffer_.get() + size_, value) - buffer_.get());
}

void CommandLog::put_escaped(std::string_view text) {
    std::size_t plain = 0; // start of what needs no escape
    for (std::size_t index = 0; index < text.size(); ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        const bool printable = byte >= 0x20 && byte <= 0x7E;
        if (printable && byte != '\\' && byte != '"')
            continue;
        put(text.substr(plain, index - plain));
        plain = index + 1;
        put('\\');
        if (printable) {
            put(text[index]);
        } else if (byte == 0) {
            put('0');
        } else {
            put('x');
            put(hexadecimal[byte >> 4U]);
            put(hexadecimal[byte & 0xFU]);
        }
    }
    put(text.substr(plain));
}

void CommandLog::put_pieces(std::string_view text) {
    if (text.empty())
        put("\"\"");
    std::size_t written = 0;
    const auto separate = [&] {
        if (written > 0)
            put(' ');
    };
    const auto put_quoted_to = [&](std::size_t end) {
        if (end == written)
            return;
        separate();
        put('"');
        put_escaped(text.substr(written, end - written));
        put('"');
        written = end;
    };
    for (std::size_t index = 0; index < text.size();) {
        const char character = text[index];
        if (character != ' ' && character != '\0') {
            ++index;
            continue;
        }
        const std::size_t end = std::min(text.find_first_not_of(character, index), text.size());
        if (end - index >= shortest_run) {
            put_quoted_to(index);
            separate();
            put_integer(static_cast<std::int64_t>(end - index));
            put(character == ' ' ? "*\" \"" : "*\"\\0\"");
            written = end;
        }
        index = end;
    }
    put_quoted_to(text.size());
}

void CommandLog::put_argument(const ReceivedCommand &command, std::size_t index,
                              std::int32_t announced) {
    const ArgumentKind kind = command.command->arguments[index].kind;
    const bool missing = command.arguments[index] == nullptr;
    if (kind == ArgumentKind::integer || kind == ArgumentKind::answer)
        put("int ");
    else if (kind == ArgumentKind::real)
        put("real ");
    else if (kind == ArgumentKind::send_buffer)
        put_count("real[", send_buffer_size);
    else
        put_count("text[", command.lengths[index]);

    if (missing) {
        put(kova_import::is_text(kind) || kind == ArgumentKind::send_buffer ? " ?" : "?");
    } else if (kind == ArgumentKind::integer) {
        put_integer(command.integer(index));
    } else if (kind == ArgumentKind::answer) {
        put_integer(command.answer_on_arrival);
        put(" -> ");
        put_integer(command.integer(index));
    } else if (kind == ArgumentKind::real) {
        put_real(command.real(index));
    } else if (kind == ArgumentKind::send_buffer) {
        put_send_buffer(command.arguments[index], announced);
    } else {
        put(kind == ArgumentKind::result ? " -> " : " ");
        put_pieces(command.text(index));
    }
}

void CommandLog::put_send_buffer(const void *buffer, std::int32_t announced) {
    const auto *entries = static_cast<const char *>(buffer);
    const auto most = static_cast<std::int32_t>(send_buffer_size);
    const auto count = static_cast<std::size_t>(std::clamp(announced, 0, most));
    for (std::size_t index = 0; index < count; ++index) {
        put(' ');
        put_real(entry(entries, index));
    }
    put(" |");
    put_runs(entries, count);
}

void CommandLog::put_runs(const char *entries, std::size_t first) {
    while (first < send_buffer_size) {
        const std::size_t end = run_end(entries, first);
        put(' ');
        put_integer(static_cast<std::int64_t>(end - first));
        put('*');
        put_real(entry(entries, first));
        first = end;
    }
}

} // namespace kova_host
