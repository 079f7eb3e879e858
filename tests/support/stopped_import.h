#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kova_test {

/// Expects that `stopped` is the log of an import that failed in `section` (1 .. 11): the stream of
/// the `complete` one up to that section, what the section may send while it reads, its report in
/// the information pane if it has one, and then only what ends every import. In the current format
/// all sections but the flow paths have one.
void expect_stopped(const std::vector<std::string> &complete,
                    const std::vector<std::string> &stopped, int section, bool is_current,
                    const std::string &context);

/// Expects that the log goes on like that behind its first `sent` commands: with the report of the
/// section, and what ends every import.
void expect_end(const std::vector<std::string> &complete, const std::vector<std::string> &stopped,
                std::size_t sent, int section, bool is_current);

} // namespace kova_test
