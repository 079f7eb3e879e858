#pragma once

// Checks a call against the table of commands.

#include "host/received_command.h"

#include <string>
#include <vector>

namespace kova_host {

/// Decodes a call. A sentence is added to `problems` for everything that breaks the rules; then the
/// command is not well formed. A keyword that is not known, or not at this entry point, leaves
/// `command` null. Lengths are believed; nothing else is.
ReceivedCommand decode(const RawCall &call, std::vector<std::string> &problems);

} // namespace kova_host
