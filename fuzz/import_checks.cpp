#include "fuzz/import_checks.h"

#include "fuzz/section_checks.h"
#include "fuzz/section_walk.h"

#include "import_export.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <string_view>
#include <vector>

namespace kova_fuzz {

namespace {

constexpr std::int32_t time_function_section = 8;

void check_start(const Run &run, bool opened) {
    std::vector<std::string_view> start;
    for (const Sent &sent : run.trace.stages().front().commands)
        start.push_back(sent.keyword);
    const std::array<std::string_view, 4> questions = {"PDIALOG", "PDIALOG", "PDIALOG",
                                                       "GFILENAME"};
    require(start.size() > questions.size() &&
                std::equal(questions.begin(), questions.end(), start.begin()),
            "the questions come first");
    start.erase(start.begin(), start.begin() + questions.size());
    if (opened) {
        require(start.front() == "PCLEARINFO", "the introduction starts with an empty pane");
        start.erase(start.begin());
    }
    require(std::all_of(start.begin(), start.end(),
                        [](std::string_view keyword) { return keyword == "PINFOHTML"; }),
            "only the information pane is told something then");
    require(opened || start.size() == 4, "a failure to open is told in four pieces");
}

void check_open_failure(const Run &run) {
    check_start(run, false);
    require(run.notices.size() == 1 && run.notices.front().section == 0,
            "a failure to open is one notice");
    require(run.notices.front().kind == IMPORT_EXPORT_OPEN_FAILED ||
                run.notices.front().kind == IMPORT_EXPORT_READ_FAILED,
            "it tells of a path or of the header");
    require(IMPORT_EXPORT.import_error == 0, "no section has failed then");
}

bool is_report(std::string_view keyword) {
    return keyword == "PINFOHTML" || keyword == "GSPRINTFI" || keyword == "GSPRINTFR";
}

void check_failure(const Trace &trace, std::int32_t section, bool is_current) {
    if (section > 1) {
        check_failed_section(trace, section);
        return;
    }
    const Stage &stage = trace.section(section);
    const std::deque<Sent> &commands = stage.commands;
    require(stage.only(is_report), "an opening block that fails sends no data");
    if (is_current)
        require(commands.size() >= 3 && commands[commands.size() - 3].keyword == "GSPRINTFI",
                "a current section that fails reports its line in the pane");
}

void check_model_parameters(const Run &run, const kova_host::Model &model, bool is_current) {
    const Stage &stage = run.trace.section(1);
    const auto first_datum =
        std::find_if_not(stage.commands.begin(), stage.commands.end(),
                         [](const Sent &sent) { return is_report(sent.keyword); });
    require(first_datum != stage.commands.end() && first_datum->keyword == "PFILENAME",
            "the model file's name is the first datum");
    require(stage.commands.back().keyword == "PMODELOUTPUTINTERVAL",
            "the output interval is the last");
    for (const std::string_view once :
         {"PFILENAME", "PMODELTYPE", "PSEEDTIME", "PSEEDDATE", "PHYDSKIPDATE", "PHYDSKIPTIME",
          "PENDJULIAN", "PNUMSYS", "PSYSTEMSREFRESH", "PSOLUTIONTYPE", "PNEGSLN", "PICRD", "PINTYP",
          "PFRACMAXTS", "PMAXDT", "PMINDT", "PMODELOUTPUTINTERVAL"})
        require(stage.count(once) == 1, "every datum of the opening block is sent once");
    const std::ptrdiff_t count = std::max(run.system_count, 0);
    require(stage.count("PSYSNAME") == count, "every system gets its name");
    // Sections of the current format bring the systems that they count, also those behind the last.
    require(is_current ? std::ssize(model.systems) >= count : std::ssize(model.systems) == count,
            "the host has as many systems as were announced");
    require(model.settings.model_type == IMPORT_EXPORT.model_type, "the model types agree");
    require(run.system_count == (is_current ? run.trace.section(2).system_count
                                            : IMPORT_EXPORT.state_variable_count),
            "the system counts agree");
    require(is_current || run.system_count <= 28, "there are no more state variables than systems");
}

void check_segments(const Run &run, const kova_host::Model &model, bool is_current) {
    const Stage &stage = run.trace.section(2);
    const std::ptrdiff_t count = std::max(run.segment_count, 0);
    require(run.segment_count_seen && stage.commands.front().keyword == "PNUMSEG",
            "the segment count is the first datum");
    require(stage.commands.back().keyword == "PSEGMENTSREFRESH", "the end of the segments is told");
    require(run.segment_count == run.trace.section(3).segment_count, "the segment counts agree");
    require(std::ssize(model.segments) == count, "the host has as many segments as announced");
    constexpr std::ptrdiff_t settings = 8;
    const std::ptrdiff_t a_segment = is_current ? 20 : 13;
    require(std::ssize(stage.commands) == settings + count * a_segment,
            "every segment gets all its data");
}

void check_section_run(const Run &run, const kova_host::ReferenceHost &host, const Input &input) {
    constexpr std::array<std::int32_t, 13> progress = {-1, 0,  5,  10, 20, 30, 40,
                                                       50, 60, 70, 80, 85, 100};
    const std::deque<Stage> &stages = run.trace.stages();
    require(
        std::equal(progress.begin(), progress.end(), stages.begin(), stages.end(),
                   [](std::int32_t value, const Stage &stage) { return value == stage.progress; }),
        "the driver moves the progress through its twelve values");
    check_start(run, true);
    const Stage &end = stages.back();
    require(!end.commands.empty() && end.commands.front().keyword == "PDIALOG" &&
                end.count("PDIALOG") == 1 && end.only([](std::string_view keyword) {
                    return keyword == "PDIALOG" || keyword == "PINFOHTML";
                }),
            "the import ends with a question and a note");

    const bool is_current = is_current_format();
    std::int32_t failed = 0;
    for (const Notice &notice : run.notices)
        if (notice.kind == IMPORT_EXPORT_READ_FAILED) {
            require(failed == 0 && notice.section >= 1 && notice.section <= 11,
                    "one section fails at most");
            failed = notice.section;
            require(notice.statement_number == IMPORT_EXPORT.line_counter,
                    "the notice and the host's line counter agree");
        }
    require(failed <= input.last_section, "no section runs behind the last");
    require(IMPORT_EXPORT.import_error == (failed != 0 || run.is_ended_by_host ? 1 : 0),
            "the error flag is set exactly when a section failed");

    for (std::int32_t section = 1; section <= 11; ++section) {
        const Stage &stage = run.trace.section(section);
        if (section == failed)
            check_failure(run.trace, section, is_current);
        else if (section > input.last_section || (failed != 0 && section > failed))
            require(stage.commands.empty(), "nothing is sent for a section that does not run");
        else if (section == 1)
            check_model_parameters(run, host.model(), is_current);
        else if (section == 2)
            check_segments(run, host.model(), is_current);
        else if (section < time_function_section)
            check_network_section(run.trace, section);
        else
            check_data_section(run.trace, section, input.has_tables);
    }
    check_model(host.model());
    require(run.system_count_seen == (failed != 1), "systems come with the opening block only");
    require(run.segment_count_seen == (input.last_section > 1 && (failed == 0 || failed > 2)),
            "segments come with their section only");
}

/// Of the current format no record stands for more than its own commands. A blank line is a record:
/// two of them make a segment with its 21 commands, which is the most for a byte.
void check_command_count(const Run &run, const Input &input) {
    constexpr std::size_t commands_without_records = 200;
    constexpr std::size_t commands_of_byte = 11;
    require(run.command_count <= commands_without_records + commands_of_byte * input.file.size(),
            "a few bytes do not make many commands");
}

} // namespace

void check_run(const Run &run, const kova_host::ReferenceHost &host, const Input &input) {
    for (const kova_host::Violation &violation : host.violations())
        std::fprintf(stderr, "%s: %s\n", violation.keyword.c_str(), violation.sentence.c_str());
    require(host.violation_count() == 0, "the host counts no violation");
    require(run.count(IMPORT_EXPORT_CALL_REFUSED) == 0 &&
                run.count(IMPORT_EXPORT_OUT_OF_MEMORY) == 0,
            "no call is refused and memory suffices");
    require(IMPORT_EXPORT.transport_only == (input.answers && input.transport_only ? 1 : 0),
            "the scope is what was answered");
    require(IMPORT_EXPORT.index_segment_names ==
                (input.answers && !input.index_segment_names ? 0 : 1),
            "the segment names are what was answered");
    require(IMPORT_EXPORT.line_counter >= 1, "the line counter is positive");

    const TextLines lines(input.file);
    require(run.last_line_told == 0 || lines.has(run.last_line_told),
            "a notice tells of a line of the file");
    for (const Notice &notice : run.notices)
        if (notice.kind == IMPORT_EXPORT_READ_FAILED)
            check_shown_failure({notice.place, notice.width, notice.found, notice.line_text,
                                 notice.line_text_column},
                                lines);
    if (host.progress().empty())
        check_open_failure(run);
    else
        check_section_run(run, host, input);
    if (is_current_format())
        check_command_count(run, input);
}

} // namespace kova_fuzz
