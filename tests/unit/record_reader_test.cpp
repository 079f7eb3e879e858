#include "control/record_reader.h"

#include "tests/unit/open_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kova_import {
namespace {

constexpr std::int32_t untouched = -77;

/// What a list of up to four integers becomes, and the integer that a second read finds then.
struct ListCase {
    std::string text;
    std::vector<std::int32_t> values; ///< empty: the read fails
    std::optional<std::int32_t> next; ///< empty: the second read fails
};

std::vector<std::int32_t> read_list(RecordReader &reader, std::size_t size) {
    std::vector<std::int32_t> v(size, untouched);
    switch (size) {
    case 1:
        reader.list("list", field("a", v[0]));
        break;
    case 2:
        reader.list("list", field("a", v[0]), field("b", v[1]));
        break;
    case 3:
        reader.list("list", field("a", v[0]), field("b", v[1]), field("c", v[2]));
        break;
    default:
        reader.list("list", field("a", v[0]), field("b", v[1]), field("c", v[2]), field("d", v[3]));
        break;
    }
    return v;
}

void expect_list(const ListCase &expected, std::size_t size) {
    OpenText text(expected.text);
    const std::vector<std::int32_t> values = read_list(*text, size);
    EXPECT_EQ(text->ok(), !expected.values.empty()) << expected.text;
    if (!text->ok() || expected.values.empty())
        return;
    EXPECT_EQ(values, expected.values) << expected.text;
    std::int32_t next = untouched;
    text->list("next", field("next", next));
    EXPECT_EQ(text->ok() ? std::optional(next) : std::nullopt, expected.next) << expected.text;
}

TEST(FreeFormList, SeparatesValues) {
    const std::int32_t u = untouched;
    const std::vector<ListCase> cases = {
        {"1 2 3\n9\n", {1, 2, 3}, 9},
        {"1,2,3\n9\n", {1, 2, 3}, 9},
        {" 1 , 2 ,3 \n9\n", {1, 2, 3}, 9},
        {"\t1\t,\t2 3\n9\n", {1, 2, 3}, 9},
        {"1 2 3 rest of the line is a comment\n9\n", {1, 2, 3}, 9},
        {"1 2 3 4 5 6\n9\n", {1, 2, 3}, 9},
        {"1\n2\n3\n9\n", {1, 2, 3}, 9},
        {"1\n\n\n2 3\n9", {1, 2, 3}, 9},
        {"\n \n1 2 3\n9", {1, 2, 3}, 9},
        {"1 2\n3 4\n9", {1, 2, 3}, 9},
        {"1 2 3\r\n9\r\n", {1, 2, 3}, 9},
        {"1\r2\r3\n9\n", {1, 2, 3}, 9},
        {"1 2 3", {1, 2, 3}, std::nullopt},
        {"1 2 3\n", {1, 2, 3}, std::nullopt},
        {"1,,3\n9\n", {1, u, 3}, 9},
        {"1, ,3\n9\n", {1, u, 3}, 9},
        {",2,3\n9\n", {u, 2, 3}, 9},
        {",,3\n9\n", {u, u, 3}, 9},
        {",,,\n9\n", {u, u, u}, 9},
        {"1,\n2,\n3,\n9\n", {1, 2, 3}, 9},
        {"1\n,2\n,3\n9\n", {1, 2, 3}, 9},
        {"1,\n,3\n9\n", {1, u, 3}, 9},
        {"1 2 /\n9\n", {1, 2, u}, 9},
        {"1 2/ 3\n9\n", {1, 2, u}, 9},
        {"/ 1 2 3\n9\n", {u, u, u}, 9},
        {"1\n/ 2\n9\n", {1, u, u}, 9},
        {"\n/5\n9\n", {u, u, u}, 9},
        {"1,/\n9\n", {1, u, u}, 9},
        {"3*7\n9\n", {7, 7, 7}, 9},
        {"2*7 8\n9\n", {7, 7, 8}, 9},
        {"100*7\n9\n", {7, 7, 7}, 9},
        {"2* 8\n9\n", {u, u, 8}, 9},
        {"1 2*\n9\n", {1, u, u}, 9},
        {"1 2*", {1, u, u}, std::nullopt},
        {"2*,8\n9\n", {u, u, 8}, 9},
        {"3*/\n9\n", {u, u, u}, 9},
        {"2147483647*5\n9\n", {5, 5, 5}, 9},
        {"+1 -2 +3\n9\n", {1, -2, 3}, 9},
        {"1 2\n", {}, {}},
        {"", {}, {}},
        {"\n\n", {}, {}},
        {"1 2 x\n", {}, {}},
        {"1 2 3x\n", {}, {}},
        {"1;2;3\n", {}, {}},
        {"0*5 1 2\n", {}, {}},
        {"2147483648*5\n", {}, {}},
        {"+2*5 1\n", {}, {}},
        {"2*3*4\n", {}, {}},
        {"1.0 2 3\n", {}, {}},
        {"'1' 2 3\n", {}, {}},
        {"\"1\" 2 3\n", {}, {}},
        {"1 2 99999999999\n", {}, {}},
        // the byte 0xFF is no end of the file
        {"1 2 3\xFF\n", {}, {}},
        {"1 2 3\xFF", {}, {}},
        {"1 2\xFF 3\n", {}, {}},
    };
    for (const ListCase &each : cases)
        expect_list(each, 3);
}

TEST(FreeFormList, ReadsOneValueAndLeavesTheRestOfTheLine) {
    expect_list({"30   number of segments\n9\n", {30}, 9}, 1);
    expect_list({"30/\n9\n", {30}, 9}, 1);
    expect_list({"30,'open quote\n9\n", {30}, 9}, 1);
    expect_list({"30*\n9\n", {untouched}, 9}, 1);
}

TEST(FreeFormList, ConvertsARepeatedValueForEachItemThatItMeets) {
    OpenText text("3*5 'x'\n2*12ab 7\n");
    std::int32_t integer = 0;
    float real = 0;
    FixedText<4> name;
    FixedText<4> last;
    text->list("mixed", field("integer", integer), field("real", real), field("name", name),
               field("last", last));
    ASSERT_TRUE(text->ok());
    EXPECT_EQ(integer, 5);
    EXPECT_EQ(real, 5.0F);
    EXPECT_EQ(name.view(), "5   ");
    EXPECT_EQ(last.view(), "x   ");
    text->list("mixed", field("name", name), field("integer", integer));
    EXPECT_FALSE(text->ok());
    EXPECT_EQ(name.view(), "12ab");
    EXPECT_STREQ(text->failure().field, "integer");
    EXPECT_EQ(text->failure().place.column, 3);
    EXPECT_EQ(text->failure().found.view(), "12ab");
}

struct TextCase {
    std::string text;
    std::optional<std::string> value; ///< trimmed
};

TEST(FreeFormList, ReadsTexts) {
    const std::vector<TextCase> cases = {
        {"Pool\n", "Pool"},
        {"Upper Pool\n", "Upper"},
        {"'Upper Pool'\n", "Upper Pool"},
        {"\"Upper Pool\"\n", "Upper Pool"},
        {"'Miller''s Pool'\n", "Miller's Pool"},
        {"\"Miller's Pool\"\n", "Miller's Pool"},
        {"\"a \"\"b\"\" c\"\n", "a \"b\" c"},
        {"Miller's\n", "Miller's"},
        {"a;b\n", "a;b"},
        {"a/b\n", "a"},
        {"a,b\n", "a"},
        {"'a,b/c'\n", "a,b/c"},
        {"'Upper\nPool'\n", "UpperPool"},
        {"'Upper\r\nPool'\n", "UpperPool"},
        {"'Upper\rPool'\n", "Upper\rPool"},
        {"''\n", ""},
        {"12\n", "12"},
        {"12abc\n", "12abc"},
        {"2*abc\n", "abc"},
        {"2*'a b'\n", "a b"},
        {"*abc\n", "*abc"},
        {"a*b\n", "a*b"},
        {"1.5*2\n", "1.5*2"},
        {"12345678901234567890123456789012345678901234567890\n",
         "1234567890123456789012345678901234567890"},
        {"'never closed\n", std::nullopt},
        {"'closed'too late\n", std::nullopt},
        {"0*x\n", std::nullopt},
        {"", std::nullopt},
    };
    for (const TextCase &each : cases) {
        OpenText text(each.text);
        FixedText<40> value("untouched");
        text->list("text", field("text", value));
        EXPECT_EQ(text->ok(), each.value.has_value()) << each.text;
        if (text->ok() && each.value) {
            EXPECT_EQ(value.trimmed(), *each.value) << each.text;
        }
    }
}

TEST(FreeFormList, EmptyValuesAndSlashLeaveTextsAlone) {
    for (const char *record : {"1,\n,2\n", "1,,\n", "1/\n", "1 2*\n", "1,/\n"}) {
        OpenText text(record);
        std::int32_t number = 0;
        FixedText<6> name("before");
        text->list("name", field("number", number), field("name", name));
        EXPECT_TRUE(text->ok()) << record;
        EXPECT_EQ(name.view(), "before") << record;
    }
}

TEST(FreeFormList, WithoutItemsGoesOverOneLineWhateverItHolds) {
    OpenText text("'open quote, 0*x\n\n7\n");
    text->list("nothing");
    text->list("nothing");
    std::int32_t number = 0;
    text->list("number", field("number", number));
    EXPECT_TRUE(text->ok());
    EXPECT_EQ(number, 7);
    text->list("nothing");
    EXPECT_EQ(text->failure().kind, ReadFailureKind::end_of_file);
}

TEST(FreeFormList, SlashAfterARepeatedValueOnlyEndsWhatIsLeft) {
    OpenText text("2*3 / 4\n5\n");
    const std::vector<std::int32_t> values = read_list(*text, 4);
    EXPECT_EQ(values, (std::vector<std::int32_t>{3, 3, untouched, untouched}));
}

TEST(IntegerList, KeepsTheFirstOnesAndChecksTheRest) {
    std::array<std::int32_t, 3> kept{untouched, untouched, untouched};
    OpenText text("1 2 3 4 5\n2000000000*0\n3*1 1999999996*2 x\n9\n");
    text->integers("flags", "flag", 5, kept);
    EXPECT_EQ(kept, (std::array<std::int32_t, 3>{1, 2, 3}));
    text->integers("flags", "flag", 2000000000, kept);
    EXPECT_TRUE(text->ok());
    EXPECT_EQ(kept, (std::array<std::int32_t, 3>{0, 0, 0}));
    text->integers("flags", "flag", 2000000000, kept);
    EXPECT_EQ(text->failure().kind, ReadFailureKind::bad_value);
    EXPECT_EQ(text->failure().found.view(), "x");
}

TEST(IntegerList, OfNoneGoesOverOneLine) {
    std::array<std::int32_t, 3> kept{};
    OpenText text("not a number\n8\n");
    text->integers("flags", "flag", -4, kept);
    std::int32_t next = 0;
    text->list("next", field("next", next));
    EXPECT_EQ(next, 8);
}

TEST(IntegerList, StopsAtASlash) {
    std::array<std::int32_t, 3> kept{untouched, untouched, untouched};
    OpenText text("1 /\n8\n");
    text->integers("flags", "flag", 2000000000, kept);
    std::int32_t next = 0;
    text->list("next", field("next", next));
    EXPECT_EQ(kept, (std::array<std::int32_t, 3>{1, untouched, untouched}));
    EXPECT_EQ(next, 8);
}

TEST(FixedColumns, ReadTheHeader) {
    struct Case {
        std::string text;
        std::int32_t type;
        std::int32_t version;
    };
    for (const Case &each : std::vector<Case>{
             {"    7      3\n", 7, 3},
             {"    7      2\n", 7, 2},
             {"   11xxxxx 2 trailing text\n", 11, 2},
             {"\n", 0, 0},
             {"            ", 0, 0},
             {"11\n", 11, 0},
             {"1 1\r\n", 11, 0},
             {"   11     23456\n", 11, 23},
             {"\xEF\xBB\xBF   11      2\n", 11, 2},
         }) {
        OpenText text(each.text);
        std::int32_t type = untouched;
        std::int32_t version = untouched;
        text->fixed<"(I5,5x,I2)">("header", field("type", type), field("version", version));
        EXPECT_TRUE(text->ok()) << each.text;
        EXPECT_EQ(type, each.type) << each.text;
        EXPECT_EQ(version, each.version) << each.text;
    }
}

TEST(FixedColumns, TellExactlyWhichFieldIsBad) {
    OpenText text("    7      3\n    8     x4 rest\n");
    std::int32_t type = 0;
    std::int32_t version = 0;
    for (int i = 0; i < 2; ++i)
        text->fixed<"(I5,5x,I2)">("header", field("type", type), field("version", version));
    ASSERT_FALSE(text->ok());
    const ReadFailure &failure = text->failure();
    EXPECT_EQ(failure.kind, ReadFailureKind::bad_value);
    EXPECT_STREQ(failure.statement, "header");
    EXPECT_EQ(failure.statement_number, 3);
    EXPECT_EQ(failure.place.line, 2);
    EXPECT_EQ(failure.place.column, 11);
    EXPECT_EQ(failure.width, 2);
    EXPECT_STREQ(failure.field, "version");
    EXPECT_EQ(failure.found.view(), "x4");
    EXPECT_EQ(failure.line_text.view(), "    8     x4 rest");
    EXPECT_EQ(failure.line_text_column, 1);
}

TEST(FixedColumns, KeepTextsAsTheyStand) {
    OpenText text("   12      Upper Pool  \r\n   13\n");
    std::int32_t number = 0;
    FixedText<40> name;
    text->fixed<"(I5,5X,A40)">("name", field("number", number), field("name", name));
    EXPECT_EQ(name.view(), " Upper Pool                             ");
    text->fixed<"(I5,5X,A40)">("name", field("number", number), field("name", name));
    EXPECT_EQ(name.trimmed(), "");
    EXPECT_EQ(number, 13);
}

TEST(FixedColumns, ACarriageReturnInsideALineIsACharacter) {
    OpenText text("a\rb\r\nc\r");
    FixedText<5> name;
    text->fixed<"(A5)">("name", field("name", name));
    EXPECT_EQ(name.view(), "a\rb  ");
    text->fixed<"(A5)">("name", field("name", name));
    EXPECT_EQ(name.view(), "c\r   ");
}

TEST(Failures, StickAndChangeNothing) {
    OpenText text("x\n1\n2\n");
    std::int32_t number = untouched;
    text->list("number", field("number", number));
    const std::int64_t counter = text->line_counter();
    text->list("number", field("number", number));
    FixedText<4> caption("kept");
    text->unguarded_fixed<"(A4)">("caption", caption);
    int calls = 0;
    text->for_each_record(3, [&](std::int32_t) { ++calls; });
    EXPECT_EQ(number, untouched);
    EXPECT_EQ(caption.view(), "kept");
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(text->line_counter(), counter);
    EXPECT_EQ(text.exported_counter(), counter);
}

TEST(Failures, AtTheEndOfTheFileAreShownOnItsLastLine) {
    struct Case {
        std::string text;
        std::int64_t line;
        std::int64_t column;
        std::string line_text;
    };
    for (const Case &each : std::vector<Case>{
             {"1\n2\n", 2, 2, "2"},
             {"1\n2\r\n", 2, 2, "2"},
             {"1\n23", 2, 3, "23"},
             {"", 1, 1, ""},
             {"1\n\n", 2, 1, ""},
             {"\xEF\xBB\xBF", 1, 1, ""},
             {"\xEF\xBB\xBF\n", 1, 1, ""},
             {"\xEF\xBB\xBF 1", 1, 3, " 1"},
         }) {
        OpenText text(each.text);
        for (int i = 0; i < 3; ++i) {
            std::int32_t number = 0;
            text->list("number", field("number", number));
        }
        EXPECT_EQ(text->failure().kind, ReadFailureKind::end_of_file) << each.text;
        EXPECT_EQ(text->failure().place.line, each.line) << each.text;
        EXPECT_EQ(text->failure().place.column, each.column) << each.text;
        EXPECT_EQ(text->failure().line_text.view(), each.line_text) << each.text;
    }
}

TEST(Failures, ShowThePlaceInAVeryLongLine) {
    OpenText text(std::string(200000, ' ') + "bad" + std::string(200000, '-') + "\n");
    std::int32_t number = 0;
    text->list("number", field("number", number));
    EXPECT_EQ(text->failure().place.line, 1);
    EXPECT_EQ(text->failure().place.column, 200001);
    EXPECT_EQ(text->failure().width, 200003);
}

TEST(Failures, NameTheOpenQuote) {
    OpenText text("1 2\n7 'Upper Pool\n8 Lower\n");
    std::int32_t a = 0;
    std::int32_t b = 0;
    FixedText<40> name;
    text->list("numbers", field("a", a), field("b", b));
    text->list("name", field("a", a), field("name", name));
    EXPECT_EQ(text->failure().kind, ReadFailureKind::open_delimiter);
    EXPECT_EQ(text->failure().place.line, 2);
    EXPECT_EQ(text->failure().place.column, 3);
    EXPECT_EQ(text->failure().line_text.view(), "7 'Upper Pool");
}

TEST(Failures, ShowTheLineOfAnOpenQuoteHoweverFarBackItIs) {
    std::string lines;
    for (int i = 0; i < 20000; ++i)
        lines += "12345 67890\n";
    OpenText text("1 2\n7 'Upper Pool\n" + lines);
    FixedText<40> name;
    std::int32_t number = 0;
    text->list("numbers", field("a", number), field("b", number));
    text->list("name", field("number", number), field("name", name));
    EXPECT_EQ(text->failure().place.line, 2);
    EXPECT_EQ(text->failure().line_text.view(), "7 'Upper Pool");
    EXPECT_EQ(text->failure().found.view().substr(0, 20), "Upper Pool12345 6789");
}

TEST(Failures, AdviseOnQuotesOnlyWhereANumberIsWanted) {
    OpenText quoted("'1'\n");
    std::int32_t number = 0;
    quoted->list("number", field("number", number));
    EXPECT_STREQ(quoted->failure().advice, "Take the quotes away: a quoted number is a text.");
    OpenText glued("'a'b\n");
    FixedText<40> name;
    glued->list("name", field("name", name));
    EXPECT_STREQ(glued->failure().advice, "");
}

TEST(LongLines, CostNoMemoryAndLoseNothing) {
    // Values on both sides of the buffer's end, and a number longer than the buffer.
    std::string line;
    for (int i = 0; i < 3; ++i)
        line += std::string(70000, i == 1 ? '\t' : ' ') + std::to_string(i + 1) + " ";
    OpenText text(line + "\n" + std::string(100000, '0') + "42 43\n5\n");
    EXPECT_EQ(read_list(*text, 3), (std::vector<std::int32_t>{1, 2, 3}));
    EXPECT_EQ(read_list(*text, 2), (std::vector<std::int32_t>{42, 43}));
    EXPECT_EQ(read_list(*text, 1), (std::vector<std::int32_t>{5}));
}

TEST(LineCounter, CountsStatementsNotLines) {
    OpenText text("1\n2\n3\n4\n");
    EXPECT_EQ(text->line_counter(), 1);
    read_list(*text, 3);
    EXPECT_EQ(text->line_counter(), 2);
    EXPECT_EQ(text.exported_counter(), 2);
}

TEST(LineCounter, StaysAtTheLargestValueForHosts) {
    OpenText text("1\n2\n3\n");
    text->start_counting(2147483646);
    EXPECT_EQ(text.exported_counter(), 2147483646);
    for (int i = 0; i < 3; ++i)
        read_list(*text, 1);
    EXPECT_TRUE(text->ok());
    EXPECT_EQ(text->line_counter(), 2147483649);
    EXPECT_EQ(text.exported_counter(), 2147483647);
}

TEST(LineCounter, ForEachRecordTakesANegativeCountAsNone) {
    OpenText text("1\n");
    int calls = 0;
    text->for_each_record(-5, [&](std::int32_t) { ++calls; });
    text->for_each_record(0, [&](std::int32_t) { ++calls; });
    EXPECT_EQ(calls, 0);
    text->for_each_record(2, [&](std::int32_t i) { calls += i; });
    EXPECT_EQ(calls, 3);
}

TEST(Reader, FailsWithoutAnOpenFile) {
    std::int32_t counter = 1;
    RecordReader reader(counter);
    std::int32_t number = untouched;
    reader.list("number", field("number", number));
    EXPECT_EQ(reader.failure().kind, ReadFailureKind::not_open);
    EXPECT_EQ(counter, 2);
    EXPECT_EQ(number, untouched);
}

} // namespace
} // namespace kova_import
