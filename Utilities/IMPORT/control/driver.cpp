#include "control/driver.h"

#include "control/chunk_pool.h"
#include "control/console.h"
#include "control/entry_scope.h"
#include "control/fixed_text.h"
#include "control/host_link.h"
#include "control/information_pages.h"
#include "control/notices.h"
#include "control/short_text.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <string_view>

namespace kova_import {

namespace {

void reset(ImportModule &module) {
    import_export_data cleared = initial_data();
    cleared.layout = module.shared.layout;
    cleared.notice = module.shared.notice;
    cleared.notice_context = module.shared.notice_context;
    module.shared = cleared;
    module.path.assign("");
    module.reader.start_counting();
    module.host_system_count = 0;
    module.host_segment_count = 0;
    module.simulation_length = 0;
    module.flow_option = 0;
    module.system_of_state_variable = {};
    module.inflow_count.clear();
}

constexpr std::int32_t unanswered = -1;

template <std::size_t title, std::size_t question, std::size_t first, std::size_t second>
std::int32_t ask(const char (&title_text)[title], const char (&question_text)[question],
                 const char (&first_button)[first], const char (&second_button)[second]) {
    std::int32_t answer = unanswered;
    send<"PDIALOG">(title_text, question_text, first_button, second_button, Answer{answer});
    return answer;
}

void ask_for_options(ImportModule &module) {
    // Users and their scripts expect this question first; nothing depends on its answer.
    ask("Set Verbose Option:", "Yes or No?", "Yes", "No");
    if (ask("Import Options", "Import Network/Transport or All ?", "Transport Only", "All") == 0)
        module.shared.transport_only = 1;
    if (ask("Index Segment Names", "Add Index to Segment Name to Insure Unique Name", "Yes",
            "No") == 1)
        module.shared.index_segment_names = 0;
}

// The model file is named after the import file up to its first full stop, even one in a folder's
// name. What an earlier import left behind the extension stays.
void name_model_file(const FixedText<512> &host_file_name, FixedText<512> &model_file_name) {
    constexpr std::string_view extension = ".KIF";
    constexpr std::size_t last_position = FixedText<512>::width - 1;
    for (std::size_t i = 0; i < last_position; ++i) {
        if (host_file_name[i] != '.') {
            model_file_name[i] = host_file_name[i];
            continue;
        }
        for (std::size_t j = 0; j < extension.size() && i + j < model_file_name.width; ++j)
            model_file_name[i + j] = extension[j];
        return;
    }
}

// Hosts end the path with a NUL or pad it with blanks; a path that fills the field has neither.
std::string_view path_in(const FixedText<512> &name) {
    const std::string_view text = name.view();
    const std::size_t end = text.find('\0');
    return end != std::string_view::npos ? text.substr(0, end) : name.trimmed();
}

void ask_for_file(ImportModule &module) {
    FixedText<512> &name = module.host_file_name;
    name.fill(' ');
    send<"GFILENAME">(Result{name});
    module.reader.start_counting();
    module.shared.import_error = 0; // whatever a host wrote while a question was open
    module.path.assign(path_in(name));
    name.assign({name.trimmed(), nul});
    name_model_file(name, module.model_file_name);
}

void report_open_failure(const ImportModule &module) {
    start_report_line();
    send<"PINFOHTML">("File Can Not be Opened</span></li>");
    start_report_line();
    // The name fills more than what is left of the field, so that the end of the line falls to the
    // cut; hosts close it themselves.
    FixedText<132> message;
    message.assign({"File: ", module.host_file_name.view(), "</span></li>", nul});
    send<"PINFOHTML">(message);
}

bool open_file(ImportModule &module) {
    const char *reason = nullptr;
    try {
        reason = module.reader.stream().open(module.path.view());
    } catch (const std::bad_alloc &) {
        reason = "there is not enough memory";
    }
    if (reason == nullptr)
        return true;
    give_reason(module, IMPORT_EXPORT_OPEN_FAILED, reason);
    report_open_failure(module);
    return false;
}

// Opens the file to learn its version, and again, so that the first section starts at the header.
bool open_at_header(ImportModule &module) {
    if (!open_file(module))
        return false;
    RecordReader &reader = module.reader;
    reader.start_counting(0); // the first section reads the header again, and counts it then
    reader.fixed<"(I5,5x,I2)">("header", field("model type", module.shared.model_type),
                               field("file version", module.shared.file_version));
    if (!reader.ok()) {
        give_read_failure(module);
        report_open_failure(module);
        return false;
    }
    reader.start_counting();
    return open_file(module);
}

void run_sections(ImportModule &module, const Family &family) {
    std::int32_t number = 0;
    for (const Section &section : family.sections) {
        send<"PPROGRESS">(section.progress);
        ++number;
        if (module.shared.import_error == 0)
            run_section(module, section, number);
    }
    send<"PPROGRESS">(std::int32_t{100});
}

const Family &family_of(std::int32_t file_version, std::span<const Family> families) {
    std::size_t i = families.size() - 1;
    while (i > 0 && file_version < families[i].first_version)
        --i;
    return families[i];
}

void import_file(ImportModule &module, std::span<const Family> families) {
    reset(module);
    ask_for_options(module);
    ask_for_file(module);
    if (!open_at_header(module))
        return;
    send_intro();
    const Family &family = family_of(module.shared.file_version, families);
    run_sections(module, family);
    ask("Continue", "Click Okay to Continue", "Okay", "No");
    module.reader.stream().close();
    family.send_completion_note();
}

} // namespace

void run_import(ImportModule &module, std::span<const Family> families) noexcept {
    const RunningScope running(module.running);
    const FloatingPointScope floating_point;
    try {
        if (running.entered())
            import_file(module, families);
        else
            give_reason(module, IMPORT_EXPORT_CALL_REFUSED,
                        "The import was started from inside a host command.");
    } catch (...) {
        // The import ends where it stands.
        module.shared.import_error = 1;
        give_reason(module, IMPORT_EXPORT_HOST_FAILED,
                    "The host ended a command with an exception.");
    }
    if (running.entered()) {
        module.reader.stream().close();
        module.inflow_count.clear();
        chunk_pool::release();
        console::flush();
    }
}

} // namespace kova_import
