#pragma once

#include <string>
#include <vector>

namespace kova_test {

/// Expects that `stopped` is the log of an import that failed in `section` (1 .. 11): the stream of
/// the `complete` one up to that section, what the section may send while it reads, its report in
/// the information pane if it has one, and then only what ends every import.
void expect_stopped(const std::vector<std::string> &complete,
                    const std::vector<std::string> &stopped, int section, bool reports_to_pane,
                    const std::string &context);

} // namespace kova_test
