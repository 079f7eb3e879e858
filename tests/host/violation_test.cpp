#include "host_test.h"

#include <stdexcept>

namespace {

using namespace host_test;

struct ViolationTest : HostTest {};

/// One wrong command and what the host says of it.
TEST_F(ViolationTest, DescribesEveryKind) {
    const struct {
        Text keyword;
        std::vector<Value> values;
        std::string_view sentence;
    } rows[] = {
        {literal("PNONSENSE"), {1}, "the keyword is not known"},
        {literal("pnumseg"), {1}, "the keyword is not known"},
        {literal(""), {}, "the keyword is not known"},
        {literal("PNUMSEG"),
         {1, 2},
         "the command came through host_call_2, host_call_1 was expected"},
        {{"PNUMSEG"}, {1}, "the keyword ends in 0 NULs, one was expected"},
        {{std::string("PNUMSEG\0\0", 9)}, {1}, "the keyword ends in 2 NULs, one was expected"},
        {literal("PSEGNAME"),
         {1, field("x", 39)},
         "argument 2 (name) has 39 characters, 40 characters were expected"},
        {literal("PSYSNAME"),
         {1, terminated_field("x", 31), terminated_field("y", 5)},
         "argument 3 (short name) has 5 characters, 6 characters were expected"},
        {literal("PSYSNAME"),
         {1, field("x", 31), terminated_field("y", 6)},
         "argument 2 (long name) has 31 characters without a NUL at the end, one was expected"},
        {literal("PINFOHTML"),
         {Text{"abc"}},
         "argument 1 (fragment) has 3 characters without a NUL at the end, one was expected"},
        {literal("PINFOHTML"),
         {Text{}},
         "argument 1 (fragment) has 0 characters, at least its NUL were expected"},
        {literal("GFILENAME"),
         {field("", 511)},
         "argument 1 (file name) has 511 characters, 512 characters were expected"},
        {literal("GSPRINTFI"),
         {field("", 81), literal("%d"), 1},
         "argument 1 (formatted number) has 81 characters, 80 or 132 characters were expected"},
        {literal("GSPRINTFI"),
         {field("", 80), Text{"%d"}, 1},
         "argument 2 (format) has 2 characters without a NUL at the end, one was expected"},
        {literal("PNUMSEG"),
         {Null{}},
         "argument 1 (segment count) is a null reference, a reference to data was expected"},
        {literal("PDIALOG"),
         {literal("a"), literal("b"), literal("c"), literal("d"), Null{}},
         "argument 5 (answer) is a null reference, a reference to data was expected"},
        {literal("PVOLUME"), {0, 1.0F}, "the number of the segment is 0, 1 or more was expected"},
    };
    for (const auto &row : rows) {
        host.reset();
        send_keyword(row.keyword, row.values);
        ASSERT_EQ(host.violations().size(), 1U) << row.sentence;
        EXPECT_EQ(host.violations()[0].sentence, row.sentence);
        EXPECT_EQ(host.violations()[0].command_number, 1U);
        EXPECT_EQ(host.violations()[0].keyword, row.keyword.bytes.c_str());
        EXPECT_EQ(host.violation_count(), 1U);
    }
}

TEST_F(ViolationTest, UnusedLengthsAreZero) {
    std::string keyword("PNUMSEG\0", 8);
    std::int32_t count = 3;
    host_call_1(keyword.data(), &count, 8, 4);
    EXPECT_EQ(violations(), "length 2, which belongs to no text, is 4, 0 was expected\n");
    EXPECT_EQ(log(), "1 PNUMSEG[8] int 3\n");
    EXPECT_EQ(host.model().segment_count, 0);
}

TEST_F(ViolationTest, ANullKeywordIsOne) {
    host_call_0(nullptr, 7);
    EXPECT_EQ(violations(), "the keyword is a null reference, a text was expected\n");
    EXPECT_EQ(log(), "0 [7] ?\n");
}

TEST_F(ViolationTest, OneCommandMayHaveSeveral) {
    send("PSEGNAME", Null{}, field("x", 3));
    EXPECT_EQ(host.violation_count(), 2U);
    EXPECT_EQ(host.command_count(), 1U);
    EXPECT_TRUE(host.model().segments.empty());
}

TEST_F(ViolationTest, NumbersTheCommands) {
    send("PNUMSEG", 1);
    send("PNONSENSE");
    ASSERT_EQ(host.violations().size(), 1U);
    EXPECT_EQ(host.violations()[0].command_number, 2U);
    EXPECT_EQ(host.violations()[0].keyword, "PNONSENSE");
}

TEST_F(ViolationTest, KeepsAThousandAndCountsAll) {
    for (int count = 0; count < 1500; ++count)
        send("PNONSENSE");
    EXPECT_EQ(host.violations().size(), 1000U);
    EXPECT_EQ(host.violation_count(), 1500U);
}

TEST_F(ViolationTest, ACommandInsideAnotherIsOne) {
    host.observe_before([](const kova_host::ReceivedCommand &command) {
        if (command.keyword == "PCLEARINFO")
            send("PNUMSEG", 4);
    });
    send("PCLEARINFO");
    EXPECT_EQ(violations(), "the command arrived while another was being handled\n");
    EXPECT_EQ(log(), "1 PNUMSEG[8] int 4\n0 PCLEARINFO[11]\n");
}

TEST_F(ViolationTest, WhatTheCallersFunctionsThrowIsOne) {
    host.observe_after([](const kova_host::ReceivedCommand &) { throw std::runtime_error("no"); });
    send("PNUMSEG", 4);
    host.observe_after([](const kova_host::ReceivedCommand &) { throw 1; });
    send("PNUMSEG", 5);
    EXPECT_EQ(violations(), "the host failed: no\nthe host failed\n");
    EXPECT_EQ(host.model().segment_count, 5);
}

TEST_F(ViolationTest, ASinkThatThrowsDoesNotStopTheImport) {
    host.log_to([](std::string_view) { throw std::runtime_error("disk full"); });
    send("PINFOHTML", literal(std::string(1'000'000, 'x')));
    EXPECT_EQ(violations(), "the host failed: disk full\n");
    send("PNUMSEG", 4);
    EXPECT_THROW(host.flush_log(), std::runtime_error);
    EXPECT_NO_THROW(host.flush_log());
    EXPECT_EQ(host.model().segment_count, 4);
}

} // namespace
