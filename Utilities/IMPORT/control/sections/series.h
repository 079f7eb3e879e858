#pragma once

// Time series as the records of the sections give them.

#include "control/chunked_list.h"
#include "control/record_reader.h"

#include <cstdint>
#include <tuple>

namespace kova_import {

/// A point of a time series, in the order of its record: the value and the time (days), or the
/// other way round in time functions.
struct Breakpoint {
    float first = 0;
    float second = 0;
};

/// The breakpoints of all series of a section, one behind the other.
using Breakpoints = ChunkedList<Breakpoint>;

inline constexpr auto value_and_time = std::tuple{
    member("value", &Breakpoint::first),
    member("time", &Breakpoint::second),
};

inline constexpr auto time_and_value = std::tuple{
    member("time", &Breakpoint::first),
    member("value", &Breakpoint::second),
};

/// Reads `count` breakpoint records, each a free-form pair of reals.
template <class Members>
void read_breakpoints(RecordReader &reader, const char *statement, const Members &members,
                      std::int32_t count, Breakpoints &breakpoints) {
    reader.for_each_record(count, [&](std::int32_t) {
        Breakpoint breakpoint;
        reader.list(statement, fields_of(breakpoint, members));
        if (reader.ok())
            breakpoints.push_back(breakpoint);
    });
}

} // namespace kova_import
