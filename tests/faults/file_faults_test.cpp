// Every call of an import for its file fails once, and all from there on; every read comes short,
// fails or finds the end of the file behind each byte.

#include "tests/faults/fault_run.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>

namespace kova_test {
namespace {

class FileCalls : public FaultTest {};

// The driver reads the header, opens the file again, and reads all of it.
constexpr std::size_t header_size = sizeof "   11      2";

enum class Afterwards { goes_on, never_opens, depends };

struct CallFault {
    FileCall call;
    const char *name;
    int error;
    bool from_there_on;
    Afterwards afterwards;
};

const CallFault call_faults[] = {
    {FileCall::open, "open: ENOENT", ENOENT, false, Afterwards::never_opens},
    {FileCall::open, "open: ENOENT", ENOENT, true, Afterwards::never_opens},
    {FileCall::open, "open: EACCES", EACCES, true, Afterwards::never_opens},
    {FileCall::open, "open: EMFILE", EMFILE, false, Afterwards::never_opens},
    {FileCall::open, "open: EMFILE", EMFILE, true, Afterwards::never_opens},
    {FileCall::open, "open: EIO", EIO, false, Afterwards::never_opens},
    {FileCall::open, "open: EINTR", EINTR, false, Afterwards::goes_on},
    // a file server that gives the file back in a moment
    {FileCall::open, "open: EWOULDBLOCK", EWOULDBLOCK, false, Afterwards::goes_on},
    {FileCall::open, "open: EWOULDBLOCK", EWOULDBLOCK, true, Afterwards::never_opens},
    {FileCall::fstat, "fstat: EIO", EIO, false, Afterwards::never_opens},
    {FileCall::fstat, "fstat: EIO", EIO, true, Afterwards::never_opens},
    {FileCall::read, "read: EINTR", EINTR, false, Afterwards::goes_on},
    {FileCall::read, "read: EIO", EIO, false, Afterwards::depends},
    {FileCall::read, "read: EIO", EIO, true, Afterwards::depends},
    {FileCall::seek, "lseek: EIO", EIO, false, Afterwards::depends},
    {FileCall::seek, "lseek: EIO", EIO, true, Afterwards::depends},
    {FileCall::close, "close: EIO", EIO, false, Afterwards::goes_on},
    {FileCall::close, "close: EIO", EIO, true, Afterwards::goes_on},
    {FileCall::close, "close: EINTR", EINTR, true, Afterwards::goes_on},
};

TEST_P(FileCalls, EveryCallFails) {
    for (const CallFault &fault : call_faults) {
        long met = 0;
        for (bool was_met = true; was_met;) {
            expect_recovery(model(), [&] {
                file_faults() = {};
                file_faults().error = fault.error;
                // some hundred reads instead of a few
                if (fault.call == FileCall::read && GetParam() != legacy_long)
                    file_faults().longest_read = 16;
                file_faults()[fault.call] = {met + 1, fault.from_there_on};
                const Import run = import(model());
                was_met = file_faults()[fault.call].was_met();
                const Ending ending = expect_ending(model(), run);
                if (!was_met || fault.afterwards == Afterwards::goes_on) {
                    EXPECT_EQ(ending, Ending::complete);
                } else if (fault.afterwards == Afterwards::never_opens) {
                    EXPECT_EQ(ending, Ending::not_opened);
                }
            });
            ASSERT_FALSE(HasFailure()) << fault.name << " " << met + 1;
            met += was_met ? 1 : 0;
        }
        const bool is_reread = GetParam() == current_open_title;
        EXPECT_EQ(met > 0, fault.call != FileCall::seek || is_reread) << fault.name;
        tell(model(), fault.name + std::string(fault.from_there_on ? " from there on" : " once"),
             met);
    }
}

// Whether an open that would block is tried again depends on what the system says of the file.
TEST_P(FileCalls, AFileThatWouldBlockAndIsGone) {
    expect_recovery(model(), [] {
        file_faults() = {};
        file_faults().error = EWOULDBLOCK;
        file_faults()[FileCall::open] = {1, false};
        file_faults()[FileCall::stat] = {1, false};
        EXPECT_EQ(expect_ending(model(), import(model())), Ending::not_opened);
        EXPECT_TRUE(file_faults()[FileCall::stat].was_met());
    });
}

TEST_P(FileCalls, ReadsOfAnyLengthGiveTheSame) {
    for (const std::size_t longest : std::array<std::size_t, 6>{1, 2, 255, 256, 1023, 1024}) {
        expect_recovery(model(), [&] {
            file_faults() = {};
            file_faults().longest_read = longest;
            expect_fresh(model(), import(model()));
            EXPECT_GE(static_cast<std::size_t>(file_faults()[FileCall::read].met),
                      model().text.size() / longest);
        });
        ASSERT_FALSE(HasFailure()) << longest;
    }
}

TEST_P(FileCalls, EveryReadIsInterruptedAndRepeated) {
    expect_recovery(model(), [] {
        FileFaults &faults = file_faults();
        faults = {};
        faults.longest_read = 1;
        faults.before = [&faults](FileCall call, long number) {
            if (call == FileCall::read && number % 2 == 1)
                faults.stop = ReadStop{faults.bytes_read, false, EINTR};
        };
        expect_fresh(model(), import(model()));
        EXPECT_GE(static_cast<std::size_t>(faults[FileCall::read].met), 2 * model().text.size());
    });
}

/// The line of the last byte before the place, which is where a reader that can go no further is.
std::int64_t line_at(const std::string &text, std::size_t place) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(place);
    const auto lines = std::count(text.begin(), end, '\n');
    return lines + (place != 0 && text[place - 1] == '\n' ? 0 : 1);
}

/// Imports with reads that stop at each place, counted in bytes through both times that the file is
/// read. It is small enough to be read at once: the first time to the place, but no further than
/// the reader looks ahead.
class ReadStops : public FaultTest {
  protected:
    /// `check` gets each import and its place.
    template <class Check>
    static void at_each_place(ReadStop stop, const std::string &what, const Check &check) {
        long points = 0;
        for (bool was_met = true; was_met; stop.place += stride) {
            expect_recovery(model(), [&] {
                file_faults() = {};
                file_faults().stop = stop;
                const Import run = import(model());
                was_met = file_faults().stop->was_met;
                check(run, stop.place);
            });
            ASSERT_FALSE(HasFailure()) << what << ", byte " << stop.place;
            points += was_met ? 1 : 0;
        }
        // the last one at the end of the file
        EXPECT_EQ(static_cast<std::size_t>(points), 2 * size() / stride + 1);
        tell(model(), what, points);
    }

