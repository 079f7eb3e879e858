#pragma once

// The model that an import has built, as JSON.

#include "cli/import_outcome.h"
#include "host/model.h"

#include <nlohmann/json.hpp>

namespace kova_command {

/// Members in the order in which people read them.
using Json = nlohmann::ordered_json;

/// A single-precision number with the digits that people write for it; null when it is not finite.
[[nodiscard]] Json number_json(float number);

/// The data of flow paths, flow time series, exchanges, boundary conditions and loads, one member
/// each; null for a section that was not imported. A series has a list of its times and one of its
/// values, so that a long one stays readable for programs and people. Counts are those that the
/// host was told.
[[nodiscard]] Json data_json(const ImportOutcome &outcome, const kova_host::Model &model);

} // namespace kova_command
