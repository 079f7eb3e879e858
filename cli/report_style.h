#pragma once

#include <string_view>

namespace kova_command {

/// The style sheet of the report page: for bright and dark screens, and for paper.
[[nodiscard]] std::string_view report_style();

} // namespace kova_command