    static std::size_t size() { return model().text.size(); }

    static bool is_in_first_reading(std::size_t place) {
        constexpr std::size_t looked_ahead = 1024;
        return place < std::min(looked_ahead, size() + 1);
    }

    /// In the file, for the second reading; a stop that stays comes before its first byte.
    static std::size_t place_in_file(std::size_t place) {
        return place < size() ? 0 : place - size();
    }

    /// An import of what stands before the place.
    static Import import_shortened(std::size_t place) {
        file_faults() = {};
        std::filesystem::resize_file(model().path, place);
        Import result = import(model());
        std::ofstream(model().path, std::ios::binary | std::ios::app) << model().text.substr(place);
        return result;
    }
};

TEST_P(ReadStops, AReadThatComesShortChangesNothing) {
    at_each_place({}, "reads that come short",
                  [](const Import &run, std::size_t /*place*/) { expect_fresh(model(), run); });
}

/// A title whose quote is open at the stop is taken for one line, and read once more from its
/// start: what was once only is gone then.
bool was_read_again() { return file_faults()[FileCall::seek].met > 0; }

TEST_P(ReadStops, AnErrorStopsTheSectionThatItIsIn) {
    for (const bool from_there_on : {false, true}) {
        const std::string what = from_there_on ? "read errors from there on" : "read errors, once";
        at_each_place({0, from_there_on, EIO}, what, [&](const Import &run, std::size_t place) {
            const Ending ending = expect_ending(model(), run);
            if (place < header_size) {
                EXPECT_EQ(ending, Ending::not_opened);
            } else if (place >= 2 * size() ||
                       ((is_in_first_reading(place) || was_read_again()) && !from_there_on)) {
                EXPECT_EQ(ending, Ending::complete);
            } else {
                ASSERT_EQ(ending, Ending::stopped);
                const std::size_t first_unread =
                    was_read_again() ? header_size : place_in_file(place);
                EXPECT_EQ(run.notices.back().line, line_at(model().text, first_unread));
            }
        });
    }
}

TEST_P(ReadStops, AnEndOfTheFileIsThatOfAShorterFile) {
    for (const bool from_there_on : {false, true}) {
        const std::string what =
            from_there_on ? "ends of the file from there on" : "ends of the file, once";
        at_each_place({0, from_there_on, 0}, what, [&](const Import &run, std::size_t place) {
            const std::size_t end = place_in_file(place);
            // Fields of the header that are missing are blank, which is another version.
            if (place < header_size || (end > 0 && end < header_size))
                return;
            if (place >= 2 * size() || (is_in_first_reading(place) && !from_there_on)) {
                expect_fresh(model(), run);
            } else if (was_read_again() && !from_there_on) {
                EXPECT_TRUE(run.log == model().fresh_log);
            } else if (end == 0 || was_read_again()) {
                EXPECT_EQ(expect_ending(model(), run), Ending::stopped);
            } else {
                const Import shorter = import_shortened(end);
                EXPECT_TRUE(run.log == shorter.log);
                EXPECT_EQ(run.state(), shorter.state());
            }
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Models, FileCalls, testing::Range(std::size_t{0}, first_wide_model),
                         model_name);
INSTANTIATE_TEST_SUITE_P(Models, ReadStops, testing::Range(std::size_t{0}, current_transport),
                         model_name);

} // namespace
} // namespace kova_test
