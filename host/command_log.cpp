#include "host/command_log.h"

#include "host/number_format.h"
#include "host/real_text.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>

namespace kova_host {

using kova_import::ArgumentKind;
using kova_import::send_buffer_size;

namespace {

constexpr std::size_t buffer_size = std::size_t{256} * 1024;
constexpr std::size_t shortest_run = 8;
constexpr std::string_view hexadecimal = "0123456789abcdef";
/// More than a number takes with the few characters around it.
constexpr std::size_t number_room = number_text_size + 32;

/// Appends a text whose length is known when this is compiled.
template <std::size_t n>
char *append(char *end, const char (&text)[n]) {
    std::memcpy(end, text, n - 1);
    return end + n - 1;
}

char *append_real(char *end, float value) {
    return is_plain_real(value) ? write_plain_real(end, value) : write_real(end, value);
}

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
    const float value = entry(entries, first);
    std::size_t end = first + 1;
    // Most entries that differ from the one before differ from the next one, too.
    if (end < send_buffer_size && !written_alike(entry(entries, end), value))
        return end;
    // Equal blocks one entry apart hold one number; long runs are the rule here.
    while (end + block <= send_buffer_size &&
           std::memcmp(entries + end * width, entries + (end - 1) * width, block * width) == 0)
        end += block;
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
    if (command.command == nullptr) {
        put_integer(static_cast<std::int64_t>(command.entry_point));
        put(' ');
        put_escaped(command.keyword);
        put_count("[", command.keyword_length);
        put(" ?\n");
        return;
    }
    // One check of the room for everything but texts and send buffers, which check for themselves.
    constexpr std::size_t line_room = 256 + number_room * kova_import::maximum_argument_count;
    char *end = room(line_room);
    *end++ = static_cast<char>('0' + command.entry_point);
    *end++ = ' ';
    end = std::copy(command.keyword.begin(), command.keyword.end(), end);
    *end++ = '[';
    end = write_integer(end, static_cast<std::int64_t>(command.keyword_length));
    *end++ = ']';
    for (std::size_t index = 0; index < command.entry_point; ++index) {
        end = index == 0 ? append(end, " ") : append(end, ", ");
        const ArgumentKind kind = command.command->arguments[index].kind;
        const bool present = command.arguments[index] != nullptr;
        if (kind == ArgumentKind::integer && present) {
            end = write_small_integer(append(end, "int "), command.integer(index));
        } else if (kind == ArgumentKind::real && present) {
            end = append_real(append(end, "real "), command.real(index));
        } else {
            end_at(end);
            put_argument(command, index, announced);
            end = room(line_room);
        }
    }
    *end++ = '\n';
    end_at(end);
}

void CommandLog::flush() {
    const std::size_t size = std::exchange(size_, 0);
    if (size > 0 && sink_)
        sink_({buffer_.get(), size});
}

char *CommandLog::room(std::size_t size) {
    if (buffer_size - size_ < size)
        flush();
    return buffer_.get() + size_;
}

void CommandLog::put(char character) {
    *room(1) = character;
    ++size_;
}

void CommandLog::put(std::string_view text) {
    while (!text.empty()) {
        char *const end = room(1);
        const std::size_t size = std::min(text.size(), buffer_size - size_);
        std::copy_n(text.data(), size, end);
        size_ += size;
        text.remove_prefix(size);
    }
}

void CommandLog::put_integer(std::int64_t value) {
    end_at(write_integer(room(number_room), value));
}

void CommandLog::put_count(std::string_view prefix, std::size_t count) {
    put(prefix);
    put_integer(static_cast<std::int64_t>(count));
    put(']');
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
    } else if (kind == ArgumentKind::answer) {
        put_integer(command.answer_on_arrival);
        put(" -> ");
        put_integer(command.integer(index));
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
    constexpr std::size_t at_once = 256;
    for (std::size_t first = 0; first < count; first += at_once) {
        char *end = room(at_once * number_room);
        const std::size_t last = std::min(first + at_once, count);
        for (std::size_t index = first; index < last; ++index) {
            *end++ = ' ';
            end = append_real(end, entry(entries, index));
        }
        end_at(end);
    }
    put(" |");
    put_runs(entries, count);
}

void CommandLog::put_runs(const char *entries, std::size_t first) {
    while (first < send_buffer_size) {
        const std::size_t last = run_end(entries, first);
        char *end = room(2 * number_room);
        *end++ = ' ';
        if (last - first == 1) // where a longer series has left its entries
            *end++ = '1';
        else
            end = write_small_integer(end, static_cast<std::int32_t>(last - first));
        *end++ = '*';
        end_at(append_real(end, entry(entries, first)));
        first = last;
    }
}

} // namespace kova_host
