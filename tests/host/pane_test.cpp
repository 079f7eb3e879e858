#include "host_test.h"

namespace {

using namespace host_test;
using namespace std::string_literals;

struct PaneTest : HostTest {};

TEST_F(PaneTest, JoinsTheFragments) {
    send("PINFOHTML", literal("<li>"));
    send("PINFOHTML", literal("Importing </li>"));
    EXPECT_EQ(host.pane().html, "<li>Importing </li>");
    ASSERT_EQ(host.pane().fragments.size(), 2U);
    EXPECT_EQ(host.pane().fragments[0], "<li>\0"s);
}

TEST_F(PaneTest, TakesALiteralUpToItsFinalNul) {
    send("PINFOHTML", literal("blanks stay  "));
    send("PINFOHTML", Text{"|a\0b\0"s});
    send("PINFOHTML", literal(""));
    send("PINFOHTML", literal(std::string(79, ' ')));
    EXPECT_EQ(host.pane().html, "blanks stay  |a\0b"s + std::string(79, ' '));
}

TEST_F(PaneTest, TakesAReportFieldUpToItsFirstNulWithoutTrailingBlanks) {
    send("PINFOHTML", field("12", 132));
    send("PINFOHTML", field("|left  \0hidden"s, 80));
    send("PINFOHTML", field("", 80));
    EXPECT_EQ(host.pane().html, "12|left");
    EXPECT_EQ(host.pane().fragments[0], field("12", 132).bytes);
}

TEST_F(PaneTest, IsEmptiedOnCommand) {
    send("PINFOHTML", literal("old"));
    send("PCLEARINFO");
    send("PINFOHTML", literal("new"));
    EXPECT_EQ(host.pane().html, "new");
    EXPECT_EQ(host.pane().fragments.size(), 1U);
    EXPECT_EQ(host.pane().times_cleared, 1);
}

TEST_F(PaneTest, IsKeptOnlyWhereItIsWanted) {
    host.keep_pane(false);
    send("PINFOHTML", literal("<li>"));
    EXPECT_TRUE(host.pane().html.empty());
    EXPECT_TRUE(host.pane().fragments.empty());
}

TEST_F(PaneTest, KeepsAndTellsTheProgress) {
    std::vector<std::int32_t> told;
    host.observe_progress([&](std::int32_t value) { told.push_back(value); });
    for (const std::int32_t value : {0, 5, -3, 100})
        send("PPROGRESS", value);
    EXPECT_EQ(host.progress(), (std::vector<std::int32_t>{0, 5, -3, 100}));
    EXPECT_EQ(told, host.progress());
}

} // namespace
