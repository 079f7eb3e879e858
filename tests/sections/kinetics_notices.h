#pragma once

// What a person is told of a section, as far as the tests of the kinetics look at it.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace kova_test {

inline constexpr std::int32_t time_functions = 8;
inline constexpr std::int32_t segment_parameters = 9;
inline constexpr std::int32_t constants = 10;
inline constexpr std::int32_t initial_conditions = 11;

/// A notice as far as these tests look at it; `line` is 0 where no record stands for it.
struct Told {
    std::int32_t kind;
    std::int64_t number;
    std::string name;
    std::size_t line;

    friend bool operator==(const Told &, const Told &) = default;
    friend std::ostream &operator<<(std::ostream &stream, const Told &told) {
        return stream << "kind " << told.kind << ", number " << told.number << ", " << told.name
                      << ", line " << told.line;
    }
};

inline std::vector<Told> told_of(const ImportRun &run, std::int32_t section) {
    std::vector<Told> all;
    for (const Notice &notice : run.notices)
        if (notice.section == section)
            all.push_back(
                {notice.kind, notice.number, notice.name, static_cast<std::size_t>(notice.line)});
    return all;
}

inline std::vector<Told> told(const Records &records, std::int32_t section,
                              bool transport_only = false) {
    ImportSettings settings;
    settings.transport_only = transport_only;
    return told_of(import_text(text_of(records), settings), section);
}

} // namespace kova_test
