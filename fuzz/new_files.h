#pragma once

// Writes model input files that the changes start from.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kova_fuzz {

/// A file behind its header, and where its sections start.
struct NewFile {
    std::string text;
    std::array<std::size_t, 12> starts{}; ///< the last is the end of the file

    /// Its section `number`, from 1.
    [[nodiscard]] std::string_view section(std::size_t number) const {
        return std::string_view(text).substr(starts[number - 1],
                                             starts[number] - starts[number - 1]);
    }
    /// What stands before that.
    [[nodiscard]] std::string_view front(std::size_t number) const {
        return std::string_view(text).substr(0, starts[number - 1]);
    }
};

/// A legacy file that goes through all sections without a fault, or almost.
[[nodiscard]] NewFile new_legacy_file(std::uint32_t seed);

/// The same of the current format.
[[nodiscard]] NewFile new_current_file(std::uint32_t seed);

} // namespace kova_fuzz
