#pragma once

#include "cli/import_outcome.h"

#include <string>
#include <vector>

namespace kova_command {

/// One import as a JSON document: its result, a summary, every notice once, as an error, a
/// warning or a notice, and, where a model is given, the data of the sections that came across.
[[nodiscard]] std::string import_json(const ImportOutcome &outcome,
                                      const kova_host::Model *model = nullptr);

/// A check of several files as a JSON document: each as `import_json` has it, without the data, and
/// the total.
[[nodiscard]] std::string check_json(const std::vector<ImportOutcome> &outcomes, int exit_status);

/// Escapes what is left of control characters in a JSON document, so that it can be shown on any
/// terminal.
[[nodiscard]] std::string without_controls(const std::string &json);

} // namespace kova_command
