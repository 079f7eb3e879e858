#pragma once

// The command line.

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace kova_command {

/// `kova-import import`, or no sub-command.
struct ImportOptions {
    std::string file;
    bool transport_only = false;
    bool index_segment_names = true;
    bool ask = false;
    bool json = false;
    bool data = false; ///< in the JSON, too
    bool verbose = false;
    bool quiet = false;
    std::string log;    ///< file of the command log; empty for none
    std::string report; ///< file of the report page; empty for none
};

enum class CheckFormat : std::uint8_t { text, json, sarif };

/// `kova-import check`.
struct CheckOptions {
    std::vector<std::string> files;
    bool transport_only = false;
    bool index_segment_names = true;
    CheckFormat format = CheckFormat::text;
    bool verbose = false;
    bool quiet = false;
};

/// A command line that is answered at once: a request for help or the version, or a wrong one.
struct Reply {
    int exit_status = 0;
    std::string output; ///< for standard output
    std::string error;  ///< for standard error
};

using CommandLine = std::variant<ImportOptions, CheckOptions, Reply>;

/// Understands the arguments behind the program's name.
[[nodiscard]] CommandLine parse_command_line(const std::vector<std::string> &arguments);

} // namespace kova_command
