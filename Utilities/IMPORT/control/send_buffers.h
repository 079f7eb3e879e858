#pragma once

#include "control/host_commands.h"

#include <array>

namespace kova_import {

/// One of the two arrays in which a whole series goes to the host.
using SendBuffer = std::array<float, send_buffer_size>;

/// They live as long as the library: what a series, a section or an import has left behind the
/// breakpoints of the present series is still there, and hosts see it.
struct SendBuffers {
    SendBuffer values{};
    SendBuffer times{};
};

} // namespace kova_import
