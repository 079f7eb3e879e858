#include "cli/import_session.h"

#include "cli/standard_output_capture.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace kova_command {

namespace {

constexpr std::size_t longest_path = 512;
/// What the library shows before each section, and at the end. Sections that show progress of their
/// own show whole hundreds.
constexpr std::array<std::int32_t, section_count> section_percentages = {0,  5,  10, 20, 30, 40,
                                                                         50, 60, 70, 80, 85};
constexpr std::int32_t last_percentage = 100;

// The utility asks four questions; the last one only waits for the person to have read the
// information pane.
constexpr std::string_view closing_question = "Continue";

/// What the utility tells through its data block during one import.
class Listener {
  public:
    Listener(import_export_data &data, ImportOutcome &outcome) : data_(data), outcome_(outcome) {
        data_.notice = take;
        data_.notice_context = this;
    }
    ~Listener() {
        data_.notice = nullptr;
        data_.notice_context = nullptr;
    }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;
    Listener(Listener &&) = delete;
    Listener &operator=(Listener &&) = delete;

    /// A notice for which there was no memory.
    [[nodiscard]] bool has_lost_one() const { return lost_; }

  private:
    static void KOVA_IMPORT_CALL take(void *context, const import_export_notice *notice) {
        Listener &self = *static_cast<Listener *>(context);
        try {
            // Most notices of a file that makes millions are not kept.
            if (count_notice(self.outcome_, notice->kind, notice->section))
                self.outcome_.notices.push_back(copy_of(*notice));
        } catch (const std::exception &) {
            self.lost_ = true; // nothing may be thrown into the utility
        }
    }

    import_export_data &data_;
    ImportOutcome &outcome_;
    bool lost_ = false;
};

/// The path in the host's field: one that ends with a blank needs a NUL behind it, since the field
/// is filled with blanks. None when there is no room.
std::optional<std::string> path_for_host(const std::string &path) {
    std::string field = path;
    if (!field.empty() && field.back() == ' ')
        field += '\0';
    if (field.size() > longest_path)
        return std::nullopt;
    return field;
}

void refuse_path(ImportOutcome &outcome) {
    Notice notice;
    notice.kind = IMPORT_EXPORT_OPEN_FAILED;
    notice.reason = "the path is too long";
    notice.advice = "Go to a folder near the file: a path has at most 512 bytes.";
    add_notice(outcome, notice);
    outcome.verdict = Verdict::not_opened;
}

kova_host::DialogSettings settings_of(const ImportRequest &request) {
    using kova_host::first_button;
    using kova_host::second_button;
    kova_host::DialogSettings settings;
    settings.scope = request.transport_only ? first_button : second_button;
    settings.index_segment_names = request.index_segment_names ? first_button : second_button;
    return settings;
}

/// The answer that `settings` has for a question.
std::int32_t preset_answer(const kova_host::DialogSettings &settings, const std::string &title) {
    kova_host::DialogAnswer answer = settings.verbose;
    if (title == "Import Options")
        answer = settings.scope;
    else if (title == "Index Segment Names")
        answer = settings.index_segment_names;
    return answer.value_or(kova_host::first_button);
}

SectionStatus status_of(const ImportOutcome &outcome, std::size_t section, std::size_t reached) {
    for (const Notice &notice : outcome.notices) {
        if (notice.section == static_cast<std::int32_t>(section + 1) &&
            notice.level() == Level::error)
            return SectionStatus::failed;
    }
    const bool stopped_before =
        std::any_of(outcome.sections.begin(), outcome.sections.end(),
                    [](const auto &before) { return before.status == SectionStatus::failed; });
    if (stopped_before || section >= reached)
        return SectionStatus::not_reached;
    if (outcome.transport_only && !section_descriptions()[section].transport)
        return SectionStatus::left_out;
    return SectionStatus::imported;
}

void describe_sections(ImportOutcome &outcome, const kova_host::Model &model, std::size_t reached) {
    for (std::size_t i = 0; i < section_count; ++i) {
        const SectionDescription &description = section_descriptions()[i];
        SectionOutcome section{description.name, status_of(outcome, i, reached), {}};
        if (section.status == SectionStatus::imported)
            section.facts = description.facts(model, outcome.section_notice_counts[i]);
        outcome.sections.push_back(std::move(section));
    }
}

void describe_model(ImportOutcome &outcome, const kova_host::Model &model) {
    constexpr std::size_t model_parameters = 0;
    constexpr std::size_t segments = 1;
    const auto is_read = [&](std::size_t section) {
        return outcome.sections[section].status == SectionStatus::imported;
    };
    outcome.settings_read = is_read(model_parameters);
    if (outcome.settings_read)
        outcome.settings = model.settings;
    for (const kova_host::System &system : model.systems)
        outcome.systems.emplace_back(system.long_name);
    outcome.segments_read = is_read(segments);
    outcome.segment_count = model.segment_count;
}

void gather_internal_errors(ImportOutcome &outcome, const kova_host::ReferenceHost &host,
                            const import_export_data &data, bool lost_notice) {
    std::vector<std::string> &errors = outcome.internal_errors;
    for (const kova_host::Violation &violation : host.violations())
        errors.push_back("host command " + std::to_string(violation.command_number) + " (" +
                         violation.keyword + "): " + violation.sentence);
    if (const std::uint64_t shown = host.violations().size(); host.violation_count() > shown)
        errors.push_back(std::to_string(host.violation_count() - shown) +
                         " more host commands break the rules of the link");
    if (lost_notice)
        errors.emplace_back("There was not enough memory for a notice of the import library.");
    const bool stopped = notice_count(outcome, Level::error) > 0;
    const bool finished = !host.progress().empty() && host.progress().back() == last_percentage;
    if (!stopped && (!finished || data.import_error != 0))
        errors.emplace_back("The import library stopped without saying why.");
}

Verdict verdict_of(const ImportOutcome &outcome, bool cancelled) {
    if (cancelled)
        return Verdict::cancelled;
    if (!outcome.internal_errors.empty())
        return Verdict::internal_error;
    if (kind_count(outcome, IMPORT_EXPORT_OPEN_FAILED) > 0)
        return Verdict::not_opened;
    return notice_count(outcome, Level::error) > 0 ? Verdict::stopped : Verdict::imported;
}

} // namespace

