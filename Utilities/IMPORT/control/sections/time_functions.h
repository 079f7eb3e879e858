#pragma once

// Environmental time functions: weather, light and temperature over time.

#include "control/counting.h"
#include "control/host_link.h"
#include "control/sections/series.h"

#include <cstdint>

namespace kova_import {

/// Sends one series of a time function: its breakpoint count, and for each breakpoint the time
/// (days) and the value that `next()` gives.
template <class Next>
void send_time_function_series(std::int32_t time_function, std::int32_t series,
                               std::int32_t breakpoint_count, Next next) {
    send<"PNBRKTF">(time_function, series, breakpoint_count);
    for_each_number(breakpoint_count, [&](std::int32_t place) {
        const Breakpoint breakpoint = next();
        send<"PBRKTF">(time_function, series, place, breakpoint.first, breakpoint.second);
    });
}

} // namespace kova_import
