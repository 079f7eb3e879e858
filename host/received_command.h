#pragma once

// One host command as it arrived: what an observer, the command log and the model see.

#include "control/host_commands.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kova_host {

/// What came through an entry point, before anything is known about it. `lengths[0]` is the
/// keyword's.
struct RawCall {
    std::size_t entry_point = 0;
    char *keyword = nullptr;
    std::array<void *, kova_import::maximum_argument_count> arguments{};
    std::array<std::size_t, kova_import::maximum_argument_count + 1> lengths{};
};

/// A decoded command. It refers to the caller's memory and is valid during the call only.
struct ReceivedCommand {
    // Not by one sweep over the whole, as compilers clear an aggregate of this size: that takes
    // longer than all the rest of decoding.
    ReceivedCommand() noexcept : arguments(), lengths() {}

    std::uint64_t number = 0;       ///< 1 for the first command that the host receives
    std::size_t entry_point = 0;    ///< `host_call_<entry_point>`
    std::string_view keyword;       ///< without its NUL
    std::size_t keyword_length = 0; ///< as it arrived, the NUL included
    const kova_import::HostCommand *command = nullptr; ///< null when there is none for this call
    bool well_formed = true;                           ///< only such a command has an effect
    std::array<void *, kova_import::maximum_argument_count> arguments;
    std::array<std::size_t, kova_import::maximum_argument_count> lengths; ///< of texts, else 0
    std::int32_t answer_on_arrival = 0; ///< of an argument of the kind `answer`

    /// The integer argument `index` (from 0); 0 when the reference is null.
    [[nodiscard]] std::int32_t integer(std::size_t index) const {
        return load<std::int32_t>(index);
    }
    /// The real argument `index` (from 0); 0 when the reference is null.
    [[nodiscard]] float real(std::size_t index) const { return load<float>(index); }
    /// All bytes of the text argument `index` (from 0); empty when the reference is null.
    [[nodiscard]] std::string_view text(std::size_t index) const {
        if (arguments[index] == nullptr)
            return {};
        return {static_cast<const char *>(arguments[index]), lengths[index]};
    }

  private:
    template <class Number>
    [[nodiscard]] Number load(std::size_t index) const {
        Number value{};
        if (arguments[index] != nullptr)
            std::memcpy(&value, arguments[index], sizeof value);
        return value;
    }
};

} // namespace kova_host
