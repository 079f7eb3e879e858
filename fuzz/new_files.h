#pragma once

// Writes model input files that the changes start from.

#include <cstdint>
#include <string>

namespace kova_fuzz {

/// A legacy file behind its header that goes through all sections without a fault, or almost.
[[nodiscard]] std::string new_legacy_file(std::uint32_t seed);

/// The same of the current format.
[[nodiscard]] std::string new_current_file(std::uint32_t seed);

} // namespace kova_fuzz
