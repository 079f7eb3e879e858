#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kova_command {

/// The word among `known` that `word` was most likely meant to be; none when all are too different.
[[nodiscard]] std::optional<std::string> nearest(std::string_view word,
                                                 const std::vector<std::string> &known);

} // namespace kova_command
