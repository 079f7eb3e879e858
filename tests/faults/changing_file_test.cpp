// The file changes while it is imported: between its two openings, before each read and in each
// host command.

#include "tests/faults/fault_run.h"

#include <filesystem>
#include <fstream>
#include <ios>
#include <string>

namespace kova_test {
namespace {

using Path = std::filesystem::path;

void append(const Path &path, const std::string &text) {
    std::ofstream(path, std::ios::binary | std::ios::app) << text;
}

void write_new(const Path &path, const std::string &text) {
    std::filesystem::remove_all(path);
    append(path, text);
}

void shorten(const Path &path, const std::string &text, std::size_t about) {
    std::filesystem::resize_file(path, about == 0 ? 0 : text.find('\n', about) + 1);
}

struct Change {
    const char *name;
    void (*make)(const Path &path, const std::string &text);
    Ending between_openings;
    bool leaves_open_file_alone;
};

const Change changes[] = {
    {"emptied", [](const Path &path, const std::string &text) { shorten(path, text, 0); },
     Ending::stopped, false},
    {"cut in half",
     [](const Path &path, const std::string &text) { shorten(path, text, text.size() / 2); },
     Ending::stopped, false},
    {"grown", [](const Path &path, const std::string & /*text*/) { append(path, "1 x 'more\n"); },
     Ending::complete, true},
    {"written over",
     [](const Path &path, const std::string &text) {
         std::fstream(path, std::ios::binary | std::ios::in | std::ios::out)
             << std::string(text.size(), 'x');
     },
     Ending::stopped, false},
    {"removed",
     [](const Path &path, const std::string & /*text*/) { std::filesystem::remove(path); },
     Ending::not_opened, true},
    {"replaced",
     [](const Path &path, const std::string & /*text*/) { write_new(path, "what nobody reads\n"); },
     Ending::stopped, true},
    {"replaced by a folder",
     [](const Path &path, const std::string & /*text*/) {
         std::filesystem::remove(path);
         std::filesystem::create_directory(path);
     },
     Ending::not_opened, true},
};

class ChangingFile : public FaultTest {
  protected:
    static void change(const Change &change) {
        change.make(model().path, model().text);
        is_changed_ = true;
    }

    /// What happens to the file happens in `import_changing`, which gets the ending.
    template <class Import>
    static void expect_recovery_of_file(const Import &import_changing) {
        is_changed_ = false;
        expect_recovery(model(), [&] {
            file_faults() = {};
            // the file is read while it is imported, not at once
            file_faults().longest_read = 512;
            import_changing();
            write_new(model().path, model().text);
        });
    }

    static bool is_changed_;
};

bool ChangingFile::is_changed_ = false;

TEST_P(ChangingFile, BetweenItsTwoOpenings) {
    for (const Change &each : changes) {
        expect_recovery_of_file([&] {
            file_faults().before = [&](FileCall call, long number) {
                if (call == FileCall::open && number == 2)
                    change(each);
            };
            EXPECT_EQ(expect_ending(model(), import(model())), each.between_openings);
        });
        ASSERT_TRUE(is_changed_);
        ASSERT_FALSE(HasFailure()) << each.name;
    }
}

// The format is that of the first opening, and the rest of the other file is none in that format.
TEST_P(ChangingFile, IntoOneOfTheOtherFormat) {
    const std::string &other = kova_test::model(model().is_current ? 0 : 1).text;
    expect_recovery_of_file([&] {
        file_faults().before = [&](FileCall call, long number) {
            if (call == FileCall::open && number == 2)
                write_new(model().path, other);
        };
        EXPECT_EQ(expect_ending(model(), import(model())), Ending::stopped);
    });
}

TEST_P(ChangingFile, BeforeEachRead) {
    for (const Change &each : changes) {
        long points = 0;
        do {
            expect_recovery_of_file([&] {
                bool was_open_twice = false;
                file_faults().before = [&](FileCall call, long number) {
                    if (call == FileCall::read && number == points + 1) {
                        was_open_twice = file_faults()[FileCall::open].met == 2;
                        change(each);
                    }
                };
                const Ending ending = expect_ending(model(), import(model()));
                if (!is_changed_ || (was_open_twice && each.leaves_open_file_alone)) {
                    EXPECT_EQ(ending, Ending::complete);
                } else if (!was_open_twice && each.leaves_open_file_alone) {
                    EXPECT_EQ(ending, each.between_openings);
                }
            });
            ASSERT_FALSE(HasFailure()) << each.name << ", read " << points + 1;
            points += is_changed_ ? 1 : 0;
        } while (is_changed_);
        EXPECT_GT(points, 20);
        tell(model(), each.name + std::string(" before a read"), points);
    }
}

TEST_P(ChangingFile, InEachHostCommand) {
    constexpr std::size_t before_the_file_is_open = 4;
    for (const Change &each : changes) {
        long stopped = 0;
        for (std::size_t i = before_the_file_is_open; i < model().fresh_log.size(); ++i) {
            expect_recovery_of_file([&] {
                Hooks hooks;
                hooks.before = [&](std::size_t number) {
                    if (number == i)
                        change(each);
                };
                const Ending ending = expect_ending(model(), import(model(), hooks));
                EXPECT_NE(ending, Ending::not_opened);
                EXPECT_TRUE(is_changed_);
                if (each.leaves_open_file_alone) {
                    EXPECT_EQ(ending, Ending::complete);
                }
                stopped += ending == Ending::stopped ? 1 : 0;
            });
            ASSERT_FALSE(HasFailure()) << each.name << ", command " << i;
        }
        EXPECT_EQ(stopped > 0, !each.leaves_open_file_alone);
        tell(model(), each.name + std::string(" in a host command"),
             static_cast<long>(model().fresh_log.size() - before_the_file_is_open));
    }
}

INSTANTIATE_TEST_SUITE_P(Models, ChangingFile, testing::Range(first_wide_model, model_names.size()),
                         model_name);

} // namespace
} // namespace kova_test
