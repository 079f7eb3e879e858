#include "control/record_layout.h"

#include <gtest/gtest.h>

namespace kova_import {
namespace {

TEST(RecordLayout, TakesTheLayoutsOfTheFormatsApart) {
    constexpr auto header = record_layout<"(I5,5x,I2)">;
    static_assert(header.fields.size() == 2 && header.width == 12);
    static_assert(header.fields[0].offset == 0 && header.fields[0].width == 5);
    static_assert(header.fields[1].offset == 10 && header.fields[1].width == 2);

    constexpr auto geometry = record_layout<"(4(I5),16(F15.5))">;
    static_assert(geometry.fields.size() == 20 && geometry.width == 260);
    static_assert(geometry.fields[3].kind == FieldKind::integer && geometry.fields[3].offset == 15);
    static_assert(geometry.fields[4].kind == FieldKind::real && geometry.fields[4].offset == 20);
    static_assert(geometry.fields[19].offset == 245 && geometry.fields[19].decimals == 5);

    constexpr auto constant = record_layout<"(7X,I5,11X,I5,18X,F10.0)">;
    static_assert(constant.fields[0].offset == 7 && constant.fields[1].offset == 23);
    static_assert(constant.fields[2].offset == 46 && constant.width == 56);

    constexpr auto factors = record_layout<"(2(F10.0))">;
    static_assert(factors.fields.size() == 2 && factors.fields[1].offset == 10);

    constexpr auto names = record_layout<"(A5,5X,A30)">;
    static_assert(names.fields[1].kind == FieldKind::text && names.fields[1].offset == 10);

    constexpr auto repeated = record_layout<"(3I2,2(A1,X),2F4.1)">;
    static_assert(repeated.fields.size() == 7 && repeated.width == 18);
    static_assert(repeated.fields[4].offset == 8 && repeated.fields[5].offset == 10);
    SUCCEED();
}

} // namespace
} // namespace kova_import
