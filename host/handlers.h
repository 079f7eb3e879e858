#pragma once

// What the host does for each keyword, as a table beside the table of commands.

#include "host/host_state.h"

namespace kova_host {

using Handler = void (*)(HostState &host, const ReceivedCommand &command);

/// The handler of a command of the table.
Handler handler_of(const kova_import::HostCommand &command);

} // namespace kova_host
