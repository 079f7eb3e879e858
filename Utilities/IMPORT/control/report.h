#pragma once

#include "control/host_link.h"
#include "control/import_module.h"

#include <cstddef>
#include <cstdint>

namespace kova_import {

/// Where a section reports a failed read, beside the console.
enum class ErrorReport : std::uint8_t {
    console_only,
    information_pane, ///< also one line in the host's information pane
};

/// Starts a blue line in the information pane; the message that closes it follows as a fragment of
/// its own.
inline void start_report_line() {
    send<"PINFOHTML">("<li><span style=\"font-weight: bold; color: blue;\">");
}

/// A blue line in the information pane. `message` ends in "</span></li>".
template <std::size_t n>
void send_report_line(const char (&message)[n]) {
    start_report_line();
    send<"PINFOHTML">(message);
}

/// A table cell with a number, which the host formats.
void send_cell(std::int32_t value);

template <std::size_t n>
void send_cell(float value, const char (&format)[n]) {
    FixedText<132> text;
    send<"GSPRINTFR">(Result{text}, format, value);
    send<"PINFOHTML">(TerminatedText{text});
}

/// Tells that the running section failed at the present statement, and sets `import_error`.
void report_read_error(ImportModule &module, ErrorReport where);

} // namespace kova_import
