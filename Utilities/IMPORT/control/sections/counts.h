#pragma once

#include "control/record_reader.h"

#include <cstdint>

namespace kova_import {

/// Segments that may get commands although no record of the section backs their number: a few bytes
/// must not make thousands of millions of commands.
inline constexpr std::int32_t most_unbacked_segments = 100000;

/// Reads a count that sections share through the data block, where a record that leaves it out
/// leaves it as it is. The section loops over the copy that it gets: the host may write the block.
[[nodiscard]] inline std::int32_t read_shared_count(RecordReader &reader, const char *name,
                                                    std::int32_t &shared) {
    reader.list(name, field(name, shared));
    return shared;
}

/// Reads a count that belongs to the section alone. A record that leaves it out means none.
[[nodiscard]] inline std::int32_t read_count(RecordReader &reader, const char *name) {
    std::int32_t count = 0;
    reader.list(name, field(name, count));
    return count;
}

} // namespace kova_import
