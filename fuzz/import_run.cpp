#include "fuzz/import_run.h"

#include "fuzz/section_walk.h"
#include "fuzz/send_buffer_watch.h"
#include "fuzz/table_memory_watch.h"

#include "import_export.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

namespace kova_fuzz {

namespace {

void KOVA_IMPORT_CALL collect(void *context, const import_export_notice *notice) {
    require(notice->size == sizeof *notice, "a notice has the size of its struct");
    require(notice->found[notice->found_length] == '\0', "what was found ends in a NUL");
    require(notice->line_text[notice->line_text_length] == '\0', "the shown line ends in a NUL");
    require(notice->line >= 0, "lines count from 1, and 0 is none");
    Run &run = *static_cast<Run *>(context);
    run.last_line_told = std::max(run.last_line_told, notice->line);
    // A large file of short lines leaves out more items than there is memory for keeping.
    constexpr std::size_t most_kept = 100'000;
    if (run.notices.size() >= most_kept && notice->kind == IMPORT_EXPORT_DEFAULTED)
        return;
    Notice copy{notice->kind,
                notice->section,
                notice->statement_number,
                {notice->line, notice->column},
                notice->width,
                std::string(notice->found, notice->found_length),
                std::string(notice->line_text, notice->line_text_length),
                notice->line_text_column,
                {notice->section_name, notice->statement, notice->field, notice->expected,
                 notice->reason, notice->advice, notice->path}};
    run.notices.push_back(std::move(copy));
}

/// They live as long as the process, as the buffers do.
SendBufferWatch &send_buffers() {
    static SendBufferWatch watch;
    return watch;
}

// The legacy format has a list for each number of a time function, and for each number of a segment
// parameter that is kept, 0 .. 106. Which format it is, the file says. The chunks of a section stay
// until the import ends, and serve the sections behind it.
constexpr std::size_t segment_parameter_section = 9;
constexpr std::size_t most_lists = 12;
constexpr std::size_t most_time_functions = 50;
constexpr std::size_t most_parameters = 107;

std::size_t most_lists_with(std::size_t more_of_legacy) {
    return most_lists + (is_current_format() ? 0 : more_of_legacy);
}

/// Of the sections behind the last one that is wanted, none runs.
void end_behind_last_section(Run &run, std::int32_t last_section) {
    constexpr std::int32_t section_count = 11;
    const auto section = static_cast<std::int32_t>(run.trace.stages().size()) - 1;
    if (section <= last_section || section > section_count || IMPORT_EXPORT.import_error != 0)
        return;
    IMPORT_EXPORT.import_error = 1;
    run.is_ended_by_host = true;
}

void observe(Run &run, const kova_host::ReceivedCommand &command, const Input &input) {
    require(command.command != nullptr, "the command is in the table");
    if (input.has_tables && command.keyword == "PDIALOG")
        IMPORT_EXPORT.report_tables = 1;
    send_buffers().see(command);
    run.trace.add(command);
    end_behind_last_section(run, input.last_section);
    if (command.keyword == "PPROGRESS" &&
        run.trace.stages().size() == segment_parameter_section + 1)
        TableMemoryWatch::check(input.file.size(), most_lists_with(most_time_functions));
    ++run.command_count;
    for (std::size_t i = 0; i < command.entry_point; ++i)
        require(command.command->arguments[i].kind != kova_import::ArgumentKind::real ||
                    command.keyword == "GSPRINTFR" || std::isfinite(command.real(i)),
                "only averages can be no number");
    const std::string_view keyword = command.command->keyword;
    if (keyword == "PNUMSEG") {
        run.segment_count_seen = true;
        run.segment_count = command.integer(0);
    } else if (keyword == "PNUMSYS") {
        run.system_count_seen = true;
        run.system_count = command.integer(0);
    }
}

} // namespace

void prepare_process() {
    // The utility's console lines are of no interest here.
    require(std::freopen("/dev/null", "w", stdout) != nullptr, "standard output can be sent away");
    TableMemoryWatch::install();
}

Run import_into(kova_host::ReferenceHost &host, const Input &input, const MemoryFile &file) {
    Run run;
    if (input.answers) {
        kova_host::DialogSettings answers;
        answers.scope = input.transport_only ? kova_host::first_button : kova_host::second_button;
        answers.index_segment_names =
            input.index_segment_names ? kova_host::first_button : kova_host::second_button;
        host.answer_dialogs(answers);
    } else {
        host.answer_dialogs(kova_host::Unanswered{});
    }
    host.set_import_file(path_of(file, input.path));
    host.observe_before(
        [&](const kova_host::ReceivedCommand &command) { observe(run, command, input); });
    if (input.repeat)
        host.log_to([&run](std::string_view piece) { run.log += piece; });
    IMPORT_EXPORT.notice = collect;
    IMPORT_EXPORT.notice_context = &run;
    TableMemoryWatch::start_import();
    {
        const kova_host::Connection connection = host.connect();
        importexport();
    }
    TableMemoryWatch::check(input.file.size(), most_lists_with(most_parameters));
    IMPORT_EXPORT.notice = nullptr;
    IMPORT_EXPORT.notice_context = nullptr;
    host.flush_log();
    host.observe_before({});
    host.log_to({});
    send_buffers().check_unchanged();
    return run;
}

} // namespace kova_fuzz
