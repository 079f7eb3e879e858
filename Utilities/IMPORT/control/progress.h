#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace kova_import {

/// Percentage of `done` out of `total` as hosts have always been shown it: whole hundreds, since
/// the quotient is an integer. 0 where there is no total.
[[nodiscard]] constexpr std::int32_t coarse_percentage(std::int32_t done, std::int32_t total) {
    if (total == 0)
        return 0;
    constexpr std::int64_t per_cent = 100;
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();
    const std::int64_t percentage = std::int64_t{done} / total * per_cent;
    return static_cast<std::int32_t>(std::clamp(percentage, lowest, highest));
}

} // namespace kova_import
