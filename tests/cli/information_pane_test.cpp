#include "cli/information_pane.h"

#include <gtest/gtest.h>
#include <string>

namespace kova_command {
namespace {

/// Hands a fragment to the recorder, as a host receives it.
void show(PaneRecorder &recorder, std::string fragment) {
    kova_host::ReceivedCommand command;
    command.keyword = "PINFOHTML";
    command.arguments[0] = fragment.data();
    command.lengths[0] = fragment.size();
    recorder.take(command);
}

/// A report field of 132 columns and the NUL behind it.
std::string field(const std::string &text) {
    return text + std::string(132 - text.size(), ' ') + '\0';
}

TEST(PaneRecorder, KnowsTheNameOfATimeFunctionInAMessage) {
    PaneRecorder recorder("river.inp");
    show(recorder, field("Time Function not supported: </span><b>: Ice </span></li></span></li>"));
    const InformationPane pane = recorder.finish();
    ASSERT_EQ(pane.fragments.size(), 3U);
    EXPECT_EQ(pane.fragments[0].text, "Time Function not supported: ");
    EXPECT_FALSE(pane.fragments[0].from_file);
    EXPECT_EQ(pane.fragments[1].text, "</span><b>: Ice </span></li>");
    EXPECT_TRUE(pane.fragments[1].from_file);
    EXPECT_EQ(pane.fragments[2].text, "</span></li>");
    EXPECT_FALSE(pane.fragments[2].from_file);
}

TEST(PaneRecorder, TakesNumbersInCellsAsTheyAre) {
    PaneRecorder recorder("river.inp");
    show(recorder, field("365.0"));
    const InformationPane pane = recorder.finish();
    ASSERT_EQ(pane.fragments.size(), 1U);
    EXPECT_FALSE(pane.fragments[0].from_file);
}

TEST(PaneRecorder, KeepsSoManyFragments) {
    PaneRecorder recorder("river.inp");
    for (std::size_t i = 0; i < most_pane_fragments; ++i)
        show(recorder, std::string("<br>\0", 5));
    show(recorder, std::string("more\0", 5));
    InformationPane pane = recorder.finish();
    EXPECT_TRUE(pane.is_cut);
    ASSERT_EQ(pane.fragments.size(), most_pane_fragments);
    EXPECT_EQ(pane.fragments.back().text, "<br>");
}

} // namespace
} // namespace kova_command
