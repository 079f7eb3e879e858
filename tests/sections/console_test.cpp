// What the console has gained when each command arrives: the lines that sections write between
// them.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <ostream>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace kova_test {
namespace {

struct Arrival {
    std::string command;
    std::size_t gained = 0; ///< characters since the command before

    friend bool operator==(const Arrival &, const Arrival &) = default;
    friend std::ostream &operator<<(std::ostream &stream, const Arrival &arrival) {
        return stream << arrival.command << " gains " << arrival.gained;
    }
};

using Arrivals = std::vector<Arrival>;

/// A command before which the console gains the given text.
Arrival with_text(const std::string &command, std::string_view text) {
    return {command, text.size()};
}

/// The console is a file here; its size tells what has been written.
Arrivals arrivals_of(const Records &records) {
    Arrivals arrivals;
    off_t size = 0;
    ImportSettings settings;
    settings.before = [&](const kova_host::ReceivedCommand &command) {
        static_cast<void>(std::fflush(stdout));
        const off_t now = lseek(STDOUT_FILENO, 0, SEEK_CUR);
        const bool has_percentage = command.keyword == "PPROGRESS";
        arrivals.push_back({std::string(command.keyword) +
                                (has_percentage ? " " + std::to_string(command.integer(0)) : ""),
                            static_cast<std::size_t>(now - size)});
        size = now;
    };
    static_cast<void>(import_text(text_of(records), settings));
    return arrivals;
}

std::size_t place_of(const Arrivals &arrivals, std::string_view command) {
    std::size_t place = 0;
    while (arrivals.at(place).command != command)
        ++place;
    return place;
}

/// Those behind the first command of that name, as many as the expected ones.
void expect_behind(const Arrivals &arrivals, std::string_view command, const Arrivals &expected) {
    const std::size_t start = place_of(arrivals, command) + 1;
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(arrivals.at(start + i), expected[i]);
}

TEST(Console, TellsOfTheSegmentsBetweenTheCommandsThatSetThem) {
    Arrivals arrivals = arrivals_of(legacy_opening());
    arrivals.resize(place_of(arrivals, "PPROGRESS 10"));
    std::erase_if(arrivals, [](const Arrival &arrival) { return arrival.gained == 0; });
    EXPECT_EQ(arrivals, (Arrivals{
                            with_text("PNUMSEG", "Reading Segment: 1 Name: Upper Pool\n"
                                                 "Reading Segment: 2 Name: Mouth\n"),
                            with_text("PBEDOPT", "Setting Number of Segments to: 2\n"),
                            with_text("PSEGNAME", "Setting Segment Name: Seg-1-Upper Pool\n"),
                            with_text("PSEGNAME", "Setting Segment Name: Seg-2-Mouth\n"),
                        }));
}

TEST(Console, TellsOfBoundariesBetweenTheCommands) {
    expect_behind(arrivals_of(legacy_records()), "PPROGRESS 40",
                  {
                      {"PPROGRESS 0"},
                      {"PPROGRESS 0"},
                      with_text("PPROGRESS 100", "Ammonia\n"),
                      with_text("PPROGRESS 100", "Nitrate\n"),
                      with_text("PINFOHTML",
                                "Dissolved organic nitrogen\nDone Reading Boundary Information\n"),
                      {"PINFOHTML"},
                      {"PPROGRESS 0"},
                      with_text("PPROGRESS 0", "Boundary System: 1\n"),
                      {"PNOBC"},
                      {"PSCALB"},
                      {"PIBC"},
                      {"PNBFP"},
                      {"PALLBOUNDFUNC"},
                      {"PIBC"},
                      {"PNBFP"},
                      {"PALLBOUNDFUNC"},
                      with_text("PPROGRESS 100", "Boundary System: 2\n"),
                      {"PNOBC"},
                      {"PPROGRESS 50"},
                  });
}

TEST(Console, TellsOfCurrentLoadsAndTimeFunctionsAroundTheirCommands) {
    expect_behind(arrivals_of(current_records()), "PPROGRESS 50",
                  {
                      {"PINFOHTML"},
                      {"PINFOHTML"},
                      {"PLOPT"},
                      {"PNPSFILE"},
                      {"PCONVB"},
                      {"PNBWK"},
                      {"PALLLOADFUNC"},
                      {"PCONVB"},
                      {"PNBWK"},
                      {"PALLLOADFUNC"},
                      with_text("PPROGRESS 60", "Done reading Loads\n"),
                      with_text("PNBRKTF", "Reading Time Functions\n"),
                      {"PBRKTF"},
                      {"PBRKTF"},
                      {"PNBRKTF"},
                      {"PBRKTF"},
                      {"PTFSREFRESH"},
                      with_text("PPROGRESS 70", "Done Reading Time Functions\n"),
                  });
}

TEST(Console, HasTheLinesOfASectionThatIsCalledAloneWhenItReturns) {
    off_t before = 0;
    off_t after = 0;
    static_cast<void>(run_routine([&] {
        before = lseek(STDOUT_FILENO, 0, SEEK_CUR);
        modelparam();
        after = lseek(STDOUT_FILENO, 0, SEEK_CUR);
    }));
    EXPECT_GT(after, before);
}

} // namespace
} // namespace kova_test
