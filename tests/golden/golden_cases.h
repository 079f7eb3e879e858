#pragma once

// Whole imports of small files, compared with logs that were worked out by hand: see
// cases/README.md.

#include <filesystem>
#include <string>
#include <vector>

namespace kova_test {

/// The names of the cases in the folder, in order.
[[nodiscard]] std::vector<std::string> golden_case_names(const std::filesystem::path &folder);

/// Files in the folder that belong to no input.
[[nodiscard]] std::vector<std::string> stray_golden_files(const std::filesystem::path &folder);

/// Imports a case, with send buffers that are zero. Returns the first difference from its log, or
/// else from its console lines; empty when there is none.
[[nodiscard]] std::string golden_difference(const std::filesystem::path &folder,
                                            const std::string &name);

} // namespace kova_test
