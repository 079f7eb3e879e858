// A host that does what hosts must not do, or need not: in every command it writes over what it was
// handed, writes the data block, calls the utility again, leaves questions unanswered, throws.

#include "tests/faults/fault_run.h"
#include "tests/support/temporary_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kova_test {
namespace {

using kova_import::ArgumentKind;

class HostFaults : public FaultTest {
  protected:
    static std::size_t command_count() { return model().fresh_log.size(); }
};

constexpr std::array patterns = {0x00, 0xFF, 0x41};

bool is_for_the_host_to_write(ArgumentKind kind) {
    return kind == ArgumentKind::answer || kind == ArgumentKind::result;
}

std::string_view keyword_of(std::string_view line) {
    const std::size_t start = line.find(' ') + 1;
    return line.substr(start, line.find('[') - start);
}

std::vector<std::string_view> keywords_of(std::span<const std::string> log) {
    std::vector<std::string_view> keywords;
    for (const std::string &line : log)
        keywords.push_back(keyword_of(line));
    return keywords;
}

std::size_t size_of(const HostCall &call, std::size_t argument) {
    std::size_t text = 1;
    for (std::size_t i = 0; i < argument; ++i) {
        const ArgumentKind kind = call.command.arguments[i].kind;
        if (kind != ArgumentKind::integer && kind != ArgumentKind::real &&
            kind != ArgumentKind::answer && kind != ArgumentKind::send_buffer)
            ++text;
    }
    switch (call.command.arguments[argument].kind) {
    case ArgumentKind::integer:
    case ArgumentKind::real:
    case ArgumentKind::answer:
        return sizeof(std::int32_t);
    case ArgumentKind::send_buffer:
        return sizeof(float) * kova_import::send_buffer_size;
    default:
        return call.lengths[text];
    }
}

/// Writes over the arguments that are for the host to write, or over the keyword and all others.
void scribble(const HostCall &call, int pattern, bool over_answers) {
    for (std::size_t i = 0; i < call.arguments.size(); ++i)
        if (is_for_the_host_to_write(call.command.arguments[i].kind) == over_answers)
            std::memset(call.arguments[i], pattern, size_of(call, i));
    if (!over_answers)
        std::memset(call.keyword, pattern, call.lengths[0]);
}

TEST_P(HostFaults, WritingOverArgumentsChangesNothing) {
    for (const int pattern : patterns) {
        for (std::size_t i = 0; i < command_count(); ++i) {
            expect_recovery(model(), [&] {
                Hooks hooks;
                hooks.after = [&](std::size_t number, const HostCall &call) {
                    if (number == i)
                        scribble(call, pattern, false);
                };
                expect_fresh(model(), import(model(), hooks));
            });
            ASSERT_FALSE(HasFailure()) << "command " << i;
        }
    }
    tell(model(), "arguments written over", static_cast<long>(patterns.size() * command_count()));
}

TEST_P(HostFaults, ResultsThatAreNoneChangeTextsOnly) {
    for (const int pattern : patterns) {
        for (std::size_t i = 0; i < command_count(); ++i) {
            const std::string_view keyword = keyword_of(model().fresh_log[i]);
            if (keyword == "PDIALOG" || keyword == "GFILENAME")
                continue; // the next tests
            expect_recovery(model(), [&] {
                Hooks hooks;
                hooks.after = [&](std::size_t number, const HostCall &call) {
                    if (number == i)
                        scribble(call, pattern, true);
                };
                EXPECT_EQ(keywords_of(import(model(), hooks).log), keywords_of(model().fresh_log));
            });
            ASSERT_FALSE(HasFailure()) << "command " << i << " " << keyword;
        }
    }
}

/// The library's proposals for the model file. What an earlier name has left behind the extension
/// is one of the two things that outlive an import.
struct NamedImport {
    explicit NamedImport(const Model &model) {
        Hooks hooks;
        hooks.after = [this](std::size_t number, const HostCall &call) {
            if (call.command.keyword == "PFILENAME") {
                name.assign(static_cast<const char *>(call.arguments[0]), call.lengths[1]);
                place = number;
            }
        };
        import = kova_test::import(model, hooks);
    }

    /// Expects the import to be like any other, but for the name.
    void expect_fresh_but_for_name(const Model &model) {
        ASSERT_LT(place, import.log.size());
        import.log[place] = model.fresh_log[place];
        expect_fresh(model, import);
    }

