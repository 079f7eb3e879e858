#pragma once

// Writes the command log: one line of text for every command, in the format of docs/command-log.md.

#include "host/received_command.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace kova_host {

class CommandLog {
  public:
    using Sink = std::function<void(std::string_view)>;

    /// Sends what is buffered to the present sink, then goes on with `sink`; an empty one ends the
    /// log.
    void open(Sink sink);
    [[nodiscard]] bool is_open() const { return static_cast<bool>(sink_); }
    /// Writes the line of a command that has taken effect. `announced` is the number of entries of
    /// a send buffer that mean something.
    void write(const ReceivedCommand &command, std::int32_t announced);
    /// Sends what is buffered to the sink. When the sink throws, what was buffered is lost.
    void flush();
    /// Forgets what is buffered.
    void discard() { size_ = 0; }

  private:
    /// The place of the next byte, with room for `size` bytes behind it; `size` is far below the
    /// buffer's. What is written there counts once `size_` says so.
    char *room(std::size_t size);
    void end_at(const char *end) { size_ = static_cast<std::size_t>(end - buffer_.get()); }

    void put(char character);
    void put(std::string_view text);
    void put_integer(std::int64_t value);
    void put_count(std::string_view prefix, std::size_t count);
    void put_escaped(std::string_view text);
    void put_pieces(std::string_view text);
    void put_argument(const ReceivedCommand &command, std::size_t index, std::int32_t announced);
    void put_send_buffer(const void *buffer, std::int32_t announced);
    void put_runs(const char *entries, std::size_t first);

    Sink sink_;
    std::unique_ptr<char[]> buffer_;
    std::size_t size_ = 0;
};

} // namespace kova_host
