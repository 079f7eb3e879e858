// Fuzzes whole imports. The first byte of the input says which header the file gets and what the
// host answers; the rest is the file behind its header. Built once for each family of formats, so
// that each is really reached: KOVA_FUZZ_FIRST_VERSION is 0 for the legacy one, 3 for the current.

#include "fuzz/file_mutator.h"
#include "fuzz/fuzz_support.h"
#include "fuzz/import_input.h"
#include "fuzz/import_trace.h"
#include "fuzz/new_files.h"
#include "fuzz/section_checks.h"
#include "fuzz/section_walk.h"
#include "fuzz/send_buffer_watch.h"
#include "fuzz/table_memory_watch.h"

#include "host/reference_host.h"
#include "import_export.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t most);

namespace kova_fuzz {
namespace {

constexpr std::int32_t time_function_section = 8;

// One import

/// A notice with texts of its own.
struct Notice {
    std::int32_t kind = 0;
    std::int32_t section = 0;
    std::int64_t statement_number = 0;
    kova_import::FilePlace place;
    std::int64_t width = 0;
    std::string found;
    std::string line_text;
    std::int64_t line_text_column = 0;
    std::vector<std::string> texts;

    bool operator==(const Notice &other) const {
        return kind == other.kind && section == other.section &&
               statement_number == other.statement_number && place.line == other.place.line &&
               place.column == other.place.column && width == other.width && found == other.found &&
               line_text == other.line_text && line_text_column == other.line_text_column &&
               texts == other.texts;
    }
};

/// What an import did.
struct Run {
    Trace trace;
    std::vector<Notice> notices;
    std::string log;
    std::size_t command_count = 0;
    bool segment_count_seen = false;
    std::int32_t segment_count = 0;
    bool system_count_seen = false;
    std::int32_t system_count = 0;

