#pragma once

// Parameters that have a value in each segment.

#include "control/host_link.h"

#include <cstdint>

namespace kova_import {

/// A parameter as the host knows it.
struct ParameterIdentity {
    std::int32_t number = 0;
    std::int32_t class_index = 0; ///< legacy: 1, or a solid or phytoplankton group; current: any
    friend bool operator==(const ParameterIdentity &, const ParameterIdentity &) = default;
};

/// Adds a parameter to those of the host, with its scale factor.
inline void send_parameter(ParameterIdentity parameter, float scale) {
    send<"PADDPARAM">(parameter.number, parameter.class_index);
    send<"PSCALEPARAMBYISC">(parameter.number, parameter.class_index, scale);
}

/// Sends the value of a parameter in a segment.
inline void send_parameter_value(std::int32_t segment, ParameterIdentity parameter, float value) {
    send<"PCONSTPARAM">(segment, parameter.number, parameter.class_index, value);
}

} // namespace kova_import
