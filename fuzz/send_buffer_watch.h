#pragma once

// Follows the two send buffers through all imports of the process: a series changes the entries
// that were announced for it, and nothing else ever changes.

#include "fuzz/fuzz_support.h"
#include "host/received_command.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kova_fuzz {

class SendBufferWatch {
  public:
    void see(const kova_host::ReceivedCommand &command) {
        constexpr std::size_t count_index = 2;
        const std::string_view keyword = command.keyword;
        if (keyword == "PNBFP" || keyword == "PNBWK") {
            const std::int32_t count = command.integer(count_index);
            require(count <= static_cast<std::int32_t>(kova_import::send_buffer_size),
                    "a series fits the send buffers");
            announced_ = static_cast<std::size_t>(std::max(count, 0));
            is_placeholder_ = was_scaled_;
        } else if (keyword == "PALLBOUNDFUNC" || keyword == "PALLLOADFUNC") {
            for (std::size_t i = 0; i < buffers_.size(); ++i)
                take(buffers_[i], command.arguments[i + count_index]);
            require(buffers_[0].sent != buffers_[1].sent, "there are two send buffers");
        }
        was_scaled_ = keyword == "PCONVW";
    }

    /// Between two imports.
    void check_unchanged() {
        for (const Buffer &buffer : buffers_)
            check(buffer, 0);
        sent_ = 0;
    }

  private:
    struct Buffer {
        const void *sent = nullptr;
        std::array<float, kova_import::send_buffer_size> known{};
    };

    void take(Buffer &buffer, const void *sent) {
        require(sent != nullptr && (buffer.sent == nullptr || buffer.sent == sent),
                "a send buffer stays where it is");
        buffer.sent = sent;
        // Whole buffers take long: of very many series only some are followed by a look at them.
        constexpr std::size_t few = 1024;
        constexpr std::size_t some = 256;
        if (++sent_ < few || sent_ % some < buffers_.size())
            check(buffer, announced_);
        std::memcpy(buffer.known.data(), sent, announced_ * sizeof(float));
        if (is_placeholder_)
            require(std::all_of(buffer.known.begin(), buffer.known.begin() + announced_,
                                [](float entry) { return entry == 0; }),
                    "the load that stands for none adds nothing");
    }

    static void check(const Buffer &buffer, std::size_t first) {
        if (buffer.sent == nullptr)
            return;
        const std::size_t offset = first * sizeof(float);
        require(std::memcmp(static_cast<const char *>(buffer.sent) + offset,
                            buffer.known.data() + first, sizeof buffer.known - offset) == 0,
                "a send buffer keeps what stands behind a series");
    }

    std::array<Buffer, 2> buffers_;
    std::size_t announced_ = 0;
    std::size_t sent_ = 0;    ///< in this import
    bool was_scaled_ = false; ///< the command before was that of a system without loads
    bool is_placeholder_ = false;
};

/// A command log without what stands behind the series in the send buffers.
inline std::string without_buffer_tails(std::string_view log) {
    std::string kept;
    while (!log.empty()) {
        const std::size_t size = std::min(log.find('\n'), log.size() - 1) + 1;
        std::string_view line = log.substr(0, size);
        log.remove_prefix(size);
        while (line.starts_with("4 PALL") || line.starts_with(", real[")) {
            const std::size_t bar = line.find('|');
            if (bar == line.npos)
                break;
            kept += line.substr(0, bar);
            line.remove_prefix(std::min(line.find_first_of(",\n", bar), line.size()));
        }
        kept += line;
    }
    return kept;
}

} // namespace kova_fuzz
