#include "host_test.h"

#include <memory>

namespace {

using namespace host_test;
using kova_host::ReferenceHost;

TEST(ConnectionTest, CallsWithoutAHostAreCountedAndDropped) {
    const std::uint64_t before = ReferenceHost::unconnected_call_count();
    const auto values = send("GFILENAME", field("as it was", 512));
    EXPECT_EQ(std::get<Text>(values[0]).bytes, field("as it was", 512).bytes);
    EXPECT_EQ(ReferenceHost::unconnected_call_count(), before + 1);
}

TEST(ConnectionTest, LastsAsLongAsItsScope) {
    ReferenceHost host;
    {
        const auto connection = host.connect();
        send("PNUMSEG", 1);
    }
    send("PNUMSEG", 2);
    EXPECT_EQ(host.model().segment_count, 1);
    EXPECT_EQ(host.command_count(), 1U);
}

TEST(ConnectionTest, TheHostBeforeIsBackAfterwards) {
    ReferenceHost outer;
    ReferenceHost inner;
    const auto connection = outer.connect();
    {
        const auto other = inner.connect();
        send("PNUMSEG", 1);
    }
    send("PNUMSEG", 2);
    EXPECT_EQ(inner.model().segment_count, 1);
    EXPECT_EQ(outer.model().segment_count, 2);
}

TEST(ConnectionTest, EveryEntryPointDelivers) {
    ReferenceHost host;
    const auto connection = host.connect();
    SendBuffer buffer(kova_import::send_buffer_size);
    send("PCLEARINFO");
    send("PPROGRESS", 1);
    send("PVOLUME", 1, 1.0F);
    send("PSEEDDATE", 1, 2, 3);
    send("PALLLOADFUNC", 1, 1, &buffer, &buffer);
    send("PBRKTF", 1, 1, 1, 0.5F, 1.0F);
    EXPECT_EQ(host.command_count(), 6U);
    EXPECT_EQ(host.violation_count(), 0U);
}

TEST(ConnectionTest, TheLogIsCompleteWhenTheHostIsGone) {
    std::string log;
    {
        ReferenceHost host;
        host.log_to([&](std::string_view piece) { log += piece; });
        const auto connection = host.connect();
        send("PPROGRESS", 1);
    }
    EXPECT_EQ(log, "1 PPROGRESS[10] int 1\n");
}

TEST(ConnectionTest, ObserversSeeEveryCommandBeforeAndAfterItsEffect) {
    ReferenceHost host;
    const auto connection = host.connect();
    std::vector<std::string> seen;
    const auto note = [&](std::string_view when, const kova_host::ReceivedCommand &command) {
        std::string line(when);
        line += ' ';
        line += std::to_string(command.number);
        line += ' ';
        line += command.keyword;
        line += ' ';
        line += std::to_string(host.model().segment_count);
        seen.push_back(line);
    };
    host.observe_before([&](const auto &command) { note("before", command); });
    host.observe_after([&](const auto &command) { note("after", command); });
    send("PNUMSEG", 7);
    send("PNONSENSE", 7);
    EXPECT_EQ(seen, (std::vector<std::string>{"before 1 PNUMSEG 0", "after 1 PNUMSEG 7",
                                              "before 2 PNONSENSE 7", "after 2 PNONSENSE 7"}));
}

TEST(ConnectionTest, AnObserverReadsTheArguments) {
    ReferenceHost host;
    const auto connection = host.connect();
    std::string seen;
    host.observe_before([&](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PSEGNAME")
            seen = std::to_string(command.integer(0)).append(command.text(1));
        else if (command.keyword == "PVOLUME")
            seen = std::to_string(command.real(1));
    });
    send("PSEGNAME", 2, field("Bay", 40));
    EXPECT_EQ(seen, field("2Bay", 41).bytes);
    send("PVOLUME", 2, 1.5F);
    EXPECT_EQ(seen, "1.500000");
    send("PVOLUME", 2, Null{});
    EXPECT_EQ(seen, "0.000000");
}

TEST(ConnectionTest, ResetForgetsWhatWasReceived) {
    ReferenceHost host;
    const auto connection = host.connect();
    send("PNUMSEG", 7);
    send("PNONSENSE");
    send("PPROGRESS", 7);
    send("PINFOHTML", literal("x"));
    host.reset();
    EXPECT_EQ(host.model().segment_count, 0);
    EXPECT_EQ(host.violation_count(), 0U);
    EXPECT_EQ(host.command_count(), 0U);
    EXPECT_TRUE(host.progress().empty());
    EXPECT_TRUE(host.pane().html.empty());
}

} // namespace
