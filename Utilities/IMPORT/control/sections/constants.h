#pragma once

// Kinetic constants.

#include "control/host_link.h"

#include <cstdint>

namespace kova_import {

/// Adds a constant to those of the host. `column` is that of a solid, CBOD or phytoplankton group,
/// or 1.
inline void send_constant(std::int32_t constant, std::int32_t column) {
    send<"PADDCONST">(constant, column);
}

/// Sends the value of a constant, which makes it one that is used.
inline void send_constant_value(std::int32_t constant, std::int32_t column, float value) {
    constexpr std::int32_t used = 1;
    send<"PCONSTVALUEBYISC">(constant, column, value);
    send<"PCONSTISUSED">(constant, column, used);
}

} // namespace kova_import
