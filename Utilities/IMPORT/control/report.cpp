#include "control/report.h"

#include "control/console.h"

namespace kova_import {

void send_cell(std::int32_t value) {
    FixedText<132> text;
    send<"GSPRINTFI">(Result{text}, "%d", value);
    send<"PINFOHTML">(TerminatedText{text});
}

void report_read_error(ImportModule &module, ErrorReport where) {
    console::write_line("Error Reading Import File at Line: ", module.reader.line_counter());
    if (where == ErrorReport::information_pane) {
        FixedText<80> error_line;
        send<"GSPRINTFI">(Result{error_line}, "Error Reading Import File at Line # %d </span></li>",
                          module.reader.saturated_line_counter());
        start_report_line();
        send<"PINFOHTML">(error_line);
    }
    module.shared.import_error = 1;
}

} // namespace kova_import
