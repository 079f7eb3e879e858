// The translations of legacy numbers, as tables: how many rows there are, and the rows that are odd
// on purpose.

#include "legacy/constant_translation.h"
#include "legacy/segment_parameter_translation.h"
#include "legacy/time_function_translation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kova_import::legacy {
namespace {

using Data = import_export_data;

TEST(ConstantTranslation, HasAllRowsOfEachCondition) {
    struct Group {
        Condition condition;
        std::ptrdiff_t rows;
    };
    const std::vector<Group> groups = {
        {{}, 42},
        {{&Data::ph_present, 1}, 4},
        {{&Data::salinity_present, 1}, 1},
        {{&Data::ammonia_present, 1}, 4},
        {{&Data::nitrate_present, 1}, 3},
        {{&Data::solids_count, 1}, 3},
        {{&Data::solids_count, 2}, 3},
        {{&Data::solids_count, 3}, 3},
        {{&Data::detrital_carbon_present, 1}, 2},
        {{&Data::organic_nitrogen_present, 1}, 2},
        {{&Data::organic_phosphorus_present, 1}, 2},
        {{&Data::organic_silica_present, 1}, 2},
        {{&Data::cbod_count, 1}, 6},
        {{&Data::cbod_count, 2}, 6},
        {{&Data::cbod_count, 3}, 6},
        {{&Data::oxygen_present, 1}, 88},
        {{&Data::phytoplankton_count, 1}, 24},
        {{&Data::phytoplankton_count, 2}, 26},
        {{&Data::phytoplankton_count, 3}, 25},
    };
    std::ptrdiff_t total = 0;
    for (const Group &group : groups) {
        const auto &rows = constant_rows::rows;
        EXPECT_EQ(std::count_if(rows.begin(), rows.end(),
                                [&](const ConstantRow &row) {
                                    return row.condition.count == group.condition.count &&
                                           row.condition.smallest == group.condition.smallest;
                                }),
                  group.rows);
        total += group.rows;
    }
    EXPECT_EQ(static_cast<std::ptrdiff_t>(constant_rows::rows.size()), total);
}

TEST(ConstantTranslation, EachLegacyNumberHasOneRow) {
    std::set<std::int32_t> numbers;
    for (const ConstantRow &row : constant_rows::rows) {
        EXPECT_TRUE(numbers.insert(row.legacy_number).second) << row.legacy_number;
        EXPECT_EQ(find_constant(row.legacy_number), &row);
        EXPECT_GE(row.column, 1) << row.legacy_number;
        EXPECT_LE(row.column, 3) << row.legacy_number;
        EXPECT_LE(row.name.size(), 60U) << row.legacy_number;
        EXPECT_EQ(row.name.empty(), row.role == ConstantRole::time_function) << row.legacy_number;
    }
    for (const std::int32_t unknown :
         {-2147483647 - 1, -1, 0, 26, 109, 1139, 1218, 3001, 2147483647})
        EXPECT_EQ(find_constant(unknown), nullptr) << unknown;
}

TEST(ConstantTranslation, ColumnsFollowTheGroups) {
    for (const ConstantRow &row : constant_rows::rows) {
        const bool is_grouped = row.condition.count == &Data::solids_count ||
                                row.condition.count == &Data::cbod_count ||
                                row.condition.count == &Data::phytoplankton_count;
        // a constant of the first phytoplankton group has always waited for the second
        const bool is_exception = row.legacy_number == 119;
        EXPECT_EQ(row.column, is_grouped && !is_exception ? row.condition.smallest : 1)
            << row.legacy_number;
    }
    EXPECT_EQ(find_constant(119)->condition.smallest, 2);
    EXPECT_EQ(find_constant(119)->current_number, 73);
}

TEST(ConstantTranslation, OddNamesAreKept) {
    EXPECT_EQ(find_constant(125)->name,
              "hytoplankton Zooplankton Grazing Rate Constant for Group 1 (");
    EXPECT_EQ(find_constant(155)->name,
              "Phytoplankton Zooplankton Grazing Rate Constant for Group 2 ");
    EXPECT_EQ(find_constant(1180)->name, "Diagnesis rate for POP G1");
    EXPECT_EQ(find_constant(70)->name,
              "Light Option (1 uses input light;  2 uses calculated diel li");
    EXPECT_EQ(find_constant(13)->name, "Minimum Temperature for Nitrification Reaction (\xF8"
                                       "C)");
    EXPECT_EQ(find_constant(62)->name, "Reaeration Option (Sums Wind and Hydraulic Ka");
}

TEST(ConstantTranslation, BenthicAlgaeAndTheLastOnTheListAreSpecial) {
    std::ptrdiff_t benthic = 0;
    for (const ConstantRow &row : constant_rows::rows)
        benthic += row.role == ConstantRole::benthic_algae ? 1 : 0;
    EXPECT_EQ(benthic, 27);
    for (std::int32_t number = 80; number <= 108; ++number) {
        const ConstantRow *row = find_constant(number);
        if (number == 97 || number == 98) {
            EXPECT_EQ(row, nullptr);
            continue;
        }
        ASSERT_NE(row, nullptr) << number;
        EXPECT_EQ(row->role, ConstantRole::benthic_algae) << number;
    }
    EXPECT_EQ(find_constant(22)->role, ConstantRole::last_on_list);
    const std::array<std::int32_t, 6> time_functions = {37, 38, 39, 42, 40, 41};
    for (std::int32_t number = 2; number <= 7; ++number) {
        EXPECT_EQ(find_constant(number)->role, ConstantRole::time_function);
        EXPECT_EQ(find_constant(number)->current_number,
                  time_functions[static_cast<std::size_t>(number - 2)]);
    }
}

TEST(TimeFunctionTranslation, KnowsNumbers1To25) {
    std::ptrdiff_t functions = 0;
    std::ptrdiff_t unsupported = 0;
    for (std::int32_t number = 1; number <= 25; ++number) {
        const TimeFunctionRow *row = find_time_function(number);
        ASSERT_NE(row, nullptr) << number;
        functions += row->role == TimeFunctionRole::function ? 1 : 0;
        unsupported += row->role == TimeFunctionRole::unsupported ? 1 : 0;
        EXPECT_EQ(row->factor != 1, number == 5) << number;
    }
    EXPECT_EQ(functions, 16);
    EXPECT_EQ(unsupported, 7);
    for (const std::int32_t unknown : {-1, 0, 26, 50, 51})
        EXPECT_EQ(find_time_function(unknown), nullptr) << unknown;
}

TEST(TimeFunctionTranslation, SeriesJoinTheLatestFunction) {
    const auto translated = [](const std::vector<std::int32_t> &numbers) {
        TranslatedTimeFunctions all;
        for (const std::int32_t number : numbers)
            static_cast<void>(all.apply(*find_time_function(number)));
        return all;
    };
    EXPECT_EQ(translated({23, 24}).count, 0U);
    const TranslatedTimeFunctions both = translated({1, 6, 23, 24});
    ASSERT_EQ(both.count, 2U);
    EXPECT_EQ(both.functions[0].series_count, 1);
    EXPECT_EQ(both.functions[1].series_count, 3);
    EXPECT_EQ(both.functions[1].legacy_series, (std::array<std::int32_t, 3>{6, 23, 24}));
    EXPECT_EQ(translated({1, 24}).functions[0].series_count, 3);
    EXPECT_EQ(translated({1, 24}).functions[0].legacy_series[1], 0);
    EXPECT_EQ(translated({1, 24, 23}).functions[0].series_count, 2);
}

TEST(TimeFunctionTranslation, SaysWhetherARowReachedAFunction) {
    TranslatedTimeFunctions all;
    EXPECT_FALSE(all.apply(*find_time_function(23)));
    EXPECT_TRUE(all.apply(*find_time_function(1)));
    EXPECT_FALSE(all.apply(*find_time_function(2)));
    EXPECT_TRUE(all.apply(*find_time_function(23)));
}

TEST(SegmentParameterTranslation, HasItsRowsInOrder) {
    const auto &rows = segment_parameter_rows::rows;
    EXPECT_EQ(rows.size(), 34U);
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end(), [](const auto &a, const auto &b) {
        return a.legacy_number < b.legacy_number;
    }));
    EXPECT_EQ(std::count_if(rows.begin(), rows.end(),
                            [](const auto &row) { return row.class_count != nullptr; }),
              6);
    for (const SegmentParameterRow &row : rows) {
        EXPECT_EQ(row.is_one, row.parameter.number == 5) << row.name;
        EXPECT_LE(row.legacy_number, last_legacy_parameter);
        EXPECT_NE(row.legacy_number, second_water_temperature);
    }
    EXPECT_EQ(segment_parameter_rows::air_temperature_rows[0].parameter.number, 2);
    EXPECT_EQ(segment_parameter_rows::air_temperature_rows[1].parameter.number, 3);
}

TEST(SegmentParameterTranslation, OddNamesAreKept) {
    const auto name_of = [](std::int32_t legacy_number) {
        for (const SegmentParameterRow &row : segment_parameter_rows::rows)
            if (row.legacy_number == legacy_number)
                return row.name;
        return std::string_view();
    };
    EXPECT_EQ(name_of(17), "Dam  Type");
    EXPECT_EQ(name_of(18), "Tsvigolo-Wallace Escape Coefficient");
    EXPECT_EQ(name_of(27), "Settling Rate -- Phytoplankton 1");
    EXPECT_EQ(name_of(28), "Settling Rate -- Phytoplankton 2");
    EXPECT_EQ(name_of(29), "Settling Rate -- Phytoplankton 3");
    EXPECT_EQ(name_of(100), "Diagenesis Segment Attached to this Segment");
    EXPECT_EQ(segment_parameter_rows::air_temperature_rows[0].name, "Air Temp Mult");
    EXPECT_EQ(segment_parameter_rows::air_temperature_rows[1].name, "Time Function");
}

} // namespace
} // namespace kova_import::legacy
