#include "cli/marked_line.h"

#include <gtest/gtest.h>
#include <string>

namespace kova_command {
namespace {

struct Case {
    const char *line;
    MarkedPart part;
    const char *text;
    const char *mark;
};

TEST(MarkedLine, StandsUnderTheField) {
    const Case cases[] = {
        {"  1  1x  3", {5, 2, false}, "  1  1x  3", "     ^~"},
        {"1", {0, 1, false}, "1", "^"},
        {"abc", {3, 0, false}, "abc", "   ^"},    // the end of the line
        {"abc", {99, 4, false}, "abc", "   ^"},   // behind it
        {"", {0, 0, false}, "", "^"},             //
        {"\t1x", {1, 2, false}, "\\t1x", "  ^~"}, // a tab takes two columns
        {"\x1B 1x", {2, 2, false}, "\\x1b 1x", "     ^~"},
        {"\xE9 1x", {2, 2, false}, "é 1x", "  ^~"},           // one byte, one column
        {"\xC3\xA9 1x", {3, 2, false}, "é 1x", "  ^~"},       // two bytes, one column
        {"\xE6\xB0\xB4 1x", {4, 2, false}, "水 1x", "   ^~"}, // three bytes, two columns
        {"\xC3\xA9x", {0, 3, false}, "éx", "^~"},
        {"c 1x", {2, 2, true}, "...c 1x", "     ^~"}, // the line starts before
        {"abc", {1, 500, false}, "abc", " ^~"},       // a text that goes on in the next line
    };
    for (const Case &each : cases) {
        const MarkedLine marked = mark_part(each.line, each.part, 80);
        EXPECT_EQ(marked.text, each.text);
        EXPECT_EQ(marked.mark, each.mark) << each.text;
    }
}

TEST(MarkedLine, IsShortenedAroundTheField) {
    const std::string line = std::string(200, 'a') + "FIELD" + std::string(200, 'b');
    for (const std::size_t cells : {20U, 40U, 80U, 120U}) {
        const MarkedLine marked = mark_part(line, {200, 5, false}, cells);
        EXPECT_LE(marked.text.size(), cells);
        EXPECT_TRUE(marked.text.starts_with("...a"));
        EXPECT_TRUE(marked.text.ends_with("b..."));
        EXPECT_EQ(marked.mark.find('^'), marked.text.find("FIELD"));
        EXPECT_EQ(marked.mark.size(), marked.mark.find('^') + 5);
    }
}

TEST(MarkedLine, IsShortenedAtOneEndOnly) {
    const std::string line = "FIELD" + std::string(200, 'b');
    const MarkedLine first = mark_part(line, {0, 5, false}, 40);
    EXPECT_TRUE(first.text.starts_with("FIELDb"));
    EXPECT_EQ(first.mark, "^~~~~");
    const MarkedLine last = mark_part(std::string(200, 'a') + "FIELD", {200, 5, false}, 40);
    EXPECT_TRUE(last.text.ends_with("aFIELD"));
    EXPECT_EQ(last.mark.find('^'), last.text.find("FIELD"));
}

TEST(MarkedLine, ShowsTheBeginningOfALongField) {
    const MarkedLine marked = mark_part("  " + std::string(500, 'x'), {2, 500, false}, 40);
    EXPECT_LE(marked.text.size(), 40U);
    EXPECT_EQ(marked.mark.front(), ' ');
    EXPECT_LE(marked.mark.size(), 40U);
}

TEST(MarkedLine, MeetsEveryPlaceOfEveryWidth) {
    // Whatever is shown, what stands over the mark is the field.
    const std::string line = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (std::size_t cells = 16; cells < 80; ++cells) {
        for (std::size_t offset = 0; offset < line.size(); ++offset) {
            const MarkedLine marked = mark_part(line, {offset, 1, false}, cells);
            ASSERT_LE(marked.text.size(), cells);
            ASSERT_EQ(marked.text.at(marked.mark.size() - 1), line[offset]);
        }
    }
}

} // namespace
} // namespace kova_command
