#include "cli/check_command.h"

#include "cli/diagnostics.h"
#include "cli/import_session.h"
#include "cli/json_output.h"
#include "cli/output.h"
#include "cli/sarif_output.h"
#include "cli/summary.h"
#include "cli/terminal.h"
#include "cli/text.h"

#include <algorithm>
#include <utility>

namespace kova_command {

namespace {

int status_of(const std::vector<ImportOutcome> &outcomes) {
    const auto is_broken = [](const ImportOutcome &outcome) {
        return outcome.verdict == Verdict::internal_error;
    };
    if (std::any_of(outcomes.begin(), outcomes.end(), is_broken))
        return exit_status::internal_error;
    return std::all_of(outcomes.begin(), outcomes.end(), is_whole) ? exit_status::success
                                                                   : exit_status::stopped;
}

std::string total_text(const std::vector<ImportOutcome> &outcomes) {
    const auto files = static_cast<std::int64_t>(outcomes.size());
    const auto whole = std::count_if(outcomes.begin(), outcomes.end(), is_whole);
    return counted(files, "file", "files") + ": " + std::to_string(whole) + " whole, " +
           std::to_string(files - whole) + " not whole\n";
}

} // namespace

int run_check_command(const CheckOptions &options, const UtilityLibrary &library) {
    const Screen screen = screen_of(stderr);
    const bool is_text = options.format == CheckFormat::text;
    ImportSession session(library);
    std::vector<ImportOutcome> outcomes;
    outcomes.reserve(options.files.size());
    for (const std::string &file : options.files) {
        ImportRequest request;
        request.path = file;
        request.transport_only = options.transport_only;
        request.index_segment_names = options.index_segment_names;
        ImportOutcome outcome = session.run(request);
        if (is_text) {
            if (!options.quiet || !outcome.internal_errors.empty())
                write_diagnostics(write_message, outcome,
                                  {.colour = screen.colour,
                                   .width = screen.width,
                                   .ungrouped = options.verbose,
                                   .all_places = true});
            write_result(check_verdict_text(outcome, screen_of(stdout).colour));
        }
        outcomes.push_back(std::move(outcome));
    }
    const int status = status_of(outcomes);
    if (is_text)
        write_result(total_text(outcomes));
    else if (options.format == CheckFormat::json)
        check_json(write_result, outcomes, status);
    else
        check_sarif(write_result, outcomes, status);
    return status;
}

} // namespace kova_command
