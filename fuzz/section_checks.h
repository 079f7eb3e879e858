#pragma once

// What holds for the commands of the sections behind the segments.

#include "fuzz/import_trace.h"

#include <cstdint>

namespace kova_fuzz {

/// Checks a section from flow paths (3) to loads (7) that has not failed: every count that it
/// announces is followed by that many records of the right numbers, and by nothing else, and the
/// line counter has moved by the records that this takes.
void check_network_section(const Trace &trace, std::int32_t section);

/// Checks a section from time functions (8) to initial conditions (11) that has not failed, in the
/// same way; what is sent twice is the same both times, and values that a file leaves out are
/// numbers.
void check_data_section(const Trace &trace, std::int32_t section, bool has_tables);

/// The same for a section of the current format.
void check_current_data_section(const Trace &trace, std::int32_t section);

/// Checks a section from segments (2) to initial conditions (11) that has failed: it has sent
/// nothing but the moves of the progress indicator and, in the current format, the line of the
/// pane.
void check_failed_section(const Trace &trace, std::int32_t section);

/// Lists of the model have the size that was announced for them.
void check_model(const kova_host::Model &model);

} // namespace kova_fuzz
