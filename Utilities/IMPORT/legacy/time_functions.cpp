#include "control/sections/time_functions.h"

#include "control/chunked_list.h"
#include "control/fixed_text.h"
#include "control/notices.h"
#include "control/report.h"
#include "control/sections/model_parameters.h"
#include "legacy/sections.h"
#include "legacy/time_function_translation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace kova_import::legacy {

namespace {

struct LegacyTimeFunction {
    std::int32_t number = 0;
    FixedText<30> name;
    RecordPlace place; ///< of its name
    std::int32_t breakpoint_count = 0;
    bool replaces = false; ///< its record wrote over breakpoints of an earlier one
};

/// The breakpoints of a legacy number. A record that bears the number again writes over them, and
/// what it leaves out stays.
struct LegacySeries {
    std::int32_t breakpoint_count = 0;
    Breakpoints breakpoints; ///< time (days), value
};

struct LegacyTimeFunctionTable {
    std::int32_t count = 0;
    std::array<LegacyTimeFunction, legacy_time_function_count>
        functions;                                               ///< in the order of the file
    std::array<LegacySeries, legacy_time_function_count> series; ///< by legacy number

    [[nodiscard]] std::span<const LegacyTimeFunction> in_file() const {
        return std::span(functions).first(static_cast<std::size_t>(std::max(count, 0)));
    }
};

bool is_legacy_number(std::int32_t number) {
    return number >= 1 && number <= legacy_time_function_count;
}

std::size_t row_of(std::int32_t number) { return static_cast<std::size_t>(number - 1); }

void give(const ImportModule &module, const LegacyTimeFunction &function,
          import_export_notice_kind kind, const char *reason) {
    give_named(module, function.place, kind, reason, function.number, function.name.trimmed());
}

/// Says whether another breakpoint stood in the place.
bool read_breakpoint(RecordReader &reader, std::size_t row, Breakpoints &breakpoints) {
    const bool is_there = row < breakpoints.size();
    const Breakpoint before = is_there ? breakpoints[row] : Breakpoint{};
    Breakpoint breakpoint = before;
    reader.list("breakpoint of the time function", fields_of(breakpoint, time_and_value));
    if (!reader.ok())
        return false;
    if (!is_there) {
        breakpoints.push_back(breakpoint);
        return false;
    }
    breakpoints[row] = breakpoint;
    return breakpoint.first != before.first || breakpoint.second != before.second;
}

/// Says whether breakpoints of an earlier record were written over, or left behind the end.
bool read_series(RecordReader &reader, LegacySeries &series) {
    const std::int32_t count_before = series.breakpoint_count;
    reader.list("breakpoint count of the time function",
                field("breakpoint count of the time function", series.breakpoint_count));
    bool replaces = series.breakpoint_count < count_before;
    reader.for_each_record(series.breakpoint_count, [&](std::int32_t place) {
        replaces |= read_breakpoint(reader, row_of(place), series.breakpoints);
    });
    return replaces;
}

void read_time_function(ImportModule &module, LegacyTimeFunction &function,
                        LegacyTimeFunctionTable &table) {
    RecordReader &reader = module.reader;
    reader.list("number of the time function",
                field("number of the time function", function.number));
    reader.list("name of the time function", field("name", function.name));
    function.place = reader.last_record();
    if (is_awaited(module) && reader.text_was_cut() && find_time_function(function.number))
        give(module, function, IMPORT_EXPORT_CUT, "The name is cut at 30 characters.");
    // Numbers that no legacy model has are checked like others and let go.
    LegacySeries of_nobody;
    LegacySeries &series =
        is_legacy_number(function.number) ? table.series[row_of(function.number)] : of_nobody;
    function.replaces = read_series(reader, series);
    function.breakpoint_count = series.breakpoint_count;
}

void read_time_functions(ImportModule &module, LegacyTimeFunctionTable &table) {
    RecordReader &reader = module.reader;
    reader.list("time-function count", bounded_field("time-function count", table.count,
                                                     {.largest = legacy_time_function_count,
                                                      .expected = "at most 50 time functions"}));
    reader.for_each_record(table.count, [&](std::int32_t place) {
        read_time_function(module, table.functions[row_of(place)], table);
    });
}

void send_message(std::string_view message, const FixedText<30> &name) {
    send<"PINFOHTML">("<li><span style=\"font-weight: bold; color: Red;\">");
    FixedText<132> text;
    text.assign({message, name.view(), "</span></li>"});
    send<"PINFOHTML">(TerminatedText{text});
}

// Tells what the current model does not get of a function, or gets changed.
void give_translation(const ImportModule &module, const LegacyTimeFunction &function,
                      const TimeFunctionRow *row, bool reached) {
    if (row == nullptr)
        give(module, function, IMPORT_EXPORT_NOT_IMPORTED,
             "The current model has no such time function.");
    else if (row->role == TimeFunctionRole::unsupported)
        give(module, function, IMPORT_EXPORT_NOT_IMPORTED,
             "The current model does not support the time function.");
    else if (!reached)
        give(module, function, IMPORT_EXPORT_NOT_IMPORTED,
             "The series belongs to the time function before it, and there is none.");
    else if (row->factor != 1)
        give(module, function, IMPORT_EXPORT_CONVERTED,
             "Solar radiation comes across in watts per square metre instead of Langleys.");
}

// Tells of functions whose breakpoints a later record of the same number has written over.
void give_replaced(const ImportModule &module, const LegacyTimeFunctionTable &table) {
    std::array<const LegacyTimeFunction *, legacy_time_function_count> latest{};
    for (const LegacyTimeFunction &function : table.in_file()) {
        const TimeFunctionRow *const row = find_time_function(function.number);
        if (row == nullptr || row->role == TimeFunctionRole::unsupported)
            continue;
        const LegacyTimeFunction *&before = latest[row_of(function.number)];
        if (before != nullptr && function.replaces)
            give(module, *before, IMPORT_EXPORT_REPLACED,
                 "A later record of the same number replaces the breakpoints.");
        before = &function;
    }
}

// Tells of series that are declared and empty, and of those that a later one has taken away.
void give_odd_series(const ImportModule &module, const LegacyTimeFunctionTable &table,
                     const TranslatedTimeFunctions &translated) {
    for (const TranslatedTimeFunction &function : translated.all()) {
        const auto &[first, second, third] = function.legacy_series;
        if (function.series_count == 3 && second == 0)
            give_reason_of_send(module, IMPORT_EXPORT_PLACEHOLDER,
                                "The time function has a third series; the host gets an empty "
                                "second one before it.",
                                function.number);
        if (function.series_count == 3 || third == 0)
            continue;
        for (const LegacyTimeFunction &record : table.in_file())
            if (record.number == third)
                give(module, record, IMPORT_EXPORT_NOT_IMPORTED,
                     "A second series behind this third one takes it away.");
    }
}

void give_other_model(const ImportModule &module, const LegacyTimeFunctionTable &table) {
    for (const LegacyTimeFunction &function : table.in_file())
        give(module, function, IMPORT_EXPORT_CONDITION_UNMET,
             "Only time functions of eutrophication models (type 11) come across.");
}

// Translates the functions in the order of the file. What the user is told of them goes to the host
// at once.
TranslatedTimeFunctions translate(ImportModule &module, const LegacyTimeFunctionTable &table) {
    TranslatedTimeFunctions translated;
    for (const LegacyTimeFunction &function : table.in_file()) {
        const TimeFunctionRow *const row = find_time_function(function.number);
        const bool reached = row != nullptr && translated.apply(*row);
        give_translation(module, function, row, reached);
        if (row == nullptr)
            continue;
        if (row->presence != nullptr)
            module.shared.*row->presence = 1;
        if (!row->message.empty())
            send_message(row->message, function.name);
    }
    give_replaced(module, table);
    give_odd_series(module, table, translated);
    return translated;
}

void send_table_head() {
    send<"PINFOHTML">("<body><center><table style=\"text-align: left; height: 95px; width: ");
    send<"PINFOHTML">("436px; \"border=\"1\" cellpadding=\"2\" cellspacing=\"2\"><tbody>");
    send<"PINFOHTML">("<tr style=\"font-weight: bold;\" align=\"center\"> <td style=");
    send<"PINFOHTML">("\"width: 116px;\" colspan=\"4\" rowspan=\"1\"><big>Time Functions</big>");
    send<"PINFOHTML">("</td></tr><tr><td style=\"font-weight: bold; text-align: center; ");
    send<"PINFOHTML">("color: rgb(0, 0, 153); width: 183px;\">Time Function</td>");
    send<"PINFOHTML">("<td style=\"font-weight: bold; text-align: center; color: rgb(0, 0, 153);");
    send<"PINFOHTML">("width: 78px;\">Index</td><td style=\"font-weight: bold; text-align:");
    send<"PINFOHTML">(" center; color: rgb(0, 0, 153); width: 136px;\">Num Data Points</td>");
    send<"PINFOHTML">("<td style=\"font-weight: bold; text-align: center; color: rgb(0, 0, 153);");
    send<"PINFOHTML">(" width: 116px;\">Average</td></tr>");
}

void send_table_row(const FixedText<30> &name, std::int32_t number, std::int32_t breakpoint_count,
                    float average) {
    send<"PINFOHTML">("<tr><td style=\"text-align: center; width: 183px;\">");
    send<"PINFOHTML">(TerminatedText{name});
    send<"PINFOHTML">("</td><td style=\"text-align: center; width: 78px;\">");
    send_cell(number);
    send<"PINFOHTML">("</td><td style=\"text-align: center; width: 136px;\"> ");
    send_cell(breakpoint_count);
    send<"PINFOHTML">("</td><td style=\"text-align: center; width: 116px;\">");
    send_cell(average, "%f");
    send<"PINFOHTML">("</td></tr>");
}

/// Sends a series and returns the sum of its values.
float send_series(const TranslatedTimeFunction &function, std::int32_t series,
                  const LegacySeries &legacy) {
    const float factor = series == 1 ? function.factor : 1.0F;
    float sum = 0;
    RowWalk breakpoints(legacy.breakpoints);
    send_time_function_series(function.number, series, legacy.breakpoint_count, [&] {
        Breakpoint breakpoint = breakpoints.next();
        breakpoint.second *= factor;
        sum += breakpoint.second;
        return breakpoint;
    });
    return sum;
}

void send_time_functions(const ImportModule &module, const LegacyTimeFunctionTable &table,
                         const TranslatedTimeFunctions &translated) {
    const LegacySeries nothing;
    const auto has_tables = [&module] { return module.shared.report_tables != 0; };
    if (has_tables())
        send_table_head();
    else
        send_report_line("Importing Time Function Information</span></li>");
    std::size_t row = 0;
    for (const TranslatedTimeFunction &function : translated.all()) {
        const FixedText<30> &name = table.functions[row++].name;
        for_each_number(function.series_count, [&](std::int32_t series) {
            const std::int32_t legacy_number = function.legacy_series[row_of(series)];
            const LegacySeries &legacy =
                legacy_number == 0 ? nothing : table.series[row_of(legacy_number)];
            const float sum = send_series(function, series, legacy);
            const float average = sum / static_cast<float>(legacy.breakpoint_count);
            // The name is that of the record in the same place, whatever became of the records
            // before it.
            if (has_tables())
                send_table_row(name, function.number, legacy.breakpoint_count, average);
        });
    }
    if (has_tables())
        send<"PINFOHTML">("</tbody></table><br></center></body>");
}

} // namespace

void timefunctions(ImportModule &module) {
    LegacyTimeFunctionTable table;
    read_time_functions(module, table);
    if (!module.reader.ok())
        return;
    if (module.shared.transport_only == 0) {
        TranslatedTimeFunctions translated;
        if (module.shared.model_type == eutrophication)
            translated = translate(module, table);
        else
            give_other_model(module, table);
        send_time_functions(module, table, translated);
    }
    send<"PTFSREFRESH">();
}

} // namespace kova_import::legacy
