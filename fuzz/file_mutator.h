#pragma once

// Changes model input files and keeps most of their structure: a file that has lost one line hardly
// ever gets as far as the last sections, however many bytes are tried.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kova_fuzz {

// The input of a target is some bytes of options, and the file or section behind them.

/// The file behind `options` bytes, of which there are as many in `data`.
[[nodiscard]] std::string_view file_behind(std::size_t options, const std::uint8_t *data,
                                           std::size_t size);

/// Puts a file in place of the one in `data`, which has room for `most` bytes, and returns the new
/// size of the input.
std::size_t put_file_behind(std::size_t options, std::string_view file, std::uint8_t *data,
                            std::size_t most);

/// Changes `text` a little, always in the same way for the same `seed`; the result may be longer.
[[nodiscard]] std::string mutated_file(std::string_view text, std::uint32_t seed);

/// The start of one text and the end of the other, cut between lines.
[[nodiscard]] std::string joined_files(std::string_view start, std::string_view end,
                                       std::uint32_t seed);

/// `text` with one of its counts made large, and the records behind it repeated as often.
[[nodiscard]] std::string stretched_file(std::string_view text, std::uint32_t seed);

} // namespace kova_fuzz
