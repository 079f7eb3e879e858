#pragma once

// One import with the reference host, and what it did.

#include "fuzz/fuzz_support.h"
#include "fuzz/import_input.h"
#include "fuzz/import_trace.h"

#include "host/reference_host.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace kova_fuzz {

/// A notice with texts of its own.
struct Notice {
    std::int32_t kind = 0;
    std::int32_t section = 0;
    std::int64_t statement_number = 0;
    kova_import::FilePlace place;
    std::int64_t width = 0;
    std::string found;
    std::string line_text;
    std::int64_t line_text_column = 0;
    std::vector<std::string> texts;

    bool operator==(const Notice &other) const {
        return kind == other.kind && section == other.section &&
               statement_number == other.statement_number && place.line == other.place.line &&
               place.column == other.place.column && width == other.width && found == other.found &&
               line_text == other.line_text && line_text_column == other.line_text_column &&
               texts == other.texts;
    }
};

/// What an import did.
struct Run {
    Trace trace;
    std::deque<Notice> notices;      ///< of a large file not all that tell of items left out
    std::int64_t last_line_told = 0; ///< of all notices
    std::string log;
    std::size_t command_count = 0;
    bool segment_count_seen = false;
    std::int32_t segment_count = 0;
    bool system_count_seen = false;
    std::int32_t system_count = 0;
    bool is_ended_by_host = false;

    [[nodiscard]] std::ptrdiff_t count(std::int32_t kind) const {
        return std::count_if(notices.begin(), notices.end(),
                             [kind](const Notice &notice) { return notice.kind == kind; });
    }
};

/// Once in a process, before its first import.
void prepare_process();

/// Imports the file; the host is left for checking.
[[nodiscard]] Run import_into(kova_host::ReferenceHost &host, const Input &input,
                              const MemoryFile &file);

} // namespace kova_fuzz
