#include "cli/json_output.h"
#include "cli/model_json.h"

#include "outcomes.h"

#include <gtest/gtest.h>
#include <limits>

namespace kova_command {
namespace {

/// The data of the small model, as a program reads them.
Json data_of(const kova_host::Model &model) {
    return Json::parse(import_json(outcome_with(Verdict::imported), &model))["data"];
}

TEST(ModelJson, HasTheFlowPaths) {
    EXPECT_EQ(data_of(small_model())["flow_paths"], Json::parse(R"({
        "flow_options": [3, 3],
        "hydrodynamic_file": "river.hyd",
        "field_count": 2,
        "fields": [
            {"function_count": 1,
             "functions": [
                {"description": "Creek",
                 "pair_count": 2,
                 "pairs": [
                    {"first_segment": 0, "second_segment": 1, "routing_fraction": 1.0},
                    {"first_segment": 1, "second_segment": 2, "routing_fraction": 0.75}]}]},
            {"function_count": 0, "functions": []}]})"));
}

TEST(ModelJson, HasTheFlowTimeSeries) {
    EXPECT_EQ(data_of(small_model())["flow_time_series"], Json::parse(R"({
        "field_count": 2,
        "fields": [
            {"function_count": 1, "scale_factor": 0.1, "conversion_factor": 2.5,
             "functions": [
                {"breakpoint_count": 3,
                 "first_values": [10.0, 11.0, 12.0],
                 "second_values": [0.0, 1.0, 2.5]}]},
            {"function_count": 0, "scale_factor": 0.0, "conversion_factor": 0.0,
             "functions": []}]})"));
}

TEST(ModelJson, HasTheExchanges) {
    EXPECT_EQ(data_of(small_model())["exchanges"], Json::parse(R"({
        "field_count": 3,
        "fields": [
            {"function_count": 1, "scale_factor": 0.2, "conversion_factor": 3.5,
             "functions": [
                {"description": "Wind",
                 "pair_count": 1,
                 "pairs": [
                    {"first_segment": 1, "second_segment": 2,
                     "interfacial_area": 40.5, "mixing_length": 50.25}],
                 "breakpoint_count": 2,
                 "times": [0.0, 365.0],
                 "values": [1e-9, 2e-9]}]}]})"));
}

TEST(ModelJson, HasTheBoundaries) {
    EXPECT_EQ(data_of(small_model())["boundary_conditions"], Json::parse(R"({
        "systems": [
            {"name": "Salinity", "boundary_count": 2, "scale_factor": 1.25,
             "boundaries": [
                {"segment": 1, "breakpoint_count": 2, "times": [0.0, 365.0],
                 "values": [30.0, 31.0]},
                {"segment": 2, "breakpoint_count": 1, "times": [0.0], "values": [32.0]}]},
            {"name": "Ammonia", "boundary_count": 0, "scale_factor": 0.0,
             "boundaries": []}]})"));
}

TEST(ModelJson, HasTheLoadsAndTellsPlaceholders) {
    EXPECT_EQ(data_of(small_model())["loads"], Json::parse(R"({
        "load_option": 1,
        "non_point_source_file": "runoff°.nps",
        "systems": [
            {"name": "Salinity", "conversion_factor": 4.5,
             "scale_factor_without_loads": null, "conversion_factor_without_loads": null,
             "loads": [
                {"segment": 2, "placeholder": false, "replaced": 2, "breakpoint_count": 3,
                 "times": [0.0, 100.0, 365.0], "values": [7.0, 8.0, 9.0]}]},
            {"name": "Ammonia", "conversion_factor": 0.0,
             "scale_factor_without_loads": 0.0, "conversion_factor_without_loads": 0.0,
             "loads": [
                {"segment": 1, "placeholder": true, "replaced": 0, "breakpoint_count": 2,
                 "times": [0.0, 0.0], "values": [0.0, 0.0]}]}]})"));
}

TEST(ModelJson, HasTheTimeFunctions) {
    EXPECT_EQ(data_of(small_model())["environmental_time_functions"], Json::parse(R"({
        "functions": [
            {"number": 17,
             "series": [
                {"breakpoint_count": 2, "times": [0.0, 365.0], "values": [5.5, 6.5]},
                {"breakpoint_count": 1, "times": [0.0], "values": [7.5]}]}]})"));
}

TEST(ModelJson, HasTheSegmentParameters) {
    EXPECT_EQ(data_of(small_model())["segment_parameters"], Json::parse(R"({
        "parameters": [
            {"number": 41, "class_index": 1, "scale_factor": 2.5, "values": [0.25, 0.5]},
            {"number": 3, "class_index": 2, "scale_factor": 1.0, "values": [1.0, 2.0, 3.0]}]})"));
}

TEST(ModelJson, HasTheConstantsAndThoseThatAreTimeFunctions) {
    EXPECT_EQ(data_of(small_model())["kinetic_constants"], Json::parse(R"({
        "constants": [
            {"number": 64, "column": 1, "value": 0.125, "used": 1},
            {"number": 64, "column": 2, "value": 0.375, "used": 1},
            {"number": 5, "column": 1, "value": 8.0, "used": 0}],
        "time_functions": [
            {"number": 37,
             "series": [
                {"breakpoint_count": 2, "times": [0.0, 365.0], "values": [15.0, 15.0]}]}]})"));
}

TEST(ModelJson, HasTheInitialConditions) {
    EXPECT_EQ(data_of(small_model())["initial_conditions"], Json::parse(R"({
        "systems": [
            {"name": "Salinity", "maximum_concentration": 1e8, "density": 1.5, "flow_field": 3,
             "concentrations": [33.5, 34.5], "dissolved_fractions": [1.0, 0.75]},
            {"name": "Ammonia", "maximum_concentration": 0.0, "density": 0.0, "flow_field": 0,
             "concentrations": [], "dissolved_fractions": []}]})"));
}

TEST(ModelJson, AnEmptyModelHasEmptyLists) {
    EXPECT_EQ(data_of({}), Json::parse(R"({
        "flow_paths": {"flow_options": [], "hydrodynamic_file": null, "field_count": 0,
                       "fields": []},
        "flow_time_series": {"field_count": 0, "fields": []},
        "exchanges": {"field_count": 0, "fields": []},
        "boundary_conditions": {"systems": []},
        "loads": {"load_option": 0, "non_point_source_file": null, "systems": []},
        "environmental_time_functions": {"functions": []},
        "segment_parameters": {"parameters": []},
        "kinetic_constants": {"constants": [], "time_functions": []},
        "initial_conditions": {"systems": []}})"));
}

TEST(ModelJson, HasOnlySectionsThatWereImported) {
    for (const SectionStatus status :
         {SectionStatus::left_out, SectionStatus::failed, SectionStatus::not_reached}) {
        ImportOutcome outcome = outcome_with(Verdict::imported);
        for (SectionOutcome &section : outcome.sections)
            section.status = status;
        outcome.sections[4].status = SectionStatus::imported;
        const kova_host::Model model = small_model();
        const Json data = Json::parse(import_json(outcome, &model))["data"];
        ASSERT_EQ(data.size(), 9U);
        for (const auto &[name, value] : data.items())
            EXPECT_EQ(value.is_null(), name != "exchanges") << name;
    }
}

TEST(ModelJson, HasNegativeCountsAsTheyWereSent) {
    kova_host::Model model = small_model();
    model.exchange_field_count = -2;
    model.systems[0].loads[0].breakpoint_count = -3;
    const Json data = data_of(model);
    EXPECT_EQ(data["exchanges"]["field_count"], -2);
    EXPECT_EQ(data["loads"]["systems"][0]["loads"][0]["breakpoint_count"], -3);
}

TEST(ModelJson, NumbersAreThoseThatPeopleWrite) {
    EXPECT_EQ(number_json(0.1F).dump(), "0.1");
    EXPECT_EQ(number_json(-0.0F).dump(), "-0.0");
    EXPECT_EQ(number_json(std::numeric_limits<float>::max()).get<double>(), 3.4028235e38);
    EXPECT_EQ(number_json(std::numeric_limits<float>::denorm_min()).get<double>(), 1e-45);
    EXPECT_TRUE(number_json(std::numeric_limits<float>::infinity()).is_null());
    EXPECT_TRUE(number_json(std::numeric_limits<float>::quiet_NaN()).is_null());
}

TEST(ModelJson, TextsHaveNoControlCharacters) {
    kova_host::Model model = small_model();
    model.flow_fields[0].functions[0].description = "\x1B[31m\x7F\xC2\x9B";
    const std::string json = import_json(outcome_with(Verdict::imported), &model);
    EXPECT_NE(json.find("\"\\u001b[31m\\u007f\\u009b\""), std::string::npos);
}

} // namespace
} // namespace kova_command
