#include "cli/import_command.h"

#include "cli/diagnostics.h"
#include "cli/import_session.h"
#include "cli/json_output.h"
#include "cli/output.h"
#include "cli/questions.h"
#include "cli/report_page.h"
#include "cli/summary.h"
#include "cli/terminal.h"
#include "cli/text.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kova_command {

namespace {

ProgressDisplay::Style progress_style(const ImportOptions &options, const Screen &screen) {
    if (options.quiet)
        return ProgressDisplay::Style::none;
    if (screen.overwrites)
        return ProgressDisplay::Style::bar;
    // A program that reads the result has no use for lines that come and go.
    return options.json ? ProgressDisplay::Style::none : ProgressDisplay::Style::lines;
}

ImportRequest request_of(const ImportOptions &options, ProgressDisplay &progress,
                         std::optional<OutputFile> &log) {
    ImportRequest request;
    request.path = options.file;
    request.transport_only = options.transport_only;
    request.index_segment_names = options.index_segment_names;
    request.keep_console = options.verbose;
    request.keep_pane = !options.report.empty();
    if (options.ask)
        request.ask = ask_at_terminal;
    request.progress = [&progress](std::int32_t percentage, std::string_view section) {
        progress.show(percentage, section);
    };
    if (log)
        request.log = [&log](std::string_view piece) { log->write(piece); };
    return request;
}

/// Shows the lines that the library has printed.
void show_console(std::string_view lines) {
    constexpr std::size_t much = std::size_t{64} * 1024;
    std::string text;
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        text += "library: " + printable(lines.substr(0, end)) + '\n';
        lines.remove_prefix(std::min(end + 1, lines.size()));
        if (text.size() > much)
            write_message(std::exchange(text, {}));
    }
    write_message(text);
}

void show(const ImportOutcome &outcome, const kova_host::Model &model, const ImportOptions &options,
          const Screen &screen) {
    show_console(outcome.console);
    write_diagnostics(write_message, outcome,
                      {.colour = screen.colour,
                       .width = screen.width,
                       .ungrouped = options.verbose,
                       .all_places = false});
    if (options.json)
        import_json(write_result, outcome, options.data ? &model : nullptr);
    else if (!options.quiet)
        write_result(summary_text(outcome, screen_of(stdout).colour));
}

/// What the files to be written would overwrite; empty when all is well.
std::string overwriting(const ImportOptions &options) {
    if (!options.log.empty() && is_same_file(options.log, options.file))
        return "the command log would overwrite the import file";
    if (options.report.empty())
        return {};
    if (is_same_file(options.report, options.file))
        return "the report would overwrite the import file";
    if (!options.log.empty() && is_same_file(options.report, options.log))
        return "the report would overwrite the command log";
    return {};
}

} // namespace

int run_import_command(const ImportOptions &options, const UtilityLibrary &library) {
    if (options.ask && !can_ask()) {
        write_message("kova-import: error: --ask needs a terminal to ask at\n"
                      "Use --scope and --index-names to answer the questions beforehand.\n");
        return exit_status::wrong_use;
    }
    if (const std::string error = overwriting(options); !error.empty()) {
        write_message("kova-import: error: " + error + '\n');
        return exit_status::wrong_use;
    }
    std::optional<OutputFile> log;
    if (!options.log.empty())
        log.emplace("command log", options.log);
    const Screen screen = screen_of(stderr);
    ProgressDisplay progress(stderr, progress_style(options, screen), screen.width);
    ImportSession session(library);
    const ImportOutcome outcome = session.run(request_of(options, progress, log));
    progress.finish();
    if (outcome.verdict == Verdict::cancelled) {
        write_message("kova-import: error: a question got no answer; nothing was imported\n");
        return exit_status_of(outcome.verdict);
    }
    show(outcome, session.model(), options, screen);
    if (log)
        log->finish();
    if (!options.report.empty()) {
        OutputFile report("report", options.report);
        report.write(report_page(outcome));
        report.finish();
    }
    return exit_status_of(outcome.verdict);
}

} // namespace kova_command