    [[nodiscard]] std::ptrdiff_t count(std::int32_t kind) const {
        return std::count_if(notices.begin(), notices.end(),
                             [kind](const Notice &notice) { return notice.kind == kind; });
    }
};

void KOVA_IMPORT_CALL collect(void *context, const import_export_notice *notice) {
    require(notice->size == sizeof *notice, "a notice has the size of its struct");
    require(notice->found[notice->found_length] == '\0', "what was found ends in a NUL");
    require(notice->line_text[notice->line_text_length] == '\0', "the shown line ends in a NUL");
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
    static_cast<Run *>(context)->notices.push_back(std::move(copy));
}

/// They live as long as the process, as the buffers do.
SendBufferWatch &send_buffers() {
    static SendBufferWatch watch;
    return watch;
}

void observe(Run &run, const kova_host::ReceivedCommand &command, bool has_tables) {
    require(command.command != nullptr, "the command is in the table");
    if (has_tables && command.keyword == "PDIALOG")
        IMPORT_EXPORT.report_tables = 1;
    send_buffers().see(command);
    run.trace.add(command);
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

/// Imports the file; the host is left for checking.
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
    host.observe_before([&](const kova_host::ReceivedCommand &command) {
        observe(run, command, input.has_tables);
    });
    if (input.repeat)
        host.log_to([&run](std::string_view piece) { run.log += piece; });
    IMPORT_EXPORT.notice = collect;
    IMPORT_EXPORT.notice_context = &run;
    TableMemoryWatch::start_import();
    {
        const kova_host::Connection connection = host.connect();
        importexport();
    }
    TableMemoryWatch::check_import(input.file.size());
    IMPORT_EXPORT.notice = nullptr;
    IMPORT_EXPORT.notice_context = nullptr;
    host.flush_log();
    host.observe_before({});
    host.log_to({});
    send_buffers().check_unchanged();
    return run;
}

// Invariants

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
    const std::vector<Sent> &commands = stage.commands;
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

void check_section_run(const Run &run, const kova_host::ReferenceHost &host, bool has_tables) {
    constexpr std::array<std::int32_t, 13> progress = {-1, 0,  5,  10, 20, 30, 40,
                                                       50, 60, 70, 80, 85, 100};
    const std::vector<Stage> &stages = run.trace.stages();
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
    require(IMPORT_EXPORT.import_error == (failed != 0 ? 1 : 0),
            "the error flag is set exactly when a section failed");

    for (std::int32_t section = 1; section <= 11; ++section) {
        const Stage &stage = run.trace.section(section);
        if (section == failed)
            check_failure(run.trace, section, is_current);
        else if (failed != 0 && section > failed)
            require(stage.commands.empty(), "nothing is sent for a section that does not run");
        else if (section == 1)
            check_model_parameters(run, host.model(), is_current);
        else if (section == 2)
            check_segments(run, host.model(), is_current);
        else if (section < time_function_section)
            check_network_section(run.trace, section);
        else
            check_data_section(run.trace, section, has_tables);
    }
    check_model(host.model());
    require(run.system_count_seen == (failed != 1), "systems come with the opening block only");
    require(run.segment_count_seen == (failed == 0 || failed > 2),
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
    for (const Notice &notice : run.notices) {
        require(notice.place.line == 0 || lines.has(notice.place.line),
                "a notice tells of a line of the file");
        if (notice.kind == IMPORT_EXPORT_READ_FAILED)
            check_shown_failure({notice.place, notice.width, notice.found, notice.line_text,
                                 notice.line_text_column},
                                lines);
    }
    if (host.progress().empty())
        check_open_failure(run);
    else
        check_section_run(run, host, input.has_tables);
    if (is_current_format())
        check_command_count(run, input);
}

/// Imports another file, so that what an import leaves behind shows in the next one.
void import_another(Input input, MemoryFile &file) {
    input.file = input.hash / 32 % 2 == 0 ? "   11      2\n" + new_legacy_file(input.hash)
                                          : "   11      3\n" + new_current_file(input.hash);
    input.repeat = false;
    input.has_tables = !input.has_tables;
    file.write(input.file);
    kova_host::ReferenceHost host;
    check_run(import_into(host, input, file), host, input);
}

/// Imports the file with one of its counts made large, and with the records for it.
void import_stretched(Input input, MemoryFile &file) {
    input.file = stretched_file(input.file, input.hash);
    input.repeat = false;
    file.write(input.file);
    kova_host::ReferenceHost host;
    check_run(import_into(host, input, file), host, input);
}

void run(const Input &input) {
    static MemoryFile file;
    file.write(input.file);
    kova_host::ReferenceHost host;
    const Run first = import_into(host, input, file);
    check_run(first, host, input);
    require((input.path == Path::missing) <= host.progress().empty(),
            "a file that is not there is not imported");
    if (input.is_stretched)
        import_stretched(input, file);
    if (!input.repeat)
        return;
    import_another(input, file);
    file.write(input.file);
    kova_host::ReferenceHost other_host;
    const Run second = import_into(other_host, input, file);
    check_run(second, other_host, input);
    require(!first.log.empty() &&
                without_buffer_tails(first.log) == without_buffer_tails(second.log),
            "the same file gives the same log, but for what earlier series have left");
    require(first.notices == second.notices, "the same file gives the same notices");
}

// Mutation

/// Puts a file in place of the one in `data`, whose size is given back.
std::size_t store(std::string_view file, std::uint8_t *data, std::size_t most) {
    const std::size_t size = std::min(file.size() + 1, most);
    std::copy_n(file.data(), size - 1, data + 1);
    return size;
}

std::string_view file_in(const std::uint8_t *data, std::size_t size) {
    return {reinterpret_cast<const char *>(data) + 1, size - 1};
}

std::size_t mutate(std::uint8_t *data, std::size_t size, std::size_t most, std::uint32_t seed) {
    constexpr std::uint32_t plain_options = 0x41; // the first header, a plain path
    constexpr std::uint32_t choices = 32;
    const std::uint32_t choice = seed % choices;
    const std::uint32_t rest = seed / choices;
    if (size == 0 || most == 0 || choice < 8)
        return LLVMFuzzerMutate(data, size, most);
    if (choice == 8) {
        data[0] = static_cast<std::uint8_t>(rest);
        return size;
    }
    if (choice == 9) {
        const std::uint32_t transport_only = rest % 4 == 0 ? 0x08 : 0;
        data[0] = static_cast<std::uint8_t>(plain_options | transport_only);
        return store(is_current_target ? new_current_file(rest) : new_legacy_file(rest), data,
                     most);
    }
    return store(mutated_file(file_in(data, size), rest), data, most);
}

} // namespace
} // namespace kova_fuzz

extern "C" {
int LLVMFuzzerInitialize(int *argument_count, char ***arguments);
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t most,
                                    unsigned seed);
std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t *start, std::size_t start_size,
                                      const std::uint8_t *end, std::size_t end_size,
                                      std::uint8_t *joined, std::size_t most, unsigned seed);
}

int LLVMFuzzerInitialize(int * /*argument_count*/, char *** /*arguments*/) {
    // The utility's console lines are of no interest here.
    kova_fuzz::require(std::freopen("/dev/null", "w", stdout) != nullptr,
                       "standard output can be sent away");
    kova_fuzz::TableMemoryWatch::install();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    kova_fuzz::run(kova_fuzz::input_of({reinterpret_cast<const char *>(data), size}));
    return 0;
}

std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t most,
                                    unsigned seed) {
    return kova_fuzz::mutate(data, size, most, seed);
}

std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t *start, std::size_t start_size,
                                      const std::uint8_t *end, std::size_t end_size,
                                      std::uint8_t *joined, std::size_t most, unsigned seed) {
    if (start_size == 0 || end_size == 0 || most == 0)
        return 0;
    joined[0] = start[0];
    return kova_fuzz::store(kova_fuzz::joined_files(kova_fuzz::file_in(start, start_size),
                                                    kova_fuzz::file_in(end, end_size), seed),
                            joined, most);
}
