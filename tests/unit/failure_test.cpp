#include "tests/unit/open_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace kova_import {
namespace {

ReadFailure failure_of_list(const std::string &text) {
    OpenText reader(text);
    std::int32_t first = 0;
    std::int32_t second = 0;
    reader->list("count", field("first", first));
    reader->list("pair", field("first", first), field("second", second));
    return reader->failure();
}

TEST(Failures, AdviseWhereAWordStandsInPlaceOfANumber) {
    for (const char *word : {"A", "Z", "a", "z", "Ammonia"})
        EXPECT_STREQ(failure_of_list("1\n" + std::string(word) + " 2\n").advice,
                     "A count above may be too large, or a line too much or missing.")
            << word;
    // the characters beside the letters
    for (const char *other : {"@", "[", "`", "{", "?", "1.5", "1x", "-a"})
        EXPECT_STREQ(failure_of_list("1\n" + std::string(other) + " 2\n").advice, "") << other;
}

TEST(Failures, AdviseWhereARecordGoesOnInTheNextLine) {
    for (const char *value : {"x", "?", "1.5"})
        EXPECT_STREQ(failure_of_list("1\n1\n" + std::string(value) + "\n").advice,
                     "The record started in an earlier line; it may be a value short there.");
}

TEST(Failures, OfAListSayWhatStoodThereAndWhatWasExpected) {
    const ReadFailure failure = failure_of_list("1\n7 1.5 \n");
    EXPECT_EQ(failure.kind, ReadFailureKind::bad_value);
    EXPECT_STREQ(failure.statement, "pair");
    EXPECT_EQ(failure.statement_number, 3);
    EXPECT_STREQ(failure.field, "second");
    EXPECT_STREQ(failure.expected, "an integer of at most 32 bits");
    EXPECT_EQ(failure.found.view(), "1.5");
    EXPECT_EQ(failure.place.line, 2);
    EXPECT_EQ(failure.place.column, 3);
    EXPECT_EQ(failure.width, 3);
    EXPECT_EQ(failure.line_text.view(), "7 1.5 ");
    EXPECT_EQ(failure.line_text_column, 1);
}

TEST(Failures, TheFirstOneCounts) {
    for (const char *first : {"'7'", "x"}) {
        const ReadFailure failure = failure_of_list("1\n" + std::string(first) + " y\n");
        EXPECT_STREQ(failure.field, "first");
        EXPECT_EQ(failure.found.view(), first);
        EXPECT_EQ(failure.place.column, 1);
    }
}

TEST(Failures, OfAFieldSayWhatStoodThereAndWhatWasExpected) {
    OpenText reader("   12  x.5  \n");
    std::int32_t number = 0;
    float value = 0;
    reader->fixed<"(I5,F7.0)">("constant", field("number", number), field("value", value));
    const ReadFailure &failure = reader->failure();
    EXPECT_EQ(failure.kind, ReadFailureKind::bad_value);
    EXPECT_STREQ(failure.statement, "constant");
    EXPECT_EQ(failure.statement_number, 2);
    EXPECT_STREQ(failure.field, "value");
    EXPECT_STREQ(failure.expected, "a real number within single precision");
    EXPECT_STREQ(failure.advice, "");
    EXPECT_EQ(failure.found.view(), "x.5");
    EXPECT_EQ(failure.place.line, 1);
    EXPECT_EQ(failure.place.column, 8);
    EXPECT_EQ(failure.width, 3);
    EXPECT_EQ(failure.line_text.view(), "   12  x.5  ");
}

} // namespace
} // namespace kova_import
