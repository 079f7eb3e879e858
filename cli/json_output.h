#pragma once

#include "cli/import_outcome.h"
#include "cli/output.h"

#include <vector>

namespace kova_command {

/// One import as a JSON document: its result, a summary, every notice once, as an error, a
/// warning or a notice, and, where a model is given, the data of the sections that came across.
void import_json(const TextSink &sink, const ImportOutcome &outcome,
                 const kova_host::Model *model = nullptr);

/// A check of several files as a JSON document: each as `import_json` has it, without the data, and
/// the total.
void check_json(const TextSink &sink, const std::vector<ImportOutcome> &outcomes, int exit_status);

} // namespace kova_command
