#pragma once

// What holds for every import.

#include "fuzz/import_run.h"

#include "host/reference_host.h"

namespace kova_fuzz {

/// Checks an import that has just ended, and the host that it filled.
void check_run(const Run &run, const kova_host::ReferenceHost &host, const Input &input);

} // namespace kova_fuzz
