#include "control/progress.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace kova_import {
namespace {

TEST(CoarsePercentage, IsAWholeHundred) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    struct Case {
        std::int32_t done;
        std::int32_t total;
        std::int32_t percentage;
    };
    for (const Case &each : std::vector<Case>{{1, 3, 0},
                                              {2, 3, 0},
                                              {3, 3, 100},
                                              {5, 3, 100},
                                              {6, 3, 200},
                                              {1, 1, 100},
                                              {7, 0, 0},
                                              {5, -2, -200},
                                              {21474836, 1, 2147483600},
                                              {21474837, 1, most},
                                              {most, 1, most},
                                              {most, -1, least},
                                              {most, most, 100},
                                              {1, least, 0}})
        EXPECT_EQ(coarse_percentage(each.done, each.total), each.percentage)
            << each.done << " of " << each.total;
}

} // namespace
} // namespace kova_import
