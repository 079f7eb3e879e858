#pragma once

#include "cli/import_outcome.h"
#include "cli/output.h"

#include <vector>

namespace kova_command {

/// A check of several files as a SARIF 2.1.0 log: one rule for each kind of notice, one result for
/// each notice.
void check_sarif(const TextSink &sink, const std::vector<ImportOutcome> &outcomes, int exit_status);

} // namespace kova_command
