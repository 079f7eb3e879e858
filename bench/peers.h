#pragma once

// What the benchmark measures: each of these goes once through a model file, starting with opening
// it, and says whether all went well.

namespace kova_import::bench {

using Peer = bool (*)(const char *path);

/// Imports the file through the shared library into the host that the program is linked with.
bool import_with_library(const char *path);

/// The same by a Fortran program: the same read statements, the same host commands.
bool import_with_fortran(const char *path);

/// Converts all that looks like a number and adds it up, one std::from_chars after the other. It
/// knows no records, keeps no tables and calls no host.
bool add_up_numbers(const char *path);

/// Reads the bytes and does nothing with them.
bool read_bytes(const char *path);

} // namespace kova_import::bench
