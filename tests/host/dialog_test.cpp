#include "host_test.h"

namespace {

using namespace host_test;
using kova_host::Dialog;
using kova_host::DialogAnswer;
using kova_host::DialogFunction;
using kova_host::DialogScript;
using kova_host::DialogSettings;
using kova_host::first_button;
using kova_host::second_button;
using kova_host::Unanswered;

struct DialogTest : HostTest {
    static std::int32_t ask(std::string_view title) {
        const auto values = send("PDIALOG", literal(title), literal("question"), literal("left"),
                                 literal("right"), -1);
        return std::get<std::int32_t>(values[4]);
    }
};

TEST_F(DialogTest, TheDefaultImportsEverythingWithIndexedNames) {
    EXPECT_EQ(ask("Set Verbose Option:"), second_button);
    EXPECT_EQ(ask("Import Options"), second_button);
    EXPECT_EQ(ask("Index Segment Names"), first_button);
    EXPECT_EQ(ask("Continue"), first_button);
    EXPECT_EQ(ask("Something else"), -1);
}

TEST_F(DialogTest, AnswersFromSettingsByTitle) {
    host.answer_dialogs(DialogSettings{first_button, first_button, second_button, std::nullopt});
    EXPECT_EQ(ask("Continue"), -1);
    EXPECT_EQ(ask("Index Segment Names"), 1);
    EXPECT_EQ(ask("Import Options"), 0);
    EXPECT_EQ(ask("Set Verbose Option:"), 0);
}

TEST_F(DialogTest, AnswersFromAScriptInOrder) {
    host.answer_dialogs(DialogScript{{1, std::nullopt, 7}});
    EXPECT_EQ(ask("a"), 1);
    EXPECT_EQ(ask("b"), -1);
    EXPECT_EQ(ask("c"), 7);
    EXPECT_EQ(ask("d"), -1);
    host.answer_dialogs(DialogScript{{0}});
    EXPECT_EQ(ask("e"), 0);
}

TEST_F(DialogTest, AnswersFromAFunction) {
    host.answer_dialogs(DialogFunction([](const Dialog &dialog) -> DialogAnswer {
        EXPECT_EQ(dialog.question, "question");
        EXPECT_EQ(dialog.first_button, "left");
        EXPECT_EQ(dialog.second_button, "right");
        EXPECT_EQ(dialog.answer_on_arrival, -1);
        if (dialog.title == "skip")
            return std::nullopt;
        return second_button;
    }));
    EXPECT_EQ(ask("ask"), 1);
    EXPECT_EQ(ask("skip"), -1);
    host.answer_dialogs(DialogFunction());
    EXPECT_EQ(ask("ask"), -1);
}

TEST_F(DialogTest, AFunctionMaySetAnotherSource) {
    host.answer_dialogs(DialogFunction([this](const Dialog &) -> DialogAnswer {
        host.answer_dialogs(Unanswered{});
        return first_button;
    }));
    EXPECT_EQ(ask("first"), 0);
    EXPECT_EQ(ask("second"), -1);
}

TEST_F(DialogTest, LeavesTheAnswerAsItArrived) {
    host.answer_dialogs(Unanswered{});
    EXPECT_EQ(ask("Import Options"), -1);
    ASSERT_EQ(host.dialogs().size(), 1U);
    EXPECT_FALSE(host.dialogs()[0].answered);
    EXPECT_EQ(host.dialogs()[0].answer, -1);
}

TEST_F(DialogTest, KeepsTheQuestions) {
    host.answer_dialogs(DialogScript{{1}});
    ask("Title");
    ask("Other");
    ASSERT_EQ(host.dialogs().size(), 2U);
    EXPECT_EQ(host.dialogs()[0].title, "Title");
    EXPECT_EQ(host.dialogs()[0].question, "question");
    EXPECT_EQ(host.dialogs()[0].first_button, "left");
    EXPECT_EQ(host.dialogs()[0].second_button, "right");
    EXPECT_EQ(host.dialogs()[0].answer_on_arrival, -1);
    EXPECT_EQ(host.dialogs()[0].answer, 1);
    EXPECT_TRUE(host.dialogs()[0].answered);
    EXPECT_EQ(host.dialogs()[1].title, "Other");
    EXPECT_FALSE(host.dialogs()[1].answered);
}

} // namespace
