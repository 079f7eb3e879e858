#pragma once

// What a host sees of an import, cut where the driver moves on to the next section.

#include "host/reference_host.h"
#include "import_export.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <string_view>

namespace kova_fuzz {

/// A command with its numbers; those of a fragment of the pane are its length and its first four
/// bytes.
struct Sent {
    std::string_view keyword;
    std::array<std::int32_t, kova_import::maximum_argument_count> bits{};

    [[nodiscard]] std::int32_t integer(std::size_t index) const { return bits[index]; }
    [[nodiscard]] float real(std::size_t index) const { return std::bit_cast<float>(bits[index]); }
};

/// The first four bytes of a text, as a number.
inline std::int32_t first_bytes(std::string_view text) {
    std::int32_t bits = 0;
    std::memcpy(&bits, text.data(), std::min(text.size(), sizeof bits));
    return bits;
}

/// What happened between two moves of the driver. There may be a million commands: a deque takes no
/// large block for them, so that large blocks are the library's.
struct Stage {
    std::int32_t progress = -1;     ///< with which the driver started it
    std::int32_t line_counter = 0;  ///< when it started
    std::int32_t system_count = 0;  ///< when it started
    std::int32_t segment_count = 0; ///< when it started
    std::deque<Sent> commands;

    [[nodiscard]] std::ptrdiff_t count(std::string_view keyword) const {
        return std::count_if(commands.begin(), commands.end(),
                             [&](const Sent &sent) { return sent.keyword == keyword; });
    }
    template <class Predicate>
    [[nodiscard]] bool only(Predicate is_expected) const {
        return std::all_of(commands.begin(), commands.end(),
                           [&](const Sent &sent) { return is_expected(sent.keyword); });
    }
};

/// Stage 0 is before the first section, stage n is section n, and the last is behind the sections.
class Trace {
  public:
    void add(const kova_host::ReceivedCommand &command) {
        const bool is_progress = command.keyword == "PPROGRESS";
        if (is_progress && !is_progress_of_boundaries(command.integer(0))) {
            stages_.push_back({command.integer(0),
                               IMPORT_EXPORT.line_counter,
                               IMPORT_EXPORT.system_count,
                               IMPORT_EXPORT.segment_count,
                               {}});
            return;
        }
        Sent sent{command.command->keyword, {}};
        for (std::size_t i = 0; i < command.entry_point; ++i) {
            const kova_import::ArgumentKind kind = command.command->arguments[i].kind;
            if (kind == kova_import::ArgumentKind::integer)
                sent.bits[i] = command.integer(i);
            else if (kind == kova_import::ArgumentKind::real)
                sent.bits[i] = std::bit_cast<std::int32_t>(command.real(i));
        }
        if (sent.keyword == "PINFOHTML") {
            const std::string_view text = command.text(0);
            sent.bits[0] = static_cast<std::int32_t>(text.size());
            sent.bits[1] = first_bytes(text);
        }
        stages_.back().commands.push_back(sent);
    }

    [[nodiscard]] const std::deque<Stage> &stages() const { return stages_; }
    [[nodiscard]] const Stage &section(std::int32_t number) const {
        return stages_[static_cast<std::size_t>(number)];
    }

  private:
    // The boundary conditions move the indicator themselves, by whole hundreds; the next move of
    // the driver is none.
    [[nodiscard]] bool is_progress_of_boundaries(std::int32_t progress) const {
        constexpr std::int32_t hundred = 100;
        return stages_.back().progress == 40 && progress % hundred == 0;
    }

    std::deque<Stage> stages_ = std::deque<Stage>(1);
};

} // namespace kova_fuzz
