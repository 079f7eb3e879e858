#include "control/record_reader.h"

#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kova_import {
namespace {

struct Case {
    std::string text;
    std::int32_t value; ///< of a read that works
    ReadFailureKind failure = ReadFailureKind::none;
    std::int64_t line = 0;
    std::int64_t column = 0;
    std::int64_t width = 0;
};

// A number, then an integer from -7 to 12.
TEST(BoundedFields, RefuseWhatIsOutOfBoundsAtItsPlace) {
    const std::vector<Case> cases = {
        {"1 12\n", 12},
        {"1 -7\n", -7},
        {"1 -8\n", 0, ReadFailureKind::out_of_range, 1, 3, 2},
        {"1,,\n", 5},
        {"1 /\n", 5},
        {"2*7\n", 7},
        {"1\n\n  12 rest\n", 12},
        {"1 13\n", 0, ReadFailureKind::out_of_range, 1, 3, 2},
        {"2*13\n", 0, ReadFailureKind::out_of_range, 1, 3, 2},
        {"1\n  2000000000", 0, ReadFailureKind::out_of_range, 2, 3, 10},
        {"1 9999999999\n", 0, ReadFailureKind::bad_value, 1, 3, 10},
        {"1 12.0\n", 0, ReadFailureKind::bad_value, 1, 3, 4},
        {"1 '3'\n", 0, ReadFailureKind::bad_value, 1, 3, 3},
        {"1\n", 0, ReadFailureKind::end_of_file, 1, 2, 0},
    };
    for (const Case &each : cases) {
        const kova_test::TemporaryFolder folder;
        std::int32_t exported_counter = 0;
        RecordReader reader(exported_counter);
        ASSERT_EQ(reader.stream().open(folder.write("text.inp", each.text).string()), nullptr);
        std::int32_t first = 0;
        std::int32_t bounded = 5;
        reader.list("list", field("first", first),
                    bounded_field("bounded", bounded,
                                  {.smallest = -7, .largest = 12, .expected = "at most 12"}));
        EXPECT_EQ(reader.failure().kind, each.failure) << each.text;
        if (each.failure == ReadFailureKind::none) {
            EXPECT_EQ(bounded, each.value) << each.text;
            continue;
        }
        EXPECT_EQ(reader.failure().place.line, each.line) << each.text;
        EXPECT_EQ(reader.failure().place.column, each.column) << each.text;
        EXPECT_EQ(reader.failure().width, each.width) << each.text;
        if (each.failure == ReadFailureKind::out_of_range) {
            EXPECT_STREQ(reader.failure().expected, "at most 12") << each.text;
            EXPECT_STREQ(reader.failure().field, "bounded") << each.text;
        }
    }
}

TEST(BoundedFields, BoundsHoldForWhatIsLeftOut) {
    struct LeftOut {
        std::string text;
        std::int64_t width; ///< none at the end of a line
    };
    for (const LeftOut &each :
         std::vector<LeftOut>{{"  /\n", 1}, {"1*\n", 0}, {"1*\r\n", 0}, {"1*", 0}, {"1* 5\n", 1}}) {
        const kova_test::TemporaryFolder folder;
        std::int32_t exported_counter = 0;
        RecordReader reader(exported_counter);
        ASSERT_EQ(reader.stream().open(folder.write("text.inp", each.text).string()), nullptr);
        std::int32_t number = 0;
        reader.list("list",
                    bounded_field("number", number, {.smallest = 1, .expected = "from 1 on"}));
        EXPECT_EQ(reader.failure().kind, ReadFailureKind::out_of_range) << each.text;
        EXPECT_EQ(reader.failure().place.line, 1) << each.text;
        EXPECT_EQ(reader.failure().place.column, 3) << each.text;
        EXPECT_EQ(reader.failure().width, each.width) << each.text;
    }
}

} // namespace
} // namespace kova_import
