#pragma once

// The model that an import has built, as JSON.

#include "cli/import_outcome.h"
#include "cli/json_writer.h"
#include "host/model.h"

namespace kova_command {

/// Writes the data of flow paths, flow time series, exchanges, boundary conditions and loads, one
/// member each; null for a section that was not imported. A series has a list of its times and one
/// of its values, so that a long one stays readable for programs and people. Counts are those that
/// the host was told.
void write_data(JsonWriter &out, const ImportOutcome &outcome, const kova_host::Model &model);

} // namespace kova_command