    Import import;
    std::string name;
    std::size_t place = 0;
};

constexpr std::size_t path_width = 512;

/// A file in folders whose path has exactly so many characters, no full stop among them.
std::filesystem::path make_long_path(const std::filesystem::path &folder, std::size_t size) {
    constexpr std::size_t part = 100;
    std::filesystem::path path = folder;
    while (size - path.string().size() > 2 * part)
        path /= std::string(part, 'f');
    std::filesystem::create_directories(path);
    return path / std::string(size - path.string().size() - 1, 'm');
}

TEST_P(HostFaults, APathMayFillItsField) {
    const TemporaryFolder folder;
    Model long_model = model();
    long_model.path = make_long_path(folder.path(), path_width);
    ASSERT_EQ(long_model.path.string().size(), path_width);
    std::filesystem::copy_file(model().path, long_model.path);
    const std::string path = long_model.path.string();
    std::string name = model().path.string();
    name.replace(name.find('.'), std::string::npos, ".KIF");
    expect_recovery(model(), [&] {
        NamedImport filled(long_model);
        EXPECT_EQ(filled.name, path.substr(0, path_width - 1) + std::string(2, '\0'));
        filled.expect_fresh_but_for_name(model());

        NamedImport next(model());
        EXPECT_EQ(next.name, name + filled.name.substr(name.size()));
        next.expect_fresh_but_for_name(model());

        Model nameless = model();
        nameless.path = std::string(path_width, '\0'); // which clears the name
        EXPECT_EQ(expect_ending(model(), import(nameless)), Ending::not_opened);
    });
}

// Everything is imported then, and segments get their number.
TEST_P(HostFaults, QuestionsWithoutAnswerGetTheDefault) {
    const auto import_with_answers = [](std::int32_t scope, std::int32_t index, std::int32_t any) {
        Hooks hooks;
        hooks.after = [=](std::size_t number, const HostCall &call) {
            const std::int32_t answer = number == 1 ? scope : number == 2 ? index : any;
            if (call.command.keyword == "PDIALOG")
                std::memcpy(call.arguments[4], &answer, sizeof answer);
        };
        return import(model(), hooks);
    };
    constexpr std::int32_t all = 1;
    constexpr std::int32_t with_number = 0;
    constexpr std::int32_t left_alone = -1;
    constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    expect_recovery(model(), [&] {
        const Import answered = import_with_answers(all, with_number, 0);
        EXPECT_FALSE(answered.log == model().fresh_log);
        for (const std::int32_t answer : {left_alone, smallest, 2, largest}) {
            EXPECT_TRUE(import_with_answers(answer, with_number, 0).log == answered.log) << answer;
            EXPECT_TRUE(import_with_answers(all, answer, 0).log == answered.log) << answer;
            EXPECT_TRUE(import_with_answers(answer, answer, answer).log == answered.log) << answer;
        }
    });
}

std::span<std::int32_t> numbers_of_block() {
    return {&IMPORT_EXPORT.report_tables,
            offsetof(import_export_data, notice) / sizeof(std::int32_t)};
}

/// From the last percentage on: what ends every import, the note of its format last.
std::span<const std::string> end_of(std::span<const std::string> log) {
    const auto last = std::find_if(log.rbegin(), log.rend(), [](const std::string &line) {
        return keyword_of(line) == "PPROGRESS";
    });
    return log.last(static_cast<std::size_t>(last - log.rbegin()) + 1);
}

bool ends_like(const Import &import, const Model &model) {
    return std::ranges::equal(end_of(import.log), end_of(model.fresh_log));
}

/// Numbers that say how often a section goes round where no record of the file does.
bool is_followed(const std::int32_t &number) {
    return &number == &IMPORT_EXPORT.state_variable_count ||
           &number == &IMPORT_EXPORT.segment_count;
}

// Every command gets a number written before it, with values in turn.
TEST_P(HostFaults, WritingTheDataBlockEndsNoImportOtherwise) {
    constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
    constexpr std::array<std::int32_t, 7> values = {1, 0, -1, 29, 300, largest, smallest};
    const std::size_t too_many_commands = 100 * command_count();
    const std::size_t numbers = numbers_of_block().size();
    for (std::size_t i = 0; i < command_count(); ++i) {
        for (std::size_t j = i % stride; j < numbers; j += stride) {
            expect_recovery(model(), [&] {
                std::int32_t &number = numbers_of_block()[j];
                const std::int32_t value = values[(i + j) % values.size()];
                bool is_enough = false;
                Hooks hooks;
                hooks.before = [&](std::size_t command) {
                    if (command == i)
                        number = value;
                    if (command == too_many_commands && !std::exchange(is_enough, true))
                        throw std::length_error("no end to be seen");
                };
                const Import run = import(model(), hooks);
                EXPECT_TRUE(!is_enough || (is_followed(number) && value == largest));
                // A new version may change the family while the first pages are shown.
                EXPECT_TRUE(ends_like(run, kova_test::model(0)) ||
                            ends_like(run, kova_test::model(1)));
                IMPORT_EXPORT.layout = IMPORT_EXPORT_LAYOUT; // which no import writes
            });
            ASSERT_FALSE(HasFailure()) << "command " << i << ", number " << j;
        }
    }
    tell(model(), "data block written", static_cast<long>(command_count() * numbers / stride));
}

constexpr void (*routines[])() = {importexport,
                                  modelparam,
                                  segments,
                                  flowpath,
                                  flows,
                                  exchanges,
                                  boundary,
                                  loads,
                                  timefunctions,
                                  seg_parameters,
                                  constants,
                                  initial_conditions,
                                  modelparam_v2,
                                  segments_v2,
                                  flowpath_v2,
                                  flows_v2,
                                  exchanges_v2,
                                  boundary_v2,
                                  loads_v2,
                                  timefunctions_v2,
                                  seg_parameters_v2,
                                  constants_v2,
                                  initial_conditions_v2};

TEST_P(HostFaults, CallingBackIsRefused) {
    for (std::size_t i = 0; i < command_count(); ++i) {
        for (std::size_t routine : {std::size_t{0}, 1 + i % (std::size(routines) - 1)}) {
            expect_recovery(model(), [&] {
                Hooks hooks;
                hooks.before = [&](std::size_t number) {
                    if (number == i)
                        routines[routine]();
                };
                Import run = import(model(), hooks);
                EXPECT_EQ(std::erase_if(run.notices,
                                        [](const FaultNotice &notice) {
                                            return notice.kind == IMPORT_EXPORT_CALL_REFUSED;
                                        }),
                          1);
                expect_fresh(model(), run);
            });
            ASSERT_FALSE(HasFailure()) << "command " << i << ", routine " << routine;
        }
    }
    tell(model(), "called back", static_cast<long>(2 * command_count()));
}

// They may be called at any time, and come in between.
TEST_P(HostFaults, PagesMayComeInBetween) {
    const auto log_of_page = [](void (*page)()) {
        noting_host().log.clear();
        page();
        return std::exchange(noting_host().log, {});
    };
    const std::vector<std::string> intro_log = log_of_page(intro);
    const std::vector<std::string> version_log = log_of_page(version);
    ASSERT_FALSE(intro_log.empty());
    ASSERT_FALSE(version_log.empty());
    for (std::size_t i = 0; i < command_count(); ++i) {
        expect_recovery(model(), [&] {
            const std::vector<std::string> &page_log = i % 2 == 0 ? intro_log : version_log;
            bool is_shown = false;
            Hooks hooks;
            hooks.before = [&](std::size_t number) {
                if (number == i && !std::exchange(is_shown, true))
                    (i % 2 == 0 ? intro : version)();
            };
            Import run = import(model(), hooks);
            const auto place = run.log.begin() + static_cast<std::ptrdiff_t>(i);
            const auto end = place + static_cast<std::ptrdiff_t>(page_log.size());
            ASSERT_LE(end, run.log.end());
            EXPECT_TRUE(std::equal(place, end, page_log.begin()));
            run.log.erase(place, end);
            expect_fresh(model(), run);
        });
        ASSERT_FALSE(HasFailure()) << "command " << i;
    }
}

// Not even a function for notices may call back, or throw.
TEST_P(HostFaults, NoticesChangeNothing) {
    long notices = 0;
    expect_recovery(model(), [&] {
        Hooks hooks;
        bool calls_back = false;
        hooks.on_notice = [&] {
            if (std::exchange(calls_back, true))
                return;
            ++notices;
            importexport();
            calls_back = false;
            throw notices;
        };
        Import run = import(model(), hooks);
        EXPECT_EQ(std::erase_if(run.notices,
                                [](const FaultNotice &notice) {
                                    return notice.kind == IMPORT_EXPORT_CALL_REFUSED;
                                }),
                  static_cast<std::size_t>(notices));
        expect_fresh(model(), run);
    });
    EXPECT_GT(notices, 0);
}

TEST_P(HostFaults, ExceptionsLeaveNothingBehind) {
    for (std::size_t i = 0; i < command_count(); ++i) {
        expect_recovery(model(), [&] {
            Hooks hooks;
            hooks.after = [&](std::size_t number, const HostCall & /*call*/) {
                if (number == i)
                    throw static_cast<int>(number); // the host's own kind
            };
            const Import run = import(model(), hooks);
            ASSERT_GT(run.log.size(), i);
            EXPECT_TRUE(std::equal(run.log.begin(),
                                   run.log.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                   model().fresh_log.begin()));
            EXPECT_EQ(run.block.import_error, 1);
        });
        ASSERT_FALSE(HasFailure()) << "command " << i;
    }
    tell(model(), "exceptions", static_cast<long>(command_count()));
}

INSTANTIATE_TEST_SUITE_P(Models, HostFaults, testing::Range(std::size_t{0}, small_model_count),
                         model_name);

} // namespace
} // namespace kova_test
