#pragma once

// Runs imports inside the test's process: the library's objects, the reference host, and files in a
// folder of their own.

#include "host/reference_host.h"
#include "import_export.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kova_test {

/// A notice with texts of its own.
struct Notice {
    explicit Notice(const import_export_notice &notice);

    std::int32_t kind;
    std::int32_t section;
    std::string section_name;
    std::string statement;
    std::int64_t statement_number;
    std::int64_t line;
    std::int64_t column;
    std::int64_t width;
    std::string field;
    std::string expected;
    std::string found;
    std::string reason;
    std::string advice;
    std::string line_text;
    std::int64_t line_text_column;
    std::int64_t number;
    std::string name;
    std::string path;
};

/// What one import did.
struct ImportRun {
    std::vector<std::string> log; ///< stamped values replaced
    std::vector<std::string> console;
    std::vector<Notice> notices;

    /// The log lines of the given keyword, without the entry point and the keyword.
    [[nodiscard]] std::vector<std::string> arguments_of(std::string_view keyword) const;
    /// The keywords in order, the information pane's apart.
    [[nodiscard]] std::vector<std::string> keywords() const;
    /// Notices of one kind.
    [[nodiscard]] std::vector<Notice> notices_of(std::int32_t kind) const;
};

struct ImportSettings {
    bool transport_only = false;
    bool index_segment_names = true;
    bool want_notices = true;
    bool report_tables = false; ///< the host asks for tables while the first question is open
    /// Called before each command takes effect.
    kova_host::CommandObserver before;
    /// The path that the host gives; "model.inp" is the file with the text.
    std::string path = "model.inp";
};

/// The settings that a file of options asks for: lines such as `scope transport` and `index-names
/// no`. No file: the defaults.
[[nodiscard]] ImportSettings settings_of(const std::filesystem::path &path);

/// Imports a file with the given text, as `model.inp` in a folder of its own, which is the current
/// directory meanwhile.
[[nodiscard]] ImportRun import_text(std::string_view text, const ImportSettings &settings = {});

/// Makes both send buffers all zero, as they are when the library is loaded: they outlive an
/// import.
void clear_send_buffers();

/// Calls any exported routine with a connected host, without a file.
[[nodiscard]] ImportRun run_routine(const std::function<void()> &routine,
                                    const ImportSettings &settings = {});

/// The lines of a text.
[[nodiscard]] std::vector<std::string> lines_of(std::string_view text);

/// The log with the values of the version page that differ from build to build replaced by
/// `<stamped>`.
[[nodiscard]] std::vector<std::string> without_stamps(std::vector<std::string> log);

} // namespace kova_test
