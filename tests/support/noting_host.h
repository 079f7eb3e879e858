#pragma once

// A host that only notes what it gets, for tests that import thousands of times, or that need a
// host which fails. A program that links it has no other host.

#include "control/host_commands.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kova_test {

/// A command as the library gives it: what stands behind the addresses may be written.
struct HostCall {
    const kova_import::HostCommand &command;
    char *keyword;
    std::span<void *const> arguments;
    std::span<const std::size_t> lengths; ///< the keyword's, then those of the texts
};

struct NotingHost {
    std::string import_path;
    bool transport_only = false;
    /// Called before each command takes effect. An exception goes through to the library.
    std::function<void(std::string_view keyword)> before;
    /// Called when the command has been noted and what the library waits for has been written.
    std::function<void(const HostCall &call)> after;
    /// One line for each command: entry point, keyword, its length, and a sum of the arguments that
    /// the library gives; of "PPROGRESS" the percentage. Of a series only what was announced
    /// counts: what stands behind it in the buffers is older than the import.
    std::vector<std::string> log;
};

/// The host that the library finds; the program sets its members.
[[nodiscard]] NotingHost &noting_host();

} // namespace kova_test
