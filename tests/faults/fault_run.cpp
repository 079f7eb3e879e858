#include "tests/faults/fault_run.h"

#include "tests/support/model_text.h"
#include "tests/support/stopped_import.h"
#include "tests/support/temporary_file.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace kova_test {

namespace {

std::vector<Model> models;

// A quote that nothing closes: the whole file is read for it, and once more from behind that line.
Records records_with_open_title() { return with(current_records(), "title", "\"A river"); }

// So many breakpoints that they take memory several times.
Records long_records() {
    constexpr std::size_t more = 20000;
    Records records =
        with(legacy_records(), "breakpoint count of the flow function", std::to_string(more + 2));
    const auto first =
        records.begin() +
        static_cast<std::ptrdiff_t>(position_of(records, "breakpoint of the flow function"));
    records.insert(first, more, {"breakpoint of the flow function", "1 2"});
    return records;
}

// Blanks behind what is read of each line: a file that is read piece by piece.
std::string wide_text(Records records) {
    for (Record &record : records)
        record.text += std::string(250, ' ');
    return text_of(records);
}

bool tells_of_an_end(const FaultNotice &notice) {
    return notice.kind == IMPORT_EXPORT_READ_FAILED || notice.kind == IMPORT_EXPORT_OPEN_FAILED ||
           notice.kind == IMPORT_EXPORT_OUT_OF_MEMORY || notice.kind == IMPORT_EXPORT_HOST_FAILED;
}

bool is_pane_text(const std::string &line) { return line.find(" PINFOHTML[") != std::string::npos; }

void expect_not_opened(const Model &model, const Import &import) {
    constexpr std::size_t questions = 4;
    constexpr std::size_t fragments = 4;
    ASSERT_EQ(import.log.size(), questions + fragments);
    EXPECT_TRUE(
        std::equal(import.log.begin(), import.log.begin() + questions, model.fresh_log.begin()));
    EXPECT_TRUE(std::all_of(import.log.begin() + questions, import.log.end(), is_pane_text));
    EXPECT_EQ(import.block.import_error, 0);
}

/// Imports in a child, which has imported nothing before, and learns from it by a file.
void import_in_fresh_process(Model &model, const TemporaryFolder &folder) {
    const std::filesystem::path told = folder.path() / "told";
    const pid_t child = ::fork();
    if (child == 0) {
        const Import fresh = import(model);
        std::ofstream file(told);
        for (const std::string &line : fresh.log)
            file << line << '\n';
        file << '\n' << fresh.state();
        file.close();
        ::_exit(file ? 0 : 1);
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error("no import in a process of its own");
    std::ifstream file(told);
    for (std::string line; std::getline(file, line) && !line.empty();)
        model.fresh_log.push_back(line);
    model.fresh_state.assign(std::istreambuf_iterator<char>(file), {});
}

void make_models(const TemporaryFolder &folder) {
    models = {
        {"legacy", text_of(legacy_records()), false, false, {}, {}, {}},
        {"current", text_of(current_records()), true, false, {}, {}, {}},
        {"current, transport", text_of(current_records()), true, true, {}, {}, {}},
        {"current, open title", text_of(records_with_open_title()), true, false, {}, {}, {}},
        {"legacy, long", text_of(long_records()), false, false, {}, {}, {}},
        {"legacy, wide", wide_text(legacy_records()), false, false, {}, {}, {}},
        {"current, wide", wide_text(current_records()), true, false, {}, {}, {}},
    };
    for (std::size_t i = 0; i < models.size(); ++i) {
        models[i].path = folder.write("model" + std::to_string(i) + ".inp", models[i].text);
        import_in_fresh_process(models[i], folder);
    }
}

// What the C++ library and the test framework keep from their first exception and message on is no
// leak.
void fail_once() {
    const Model &current = models.at(1);
    memory_faults() = {2, false};
    expect_ending(current, import(current));
    memory_faults() = {};
}

} // namespace

const Model &model(std::size_t number) { return models.at(number); }

std::string model_name(const testing::TestParamInfo<std::size_t> &information) {
    return model_names.at(information.param);
}

std::string Import::state() const {
    std::ostringstream text;
    for (const FaultNotice &notice : notices)
        text << notice.kind << ' ' << notice.section << ' ' << notice.line << '\n';
    const auto *const numbers = &block.report_tables;
    for (std::size_t i = 0; i < offsetof(import_export_data, notice) / sizeof(std::int32_t); ++i)
        text << numbers[i] << ' ';
    return text.str();
}

Import import(const Model &model, const Hooks &hooks) {
    Import result;
    struct Listener {
        Import &import;
        const Hooks &hooks;
    } listener{result, hooks};
    NotingHost &host = noting_host();
    host.import_path = model.path.string();
    host.transport_only = model.transport_only;
    host.log.clear();
    std::size_t number = 0;
    // What the host does is no work of the library.
    host.before = [&](std::string_view /*keyword*/) {
        set_library_runs(false);
        if (hooks.before)
            hooks.before(number);
    };
    host.after = [&](const HostCall &call) {
        if (hooks.after)
            hooks.after(number, call);
        ++number;
        set_library_runs(true);
    };
    IMPORT_EXPORT.notice_context = &listener;
    IMPORT_EXPORT.notice = [](void *context, const import_export_notice *notice) {
        set_library_runs(false);
        const Listener &target = *static_cast<const Listener *>(context);
        target.import.notices.push_back({notice->kind, notice->section, notice->line});
        if (target.hooks.on_notice)
            target.hooks.on_notice();
        set_library_runs(true);
    };
    static std::FILE *const nowhere = std::fopen("/dev/null", "w");
    std::FILE *const console = std::exchange(stdout, nowhere);
    set_library_runs(true);
    importexport();
    set_library_runs(false);
    stdout = console;
    IMPORT_EXPORT.notice = nullptr;
    IMPORT_EXPORT.notice_context = nullptr;
    host.before = nullptr;
    host.after = nullptr;
    result.log = std::move(host.log);
    result.block = IMPORT_EXPORT;
    return result;
}

Ending expect_ending(const Model &model, const Import &import) {
    const auto first = std::find_if(import.notices.begin(), import.notices.end(), tells_of_an_end);
    if (first == import.notices.end()) {
        EXPECT_TRUE(import.log == model.fresh_log);
        EXPECT_EQ(import.block.import_error, 0);
        return Ending::complete;
    }
    EXPECT_EQ(std::count_if(first, import.notices.end(), tells_of_an_end), 1);
    if (first->section == 0) {
        expect_not_opened(model, import);
        return Ending::not_opened;
    }
    expect_stopped(model.fresh_log, import.log, first->section, model.is_current, model.name);
    EXPECT_EQ(import.block.import_error, 1);
    return Ending::stopped;
}

void expect_fresh(const Model &model, const Import &import) {
    EXPECT_TRUE(import.log == model.fresh_log);
    EXPECT_EQ(import.state(), model.fresh_state);
}

std::size_t open_file_count() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

void tell(const Model &model, const std::string &what, long points) {
    std::fprintf(stderr, "%s: %s: %ld points\n", model.name.c_str(), what.c_str(), points);
}

} // namespace kova_test

int main(int count, char **arguments) {
    testing::InitGoogleTest(&count, arguments);
    const kova_test::TemporaryFolder folder;
    kova_test::make_models(folder);
    kova_test::fail_once();
    return RUN_ALL_TESTS();
}
