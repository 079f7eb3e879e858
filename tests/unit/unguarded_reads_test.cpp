#include "control/record_reader.h"
#include "tests/unit/open_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace kova_import {
namespace {

using namespace std::string_literals;

constexpr std::int32_t untouched = -77;

TEST(UnguardedReads, AreBlankAtTheEndOfTheFileAndGoOn) {
    OpenText text("caption\n");
    FixedText<10> caption;
    text->unguarded_fixed<"(A10)">("caption", caption);
    EXPECT_EQ(caption.view(), "caption   ");
    text->unguarded_fixed<"(A10)">("caption", caption);
    EXPECT_TRUE(text->ok());
    EXPECT_EQ(caption.trimmed(), "");
    caption.fill('x');
    text->unguarded_list("title", caption);
    EXPECT_TRUE(text->ok());
    EXPECT_EQ(caption.trimmed(), "");
    EXPECT_EQ(text->line_counter(), 4);
    std::int32_t number = 0;
    text->list("number", field("number", number));
    EXPECT_EQ(text->failure().kind, ReadFailureKind::end_of_file);
    EXPECT_EQ(text->failure().statement_number, 5);
}

TEST(UnguardedReads, ATitleThatCannotBeReadIsOneLine) {
    for (const std::string &title : {"'tis the river"s, "0*x"s, "'a'b"s, "'one\ntwo'x"s}) {
        OpenText text(title + "\n5\n");
        FixedText<80> ignored;
        text->unguarded_list("title", ignored);
        EXPECT_TRUE(text->ok()) << title;
        FixedText<40> rest;
        text->list("next", field("next", rest));
        EXPECT_EQ(rest.trimmed(), title.starts_with("'one") ? "two'x" : "5") << title;
    }
}

TEST(UnguardedReads, ATitleBehindAnEmptyLineIsThatLineWhereItCannotBeRead) {
    OpenText text("\n'tis");
    FixedText<10> title;
    text->unguarded_list("title", title);
    EXPECT_TRUE(text->ok());
    FixedText<4> next;
    text->fixed<"(A4)">("next", field("next", next));
    EXPECT_TRUE(text->ok());
    EXPECT_EQ(next.view(), "'tis");
}

TEST(UnguardedReads, AtTheEndOfBlankLinesStayThere) {
    // An older value that started at the same place must not draw the stream back to it.
    OpenText text("\n");
    FixedText<10> title;
    text->unguarded_list("title", title);
    EXPECT_TRUE(text->ok());
    std::int32_t number = untouched;
    text->list("number", field("number", number));
    EXPECT_EQ(text->failure().kind, ReadFailureKind::end_of_file);
    EXPECT_EQ(number, untouched);
}

} // namespace
} // namespace kova_import
