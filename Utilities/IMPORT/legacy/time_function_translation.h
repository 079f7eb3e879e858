#pragma once

// What becomes of the time functions of a legacy file in the current model.

#include "import_export.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace kova_import::legacy {

/// Legacy time functions are numbered 1 .. 50, and a file has at most as many.
inline constexpr std::int32_t legacy_time_function_count = 50;

/// What a legacy time function is to the current model.
enum class TimeFunctionRole : std::uint8_t {
    function,      ///< a time function of its own
    second_series, ///< belongs to the function that was translated last
    third_series,  ///< likewise
    unsupported,   ///< nothing; the user is warned
};

struct TimeFunctionRow {
    std::int32_t legacy_number = 0;
    TimeFunctionRole role = TimeFunctionRole::unsupported;
    std::int32_t current_number = 0; ///< of a function
    float factor = 1;                ///< on its values
    /// Shown to the user before the function's name; empty for none.
    std::string_view message = {};
    std::int32_t import_export_data::*presence = nullptr; ///< set to 1
};

namespace time_function_rows {

/// Langleys a day in watts per square metre, as models have been converted ever since.
inline constexpr float watts_per_langley = 0.48426F;

constexpr TimeFunctionRow function(std::int32_t legacy_number, std::int32_t current_number) {
    return {legacy_number, TimeFunctionRole::function, current_number};
}
constexpr TimeFunctionRow unsupported(std::int32_t legacy_number, std::string_view message) {
    return {legacy_number, TimeFunctionRole::unsupported, 0, 1, message};
}
constexpr TimeFunctionRow series(std::int32_t legacy_number, TimeFunctionRole role) {
    return {legacy_number, role};
}

inline constexpr std::array rows = {
    function(1, 1),
    unsupported(2, "Water Temperature Time Function 2 not supported in KOVA8: "),
    unsupported(3, "Water Temperature Time Function 3 not supported in KOVA8: "),
    unsupported(4, "Water Temperature Time Function 4 not supported in KOVA8: "),
    TimeFunctionRow{5, TimeFunctionRole::function, 4, watts_per_langley,
                    "Solar Radiation Time Function Converted from Langleys to Watts/m2: ",
                    &import_export_data::tf5_present},
    function(6, 3),
    function(7, 21),
    function(8, 22),
    function(9, 8),
    TimeFunctionRow{10, TimeFunctionRole::function, 17, 1, "", &import_export_data::tf10_present},
    function(11, 2),
    unsupported(12, "Water Velocity Time Function 2 not supported in KOVA8: "),
    unsupported(13, "Water Velocity Time Function 3 not supported in KOVA8: "),
    function(14, 9),
    function(15, 10),
    function(16, 11),
    // The second ice cover has always been reported with the general text, the third by its name.
    unsupported(17, "Time Function not supported: "),
    unsupported(18, "Ice Cover Time Function 3 not supported in KOVA8: "),
    function(19, 33),
    function(20, 12),
    function(21, 14),
    function(22, 16),
    series(23, TimeFunctionRole::second_series),
    series(24, TimeFunctionRole::third_series),
    function(25, 15),
};

} // namespace time_function_rows

/// The row of a legacy number; null for numbers that mean nothing to the current model.
[[nodiscard]] constexpr const TimeFunctionRow *find_time_function(std::int32_t legacy_number) {
    const auto &rows = time_function_rows::rows;
    const auto *const row =
        std::find_if(rows.data(), rows.data() + rows.size(), [=](const TimeFunctionRow &each) {
            return each.legacy_number == legacy_number;
        });
    return row == rows.data() + rows.size() ? nullptr : row;
}

inline constexpr std::size_t most_series = 3;

/// A time function of the current model. Its series are legacy ones: the number of each, or 0 for a
/// series that no record has filled.
struct TranslatedTimeFunction {
    std::int32_t number = 0; ///< in the current model
    std::int32_t series_count = 0;
    std::array<std::int32_t, most_series> legacy_series{};
    float factor = 1; ///< on the values of the first series
};

struct TranslatedTimeFunctions {
    std::size_t count = 0;
    std::array<TranslatedTimeFunction, legacy_time_function_count> functions{};

    [[nodiscard]] std::span<const TranslatedTimeFunction> all() const {
        return std::span(functions).first(count);
    }

    /// Applies a row to what has been translated so far. Says whether it reached a function.
    constexpr bool apply(const TimeFunctionRow &row) {
        switch (row.role) {
        case TimeFunctionRole::function:
            functions[count++] = {row.current_number, 1, {row.legacy_number}, row.factor};
            return true;
        case TimeFunctionRole::second_series:
            return set_series(2, row.legacy_number);
        case TimeFunctionRole::third_series:
            return set_series(3, row.legacy_number);
        case TimeFunctionRole::unsupported:
            break;
        }
        return false;
    }

  private:
    // The series count is that of the series set last, so that a second series behind a third one
    // takes it away.
    constexpr bool set_series(std::int32_t series, std::int32_t legacy_number) {
        if (count == 0)
            return false;
        TranslatedTimeFunction &latest = functions[count - 1];
        latest.series_count = series;
        latest.legacy_series[static_cast<std::size_t>(series - 1)] = legacy_number;
        return true;
    }
};

} // namespace kova_import::legacy
