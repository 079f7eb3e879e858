#include "tests/unit/open_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace kova_import {
namespace {

ReadFailureKind kind_of_header(const std::string &text) {
    OpenText reader(text);
    std::int32_t model_type = 0;
    reader->fixed<"(I5)">("header", field("model type", model_type));
    return reader->failure().kind;
}

TEST(RecordStream, KnowsCharactersOfTwoBytesByTheirNuls) {
    using namespace std::string_literals;
    for (const std::string &wide :
         {"\xFF\xFE"
          "1\0"s,
          "\xFE\xFF\0001"s, "\xFE\xFF"s, "\0 \0 \0001"s, "\0 \0"s, " \0 \0001\0"s, "1\0\r\0"s})
        EXPECT_EQ(kind_of_header(wide), ReadFailureKind::wide_text) << testing::PrintToString(wide);
    // a NUL here and there is no value, but one byte like any other
    for (const std::string &plain :
         {"\0001234\n"s, "\0\000123\n"s, "1\0002\0003\n"s.substr(0, 3) + "34\n", "1\00023\n"s,
          "12\0003\n"s, "123\0\n"s,
          "\xFE"
          "1234\n"s,
          "\xFF"
          "1234\n"s,
          "1\xFF\xFE\n"s})
        EXPECT_EQ(kind_of_header(plain), ReadFailureKind::bad_value)
            << testing::PrintToString(plain);
}

TEST(RecordStream, ShowsALongLineAroundTheField) {
    for (const std::size_t before : {0U, 1U, 159U, 160U, 161U, 1000U, 100000U}) {
        OpenText reader("1\n" + std::string(before, ' ') + "x" + std::string(600, 'y') + "\n2\n");
        std::int32_t value = 0;
        reader->list("first", field("value", value));
        reader->list("second", field("value", value));
        const ReadFailure &failure = reader->failure();
        EXPECT_EQ(failure.place.line, 2);
        EXPECT_EQ(failure.place.column, static_cast<std::int64_t>(before) + 1);
        const std::size_t shown_before = before < 160 ? before : 160;
        EXPECT_EQ(failure.line_text_column, static_cast<std::int64_t>(before - shown_before) + 1);
        const std::string line = std::string(shown_before, ' ') + "x" + std::string(600, 'y');
        EXPECT_EQ(failure.line_text.view(), line.substr(0, 400)) << before;
    }
}

TEST(RecordStream, OfNoFileIsAtItsEndWithoutAnErrorOfTheSystem) {
    RecordStream stream;
    EXPECT_FALSE(stream.is_open());
    EXPECT_TRUE(stream.at_end_of_file());
    EXPECT_FALSE(stream.read_error());
}

} // namespace
} // namespace kova_import
