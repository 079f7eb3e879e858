#include "tests/support/import_run.h"

#include "cli/standard_output_capture.h"
#include "control/host_commands.h"
#include "tests/support/model_text.h"
#include "tests/support/temporary_file.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <stdexcept>

namespace kova_test {

namespace {

/// Goes into a folder and back.
class FolderVisit {
  public:
    explicit FolderVisit(const std::filesystem::path &folder)
        : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    FolderVisit(const FolderVisit &) = delete;
    FolderVisit &operator=(const FolderVisit &) = delete;
    ~FolderVisit() { std::filesystem::current_path(before_); }

  private:
    std::filesystem::path before_;
};

void KOVA_IMPORT_CALL collect(void *context, const import_export_notice *notice) {
    static_cast<std::vector<Notice> *>(context)->emplace_back(*notice);
}

bool starts_with_keyword(std::string_view line, std::string_view keyword) {
    return line.size() > 2 && line.substr(2).starts_with(keyword) &&
           line.substr(2 + keyword.size()).starts_with("[");
}

ImportRun run_with_host(const std::function<void()> &routine, const ImportSettings &settings) {
    kova_host::DialogSettings answers;
    answers.scope = settings.transport_only ? kova_host::first_button : kova_host::second_button;
    answers.index_segment_names =
        settings.index_segment_names ? kova_host::first_button : kova_host::second_button;
    std::string log;
    kova_host::ReferenceHost host;
    host.answer_dialogs(answers);
    host.set_import_file(settings.path);
    host.log_to([&log](std::string_view piece) { log += piece; });
    host.observe_before([&settings](const kova_host::ReceivedCommand &command) {
        if (settings.report_tables && command.keyword == "PDIALOG")
            IMPORT_EXPORT.report_tables = 1;
        if (settings.before)
            settings.before(command);
    });

    ImportRun run;
    IMPORT_EXPORT.notice = settings.want_notices ? collect : nullptr;
    IMPORT_EXPORT.notice_context = &run.notices;
    using Capture = kova_command::StandardOutputCapture;
    Capture console(Capture::What::keep);
    {
        const kova_host::Connection connection = host.connect();
        routine();
    }
    run.console = lines_of(console.finish());
    IMPORT_EXPORT.notice = nullptr;
    IMPORT_EXPORT.notice_context = nullptr;
    host.flush_log();
    run.log = without_stamps(lines_of(log));
    // A stream that breaks the rules of the link proves nothing.
    if (host.violation_count() != 0)
        throw std::runtime_error(host.violations().front().keyword + ": " +
                                 host.violations().front().sentence);
    return run;
}

} // namespace

Notice::Notice(const import_export_notice &notice)
    : kind(notice.kind), section(notice.section), section_name(notice.section_name),
      statement(notice.statement), statement_number(notice.statement_number), line(notice.line),
      column(notice.column), width(notice.width), field(notice.field), expected(notice.expected),
      found(notice.found, notice.found_length), reason(notice.reason), advice(notice.advice),
      line_text(notice.line_text, notice.line_text_length),
      line_text_column(notice.line_text_column), number(notice.number),
      name(notice.name, notice.name_length), path(notice.path) {
    if (notice.size != sizeof notice)
        throw std::runtime_error("the notice has another size than its struct");
}

std::vector<std::string> ImportRun::arguments_of(std::string_view keyword) const {
    std::vector<std::string> found;
    for (const std::string &line : log) {
        if (!starts_with_keyword(line, keyword))
            continue;
        const std::size_t end = line.find(']') + 1;
        found.push_back(end < line.size() ? line.substr(end + 1) : "");
    }
    return found;
}

std::vector<std::string> ImportRun::keywords() const {
    std::vector<std::string> found;
    for (const std::string &line : log)
        if (!starts_with_keyword(line, "PINFOHTML"))
            found.push_back(line.substr(2, line.find('[') - 2));
    return found;
}

std::vector<Notice> ImportRun::notices_of(std::int32_t kind) const {
    std::vector<Notice> found;
    for (const Notice &notice : notices)
        if (notice.kind == kind)
            found.push_back(notice);
    return found;
}

ImportSettings settings_of(const std::filesystem::path &path) {
    ImportSettings settings;
    if (!std::filesystem::exists(path))
        return settings;
    for (const std::string &line : lines_of(read_file(path))) {
        if (line == "scope transport")
            settings.transport_only = true;
        else if (line == "index-names no")
            settings.index_segment_names = false;
        else if (line == "report-tables yes")
            settings.report_tables = true;
        else if (!line.empty() && line != "scope all" && line != "index-names yes" &&
                 line != "report-tables no")
            throw std::invalid_argument(path.string() + ": " + line);
    }
    return settings;
}

ImportRun import_text(std::string_view text, const ImportSettings &settings) {
    const TemporaryFolder folder;
    folder.write("model.inp", text);
    const FolderVisit visit(folder.path());
    return run_with_host([] { importexport(); }, settings);
}

void clear_send_buffers() {
    // what a host writes into them stays
    bool cleared = false;
    ImportSettings settings;
    settings.before = [&cleared](const kova_host::ReceivedCommand &command) {
        if (command.keyword != "PALLBOUNDFUNC")
            return;
        for (const std::size_t buffer : {2U, 3U})
            std::fill_n(static_cast<float *>(command.arguments[buffer]),
                        kova_import::send_buffer_size, 0.0F);
        cleared = true;
    };
    const std::string text = text_of(legacy_opening()) + "0\n0\n" // no flow fields
                             + "0\n"                              // and no series of them
                             + "0\n"                              // no exchange fields
                             + "1\nAmmonia\n1\n\n1\n0\n";
    static_cast<void>(import_text(text, settings));
    if (!cleared)
        throw std::logic_error("the send buffers are not cleared");
}

ImportRun run_routine(const std::function<void()> &routine, const ImportSettings &settings) {
    return run_with_host(routine, settings);
}

std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

std::vector<std::string> without_stamps(std::vector<std::string> log) {
    constexpr std::array<std::string_view, 8> stamped = {
        "1 PINFOHTML[10] text[51] \"Built on: ",     "1 PINFOHTML[10] text[31] \"Model sha: ",
        "1 PINFOHTML[10] text[31] \"Model branch: ", "1 PINFOHTML[10] text[31] \"Gui sha: ",
        "1 PINFOHTML[10] text[31] \"Gui branch: ",   "1 PINFOHTML[10] text[31] \"Platform: ",
        "1 PINFOHTML[10] text[31] \"Architecture: ", "1 PINFOHTML[10] text[31] \"Build type: ",
    };
    for (std::string &line : log)
        for (std::string_view start : stamped)
            if (line.starts_with(start))
                line = std::string(start) + "<stamped>\"";
    return log;
}

} // namespace kova_test
