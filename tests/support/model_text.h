#pragma once

// Small model input files, record by record, to be changed by tests before they are joined.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kova_test {

/// One record of a file; `name` is what the library calls the statement that reads it.
struct Record {
    std::string name;
    std::string text;
};

using Records = std::vector<Record>;

/// A whole legacy eutrophication model: systems 1 to 3, the last of which is bypassed, two
/// segments, two fields of flows and exchanges of which the second has no functions, and something
/// in every other section. All of it comes across.
[[nodiscard]] Records legacy_records();

/// Its records through the segments.
[[nodiscard]] Records legacy_opening();

/// A whole current model: two systems, two segments of which the first has hydraulic option 3 and
/// the second 4, and otherwise what the legacy model has, in the current numbers. All of it comes
/// across.
[[nodiscard]] Records current_records();

/// Its records through the segments.
[[nodiscard]] Records current_opening();

/// Position of the `occurrence`-th record of that name, from 0.
[[nodiscard]] std::size_t position_of(const Records &records, std::string_view name,
                                      std::size_t occurrence = 0);

/// The line on which it stands, where every record is one.
[[nodiscard]] std::size_t line_of(const Records &records, std::string_view name,
                                  std::size_t occurrence = 0);

/// The records with one of them changed.
[[nodiscard]] Records with(Records records, std::string_view name, std::string_view text,
                           std::size_t occurrence = 0);

/// The records with those of a section, from `first` up to the record `next`, replaced.
[[nodiscard]] Records with_section(const Records &records, std::string_view first,
                                   std::size_t occurrence, std::string_view next,
                                   std::size_t next_occurrence, const Records &section);

/// The file: every record is a line.
[[nodiscard]] std::string text_of(const Records &records);

/// A geometry record of the current format: four integers in 5 columns each, and sixteen reals
/// in 15.
[[nodiscard]] std::string geometry_line(const std::vector<int> &integers,
                                        const std::vector<std::string> &reals);

/// A record of the current format's list of segment parameters.
[[nodiscard]] std::string listed_parameter(int number, int class_index, const std::string &scale);

/// A record with the value of a segment parameter in the current format.
[[nodiscard]] std::string parameter_value(int number, int class_index, const std::string &value);

/// A constant's record of the current format.
[[nodiscard]] std::string constant(int number, int column, const std::string &value);

} // namespace kova_test
