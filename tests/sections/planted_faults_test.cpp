// One fault in every number of every record, in small files of both formats: the library must name
// the place and the field exactly. A wrong place is worse than none.

#include "tests/support/import_run.h"
#include "tests/support/model_text.h"
#include "tests/support/stopped_import.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kova_test {
namespace {

using Names = std::vector<std::string>;

/// A number in a record: what it is called, and where it stands.
struct Number {
    std::string field;
    std::size_t offset; ///< in the record's text
    std::size_t width;
};

/// The fields of the free-form records, in order; texts, which cannot be wrong, have no name.
const std::map<std::string, Names> list_fields = {
    {"start of the simulation",
     {"start month", "start day", "start year", "start hour", "start minute", "start second"}},
    {"hydrodynamic skip date",
     {"skip month", "skip day", "skip year", "skip hour", "skip minute", "skip second"}},
    {"simulation length", {"simulation length"}},
    {"system count", {"system count"}},
    {"option behind the system count", {"option behind the system count"}},
    {"solution type", {"solution type"}},
    {"negative-solution option", {"negative-solution option"}},
    {"ICRD option", {"ICRD option"}},
    {"INTYP option", {"INTYP option"}},
    {"option behind INTYP", {"option behind INTYP"}},
    {"fraction of the maximum time step", {"fraction of the maximum time step"}},
    {"time-step limits", {"minimum time step", "maximum time step"}},
    {"output-interval count", {"output-interval count"}},
    {"bypass flags", {"bypass flag", "bypass flag", "bypass flag"}},
    {"count of the first skipped block", {"count of the first skipped block"}},
    {"count of the second skipped block", {"count of the second skipped block"}},
    {"segment count", {"segment count"}},
    {"bed-volume option", {"bed-volume option"}},
    {"bed time step", {"bed time step"}},
    {"volume factors", {"volume scale factor", "volume conversion factor"}},
    {"flow-field count", {"flow-field count"}},
    {"function count of the flow field", {"function count of the flow field"}},
    {"pair count of the flow function", {"pair count of the flow function"}},
    {"flow pair", {"first segment", "second segment", "routing fraction"}},
    {"factors of the field", {"scale factor", "conversion factor"}},
    {"breakpoint count of the flow function", {"breakpoint count of the flow function"}},
    {"breakpoint of the flow function", {"first value", "second value"}},
    {"exchange-field count", {"exchange-field count"}},
    {"function count of the exchange field", {"function count of the exchange field"}},
    {"pair count of the exchange function", {"pair count of the exchange function"}},
    {"exchange pair", {"first segment", "second segment", "interfacial area", "mixing length"}},
    {"breakpoint count of the exchange function", {"breakpoint count of the exchange function"}},
    {"breakpoint of the exchange function", {"value", "time"}},
    {"boundary count", {"boundary count"}},
    {"boundary segment", {"boundary segment"}},
    {"breakpoint count of the boundary", {"breakpoint count of the boundary"}},
    {"breakpoint of the boundary", {"value", "time"}},
    {"load option", {"load option"}},
    {"load count", {"load count"}},
    {"factors of the loads", {"first factor", "second factor"}},
    {"load segment", {"load segment"}},
    {"breakpoint count of the load", {"breakpoint count of the load"}},
    {"breakpoint of the load", {"value", "time"}},
    {"time-function count", {"time-function count"}},
    {"number of the time function", {"number of the time function"}},
    {"breakpoint count of the time function", {"breakpoint count of the time function"}},
    {"breakpoint of the time function", {"time", "value"}},
    {"segment-parameter count", {"segment-parameter count"}},
    {"segment of the parameter values", {"segment of the parameter values"}},
    {"constant count", {"constant count"}},
    {"flow field of the system", {"flow field of the system"}},
    {"density of the system", {"density of the system"}},
    {"maximum concentration of the system", {"maximum concentration of the system"}},
    {"initial condition", {"segment number", "initial concentration", "dissolved fraction"}},
};

/// Those whose records are free-form in one format only.
const std::map<std::string, Names> legacy_list_fields = {
    {"output interval", {"time", "output interval"}},
    {"segment name", {"segment number", ""}},
    {"flow option", {"flow option"}},
    {"segment parameter", {"parameter number", "scale factor"}},
    {"value of the segment parameter", {"parameter number", "value"}},
    {"constant", {"constant number", "value"}},
    {"segment geometry",
     {"segment number", "bottom segment", "segment type", "volume", "velocity multiplier",
      "velocity exponent", "depth multiplier", "depth exponent", "length", "slope", "width",
      "roughness", "minimum depth"}},
};
const std::map<std::string, Names> current_list_fields = {
    {"output interval", {"output interval"}},
};

/// The numbers in columns that the current format has in the place of lists.
const std::map<std::string, std::vector<Number>> current_columns = {
    {"segment name", {{"segment number", 0, 5}}},
    {"segment parameter", {{"parameter number", 7, 5}, {"class", 23, 3}, {"scale factor", 34, 10}}},
    {"value of the segment parameter",
     {{"parameter number", 11, 5}, {"class", 32, 3}, {"value", 54, 10}}},
    {"constant", {{"constant number", 7, 5}, {"column", 23, 5}, {"value", 46, 10}}},
};

const Names current_geometry_fields = {"segment number",
                                       "bottom segment",
                                       "segment type",
                                       "hydraulic option",
                                       "volume",
                                       "velocity multiplier",
                                       "velocity exponent",
                                       "depth multiplier",
                                       "depth exponent",
                                       "length",
                                       "slope",
                                       "width",
                                       "roughness",
                                       "minimum depth",
                                       "initial surface elevation",
                                       "bottom elevation",
                                       "side slope",
                                       "initial depth",
                                       "weir height",
                                       "weir type"};

std::vector<Number> blank_separated(const std::string &text, const Names &names) {
    std::vector<Number> numbers;
    std::size_t start = 0;
    for (const std::string &name : names) {
        start = text.find_first_not_of(' ', start);
        const std::size_t end = std::min(text.find(' ', start), text.size());
        if (!name.empty())
            numbers.push_back({name, start, end - start});
        start = end;
    }
    return numbers;
}

/// The numbers of a record, by its format; none for captions, texts and what nobody reads.
std::vector<Number> numbers_of(const Record &record, bool current) {
    if (record.name == "header")
        return {{"model type", 0, 5}, {"file version", 10, 2}};
    if (record.name == "factors of the boundaries")
        return {{"scale factor", 0, 10}, {"conversion factor", 10, 10}};
    if (const auto found = current_columns.find(record.name);
        current && found != current_columns.end())
        return found->second;
    if (current && record.name == "segment geometry") {
        std::vector<Number> numbers;
        for (std::size_t i = 0; i < current_geometry_fields.size(); ++i)
            numbers.push_back(
                {current_geometry_fields[i], i < 4 ? i * 5 : 20 + (i - 4) * 15, i < 4 ? 5U : 15U});
        return numbers;
    }
    for (const auto *fields : {&list_fields, current ? &current_list_fields : &legacy_list_fields})
        if (const auto found = fields->find(record.name); found != fields->end())
            return blank_separated(record.text, found->second);
    return {};
}

/// Makes a number bad and expects the library to say exactly that, and to send nothing of the
/// section.
void expect_place(const ImportRun &complete, const Records &records, std::size_t position,
                  const Number &number, bool current) {
    Records broken = records;
    std::string &text = broken[position].text;
    // the first column that the mark must stand under, and the column of the fault
    const std::size_t content = text.find_first_not_of(' ', number.offset);
    text[number.offset + number.width - 1] = '?';
    const ImportRun run = import_text(text_of(broken));
    const std::string context = records[position].name + ", " + number.field;
    ASSERT_EQ(run.notices_of(IMPORT_EXPORT_READ_FAILED).size(), 1U) << context;
    const Notice notice = run.notices_of(IMPORT_EXPORT_READ_FAILED)[0];
    EXPECT_EQ(notice.kind, IMPORT_EXPORT_READ_FAILED) << context;
    EXPECT_EQ(notice.statement, records[position].name) << context;
    // the driver meets the header first, and does not count it
    EXPECT_EQ(notice.statement_number, position == 0 ? 1 : static_cast<std::int64_t>(position + 2))
        << context;
    EXPECT_EQ(notice.field, number.field) << context;
    EXPECT_EQ(notice.line, static_cast<std::int64_t>(position + 1)) << context;
    EXPECT_EQ(notice.column, static_cast<std::int64_t>(content + 1)) << context;
    EXPECT_EQ(notice.width, static_cast<std::int64_t>(number.offset + number.width - content))
        << context;
    EXPECT_EQ(notice.found, text.substr(content, number.offset + number.width - content))
        << context;
    // long lines are shown from a little before the field on
    EXPECT_EQ(notice.line_text, text.substr(static_cast<std::size_t>(notice.line_text_column - 1)))
        << context;
    EXPECT_LE(notice.line_text_column, notice.column) << context;
    EXPECT_EQ(IMPORT_EXPORT.import_error, notice.section == 0 ? 0 : 1) << context;
    if (position != 0) {
        expect_stopped(complete.log, run.log, notice.section, current, context);
        EXPECT_EQ(run.console.back(),
                  "Error Reading Import File at Line: " + std::to_string(position + 2))
            << context;
        // the same number goes to the information pane, where the section shows it
        const std::vector<std::string> formatted = run.arguments_of("GSPRINTFI");
        const std::string counter = "int " + std::to_string(position + 2);
        EXPECT_TRUE(!current || notice.section_name == "flow paths" ||
                    (!formatted.empty() && formatted.back().ends_with(counter)))
            << context;
    }
}

std::size_t plant_everywhere(const Records &records, bool current) {
    const ImportRun complete = import_text(text_of(records));
    EXPECT_TRUE(complete.notices_of(IMPORT_EXPORT_READ_FAILED).empty());
    std::size_t planted = 0;
    for (std::size_t i = 0; i < records.size(); ++i) {
        for (const Number &number : numbers_of(records[i], current)) {
            expect_place(complete, records, i, number, current);
            ++planted;
        }
    }
    return planted;
}

// The numbers of what both models have alike.
// field count, function counts 2, pair counts 2, three pairs of 3
constexpr std::size_t flow_paths = 1 + 2 + 2 + 9;
// field count, function counts 2, factors 2, breakpoint counts 2, three breakpoints of 2
constexpr std::size_t flow_series = 1 + 2 + 2 + 2 + 6;
// field count, function counts 2, factors 2, pair count, one pair of 4, breakpoint count, two
// breakpoints of 2
constexpr std::size_t exchanges = 1 + 2 + 2 + 1 + 4 + 1 + 4;
// system count, boundary counts 2, factors 2, two segments with their counts, three breakpoints
// of 2
constexpr std::size_t boundaries = 1 + 2 + 2 + 4 + 6;
// option, system count, load counts 2, factors 4, two segments with their counts, three
// breakpoints of 2
constexpr std::size_t loads = 1 + 1 + 2 + 4 + 4 + 6;
// count, numbers and breakpoint counts of two functions, three breakpoints of 2
constexpr std::size_t time_functions = 1 + 2 + 2 + 6;
// two counts, three values of two systems, four records of 3
constexpr std::size_t initial_conditions = 2 + 6 + 12;

TEST(PlantedFaults, AreNamedExactlyInTheLegacyFormat) {
    // header 2, dates 12, single numbers 9, time steps 2, intervals 1 + 2 * 2, flags 3, scratch
    // counts 2, segments 5 + 2 + 2 * 13
    constexpr std::size_t opening = 2 + 12 + 9 + 2 + 5 + 3 + 2 + 5 + 2 + 26;
    constexpr std::size_t flow_option = 1;
    // boundaries and loads of the third system, each a count
    constexpr std::size_t third_system = 2;
    // two counts, two parameters of 2, two segments with two values of 2
    constexpr std::size_t segment_parameters = 2 + 4 + 2 + 8;
    // count, two constants of 2
    constexpr std::size_t constants = 1 + 4;
    EXPECT_EQ(plant_everywhere(legacy_records(), false),
              opening + flow_option + flow_paths + flow_series + exchanges + boundaries + loads +
                  third_system + time_functions + segment_parameters + constants +
                  initial_conditions);
}

TEST(PlantedFaults, AreNamedExactlyInTheCurrentFormat) {
    // header 2, dates 12, single numbers 9, time steps 2, interval 1, segments 5 + 2 + 2 * 20
    constexpr std::size_t opening = 2 + 12 + 9 + 2 + 1 + 5 + 2 + 40;
    // two counts, two parameters of 3, two segments with two values of 3
    constexpr std::size_t segment_parameters = 2 + 6 + 2 + 12;
    // count, two constants of 3
    constexpr std::size_t constants = 1 + 6;
    EXPECT_EQ(plant_everywhere(current_records(), true),
              opening + flow_paths + flow_series + exchanges + boundaries + loads + time_functions +
                  segment_parameters + constants + initial_conditions);
}

/// Whether the record is one text that the library reads as a list, and that nobody uses.
bool is_heading(const Record &record, bool current) {
    if (!current)
        return record.name == "heading of the exchange field" ||
               record.name == "heading of the loads";
    return (record.name.starts_with("heading of ") && record.name != "heading of the boundaries") ||
           record.name.ends_with(" heading") || record.name == "title";
}

// The first title of the current format is in nobody's way, whatever it is.
TEST(PlantedFaults, AQuoteWithoutAnEndIsNamedExactlyInEveryHeading) {
    for (const bool current : {false, true}) {
        const Records records = current ? current_records() : legacy_records();
        const ImportRun complete = import_text(text_of(records));
        std::size_t planted = 0;
        for (std::size_t i = 2; i < records.size(); ++i) {
            if (!is_heading(records[i], current))
                continue;
            ++planted;
            Records broken = records;
            broken[i].text = "  \"A river's flows";
            const ImportRun run = import_text(text_of(broken));
            const std::string context = records[i].name + " " + std::to_string(i);
            const auto failures = run.notices_of(IMPORT_EXPORT_READ_FAILED);
            ASSERT_EQ(failures.size(), 1U) << context;
            EXPECT_EQ(failures[0].statement, records[i].name);
            EXPECT_EQ(failures[0].line, static_cast<std::int64_t>(i + 1)) << context;
            EXPECT_EQ(failures[0].column, 3) << context;
            EXPECT_EQ(failures[0].reason, "The quoted text that starts here has no end.");
            EXPECT_EQ(run.console.back(),
                      "Error Reading Import File at Line: " + std::to_string(i + 2));
            expect_stopped(complete.log, run.log, failures[0].section, current, context);
        }
        // exchange fields 2, loads 2, or 3 in the legacy model; of the current sections behind the
        // first the segments 1, flow paths 2, flow series 1, exchanges to constants 6, and the
        // segment parameters 2 more, initial conditions 1
        EXPECT_EQ(planted, current ? 2U + 2U + 1U + 2U + 1U + 6U + 2U + 1U : 2U + 3U);
    }
}

} // namespace
} // namespace kova_test