ImportOutcome ImportSession::run(const ImportRequest &request) {
    ImportOutcome outcome;
    outcome.path = request.path;
    outcome.transport_only = request.transport_only;
    outcome.index_segment_names = request.index_segment_names;
    const std::optional<std::string> path = path_for_host(request.path);
    if (!path) {
        refuse_path(outcome);
        describe_sections(outcome, {}, 0);
        return outcome;
    }

    import_export_data &data = library_.data();
    host_.reset();
    host_.set_import_file(*path);
    host_.log_to(request.log);

    bool cancelled = false;
    const kova_host::DialogSettings settings = settings_of(request);
    if (request.ask) {
        host_.answer_dialogs([&](const kova_host::Dialog &dialog) -> kova_host::DialogAnswer {
            if (cancelled || dialog.title == closing_question)
                return kova_host::first_button;
            const auto answer = request.ask(dialog, preset_answer(settings, dialog.title));
            if (answer)
                return answer;
            cancelled = true;
            host_.set_import_file(""); // without a file there is no import
            return kova_host::first_button;
        });
    } else {
        host_.answer_dialogs(settings);
    }

    std::size_t reached = 0;
    host_.observe_progress([&](std::int32_t percentage) {
        if (reached == 1) // later sections put counts of their own in the place of this one
            outcome.systems_in_file = data.system_count;
        const bool is_last = reached == section_count && percentage == last_percentage;
        const bool is_section =
            reached < section_count && percentage == section_percentages[reached];
        if (!is_section && !is_last)
            return; // a section counts for itself
        if (request.progress && notice_count(outcome, Level::error) == 0)
            request.progress(percentage, is_section ? section_descriptions()[reached].name
                                                    : std::string_view());
        reached += is_section ? 1 : 0;
    });

    PaneRecorder pane(*path);
    if (request.keep_pane)
        host_.observe_after(
            [&pane](const kova_host::ReceivedCommand &command) { pane.take(command); });

    bool lost_notice = false;
    {
        StandardOutputCapture capture(request.keep_console ? StandardOutputCapture::What::keep
                                                           : StandardOutputCapture::What::drop);
        const Listener listener(data, outcome);
        const kova_host::Connection connection = host_.connect();
        library_.run_import();
        outcome.console = capture.finish();
        lost_notice = listener.has_lost_one();
    }
    host_.flush_log();
    host_.log_to({});
    host_.observe_progress({});
    host_.observe_after({});
    host_.answer_dialogs(kova_host::DialogSettings{});

    outcome.transport_only = data.transport_only != 0;
    outcome.index_segment_names = data.index_segment_names != 0;
    outcome.header_read = reached > 0;
    outcome.model_type = data.model_type;
    outcome.file_version = data.file_version;
    describe_sections(outcome, host_.model(), reached);
    describe_model(outcome, host_.model());
    outcome.information_pane = pane.finish();
    outcome.command_count = host_.command_count();
    gather_internal_errors(outcome, host_, data, lost_notice);
    outcome.verdict = verdict_of(outcome, cancelled);
    return outcome;
}

} // namespace kova_command
