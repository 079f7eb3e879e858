#include "host_test.h"

#include <functional>
#include <limits>

namespace {

using namespace host_test;
using namespace std::string_literals;
using kova_host::Model;

struct ModelTest : HostTest {
    const Model &model = host.model();
};

TEST_F(ModelTest, KeepsTheSettings) {
    send("PFILENAME", terminated_field("river.KIF\0junk"s, 513));
    send("PMODELTYPE", 11);
    send("PSEEDDATE", 1, 2, 1999);
    send("PSEEDTIME", 3, 4, 5);
    send("PHYDSKIPDATE", 6, 7, 2001);
    send("PHYDSKIPTIME", 8, 9, 10);
    send("PENDJULIAN", 365.5F);
    send("PSOLUTIONTYPE", 1);
    send("PNEGSLN", 2);
    send("PICRD", 3);
    send("PINTYP", 4);
    send("PFRACMAXTS", 0.9F);
    send("PMAXDT", 0.5F);
    send("PMINDT", 0.25F);
    send("PMODELOUTPUTINTERVAL", 0.125F);
    send("PBEDOPT", 5);
    send("PBEDDT", 6.5F);
    send("PSCALV", 7.5F);
    send("PCONVV", 8.5F);
    send("PHYDROFILE", field("flow.hyd", 512));
    send("PLOPT", 6);
    send("PNPSFILE", field("runoff.nps", 512));
    const auto &settings = model.settings;
    EXPECT_EQ(settings.file_name, "river.KIF");
    EXPECT_EQ(settings.model_type, 11);
    EXPECT_EQ(settings.start_date.month, 1);
    EXPECT_EQ(settings.start_date.day, 2);
    EXPECT_EQ(settings.start_date.year, 1999);
    EXPECT_EQ(settings.start_time.hour, 3);
    EXPECT_EQ(settings.start_time.minute, 4);
    EXPECT_EQ(settings.start_time.second, 5);
    EXPECT_EQ(settings.hydrodynamic_skip_date.month, 6);
    EXPECT_EQ(settings.hydrodynamic_skip_date.year, 2001);
    EXPECT_EQ(settings.hydrodynamic_skip_time.hour, 8);
    EXPECT_EQ(settings.hydrodynamic_skip_time.second, 10);
    EXPECT_EQ(settings.simulation_length, 365.5F);
    EXPECT_EQ(settings.solution_type, 1);
    EXPECT_EQ(settings.negative_solution_option, 2);
    EXPECT_EQ(settings.icrd_option, 3);
    EXPECT_EQ(settings.intyp_option, 4);
    EXPECT_EQ(settings.maximum_time_step_fraction, 0.9F);
    EXPECT_EQ(settings.maximum_time_step, 0.5F);
    EXPECT_EQ(settings.minimum_time_step, 0.25F);
    EXPECT_EQ(settings.output_interval, 0.125F);
    EXPECT_EQ(settings.bed_volume_option, 5);
    EXPECT_EQ(settings.bed_volume_time_step, 6.5F);
    EXPECT_EQ(settings.volume_scale_factor, 7.5F);
    EXPECT_EQ(settings.volume_conversion_factor, 8.5F);
    EXPECT_EQ(settings.hydrodynamic_file, "flow.hyd");
    EXPECT_EQ(settings.load_option, 6);
    EXPECT_EQ(settings.non_point_source_file, "runoff.nps");
}

TEST_F(ModelTest, KeepsTheSegments) {
    using kova_host::Segment;
    const std::vector<std::pair<std::string_view, float Segment::*>> reals = {
        {"PVOLUME", &Segment::volume},
        {"PVMULT", &Segment::velocity_multiplier},
        {"PVEXP", &Segment::velocity_exponent},
        {"PDMULT", &Segment::depth_multiplier},
        {"PDEXP", &Segment::depth_exponent},
        {"PSEGLENGTH", &Segment::length},
        {"PSEGSLOPE", &Segment::slope},
        {"PSEGWIDTH", &Segment::width},
        {"PSEGROUGH", &Segment::roughness},
        {"PSEGMINDEPTH", &Segment::minimum_depth},
        {"PINITIALSURFACEELEVATION", &Segment::initial_surface_elevation},
        {"PBOTTOMELEVATION", &Segment::bottom_elevation},
        {"PSIDESLOPE", &Segment::side_slope},
        {"PINITIALDEPTH", &Segment::initial_depth},
        {"PWEIRHEIGHT", &Segment::weir_height},
        {"GWEIRTYPE", &Segment::weir_type},
    };
    const std::vector<std::pair<std::string_view, std::int32_t Segment::*>> integers = {
        {"PBOTSEG", &Segment::bottom_segment},
        {"PSEGTYPE", &Segment::type},
        {"PIQOPT", &Segment::hydraulic_option},
        {"PFLOWTYPE", &Segment::flow_option},
    };
    send("PNUMSEG", 2);
    send("PSEGNAME", 1, field("Upper Pool\0\0"s, 40));
    send("PSEGNAME", 2, field("", 40));
    std::int32_t next = 1;
    for (const auto &[keyword, member] : reals)
        send(keyword, 2, static_cast<float>(next++));
    for (const auto &[keyword, member] : integers)
        send(keyword, 2, next++);
    EXPECT_EQ(model.segment_count, 2);
    ASSERT_EQ(model.segments.size(), 2U);
    EXPECT_EQ(model.segments[0].name, "Upper Pool");
    EXPECT_EQ(model.segments[1].name, "");
    next = 1;
    for (const auto &[keyword, member] : reals) {
        EXPECT_EQ(model.segments[1].*member, static_cast<float>(next++)) << keyword;
        EXPECT_EQ(model.segments[0].*member, 0.0F) << keyword;
    }
    for (const auto &[keyword, member] : integers)
        EXPECT_EQ(model.segments[1].*member, next++) << keyword;
}

TEST_F(ModelTest, KeepsTheSystems) {
    send("PNUMSYS", 2);
    send("PSYSNAME", 1, terminated_field("Ammonia", 31), terminated_field("NH-34", 6));
    send("PSYSNAME", 2, terminated_field("Salinity", 31), terminated_field("SALIN", 6));
    send("PCMAX", 2, 1000.0F);
    send("PDENSITY", 2, 1.5F);
    send("PIFIELD", 2, 3);
    send("PINITC", 2, 1, 0.5F);
    send("PFDISS", 2, 1, 1.0F);
    send("PINITC", 2, 2, 0.25F);
    EXPECT_EQ(model.system_count, 2);
    ASSERT_EQ(model.systems.size(), 2U);
    EXPECT_EQ(model.systems[0].long_name, "Ammonia");
    EXPECT_EQ(model.systems[0].short_name, "NH-34");
    const auto &salinity = model.systems[1];
    EXPECT_EQ(salinity.long_name, "Salinity");
    EXPECT_EQ(salinity.maximum_concentration, 1000.0F);
    EXPECT_EQ(salinity.density, 1.5F);
    EXPECT_EQ(salinity.flow_field, 3);
    ASSERT_EQ(salinity.initial_conditions.size(), 2U);
    EXPECT_EQ(salinity.initial_conditions[0].concentration, 0.5F);
    EXPECT_EQ(salinity.initial_conditions[0].dissolved_fraction, 1.0F);
    EXPECT_EQ(salinity.initial_conditions[1].concentration, 0.25F);
}

TEST_F(ModelTest, KeepsTheFlows) {
    send("PNFIELD", 1);
    send("PNINQ", 1, 2);
    send("PSCALEQ", 1, 2.0F);
    send("PCONVQ", 1, 3.0F);
    send("PNOQS", 1, 2, 1);
    send("PFLOWFUNCDESC", 1, 2, field("Creek", 30));
    send("PJQ", 1, 2, 1, 4);
    send("PIQ", 1, 2, 1, 5);
    send("PBQ", 1, 2, 1, 0.75F);
    send("PNBRKQ", 1, 2, 1);
    send("PNOQFUNC", 1, 2, 1, 6.5F, 7.5F);
    EXPECT_EQ(model.flow_field_count, 1);
    ASSERT_EQ(model.flow_fields.size(), 1U);
    const auto &flow_field = model.flow_fields[0];
    EXPECT_EQ(flow_field.function_count, 2);
    EXPECT_EQ(flow_field.scale_factor, 2.0F);
    EXPECT_EQ(flow_field.conversion_factor, 3.0F);
    ASSERT_EQ(flow_field.functions.size(), 2U);
    const auto &function = flow_field.functions[1];
    EXPECT_EQ(function.description, "Creek");
    EXPECT_EQ(function.pair_count, 1);
    ASSERT_EQ(function.pairs.size(), 1U);
    EXPECT_EQ(function.pairs[0].first_segment, 4);
    EXPECT_EQ(function.pairs[0].second_segment, 5);
    EXPECT_EQ(function.pairs[0].routing_fraction, 0.75F);
    EXPECT_EQ(function.breakpoint_count, 1);
    ASSERT_EQ(function.breakpoints.size(), 1U);
    EXPECT_EQ(function.breakpoints[0].first_value, 6.5F);
    EXPECT_EQ(function.breakpoints[0].second_value, 7.5F);
}

TEST_F(ModelTest, KeepsTheExchanges) {
    send("PNRFLD", 3);
    send("PNTEX", 3, 1); // the fields before it have no functions and are not mentioned
    send("PSCALER", 3, 2.0F);
    send("PCONVR", 3, 3.0F);
    send("PEXCHANGEFUNCDESC", 3, 1, field("Wind", 30));
    send("PNORS", 3, 1, 1);
    send("PJRSEG", 3, 1, 1, 4);
    send("PIRSEG", 3, 1, 1, 5);
    send("PXAREA", 3, 1, 1, 6.5F);
    send("PLENGTH", 3, 1, 1, 7.5F);
    send("PNOBRKS", 3, 1, 1);
    send("PNORFUNC", 3, 1, 1, 8.5F, 9.5F);
    EXPECT_EQ(model.exchange_field_count, 3);
    ASSERT_EQ(model.exchange_fields.size(), 3U);
    EXPECT_TRUE(model.exchange_fields[0].functions.empty());
    const auto &exchange_field = model.exchange_fields[2];
    EXPECT_EQ(exchange_field.function_count, 1);
    EXPECT_EQ(exchange_field.scale_factor, 2.0F);
    EXPECT_EQ(exchange_field.conversion_factor, 3.0F);
    const auto &function = exchange_field.functions.at(0);
    EXPECT_EQ(function.description, "Wind");
    EXPECT_EQ(function.pair_count, 1);
    EXPECT_EQ(function.pairs.at(0).first_segment, 4);
    EXPECT_EQ(function.pairs.at(0).second_segment, 5);
    EXPECT_EQ(function.pairs.at(0).interfacial_area, 6.5F);
    EXPECT_EQ(function.pairs.at(0).mixing_length, 7.5F);
    EXPECT_EQ(function.breakpoint_count, 1);
    EXPECT_EQ(function.breakpoints.at(0).value, 8.5F);
    EXPECT_EQ(function.breakpoints.at(0).time, 9.5F);
}

TEST_F(ModelTest, KeepsTheBoundaries) {
    SendBuffer values(kova_import::send_buffer_size, 1);
    SendBuffer times(kova_import::send_buffer_size, 2);
    values[1] = 3;
    times[1] = 4;
    send("PNOBC", 1, 1);
    send("PSCALB", 1, 5.0F);
    send("PIBC", 1, 1, 6);
    send("PNBFP", 1, 1, 2);
    send("PALLBOUNDFUNC", 1, 1, &values, &times);
    const auto &system = model.systems.at(0);
    EXPECT_EQ(system.boundary_count, 1);
    EXPECT_EQ(system.boundary_scale_factor, 5.0F);
    const auto &boundary = system.boundaries.at(0);
    EXPECT_EQ(boundary.segment, 6);
    EXPECT_EQ(boundary.breakpoint_count, 2);
    ASSERT_EQ(boundary.series.size(), 2U);
    EXPECT_EQ(boundary.series[0].value, 1.0F);
    EXPECT_EQ(boundary.series[0].time, 2.0F);
    EXPECT_EQ(boundary.series[1].value, 3.0F);
    EXPECT_EQ(boundary.series[1].time, 4.0F);
}

TEST_F(ModelTest, KeepsTheLoadsBySegment) {
    SendBuffer values(kova_import::send_buffer_size, 1);
    SendBuffer times(kova_import::send_buffer_size, 2);
    send("PCONVB", 1, 3.0F);
    send("PNBWK", 1, 900000000, 1);
    send("PALLLOADFUNC", 1, 900000000, &values, &times);
    send("PNBWK", 1, -4, 2);
    send("PALLLOADFUNC", 1, -4, &values, &times);
    send("PNBWK", 1, 900000000, 3);
    send("PSCALW", 2, 0.5F);
    send("PCONVW", 2, 0.25F);
    ASSERT_EQ(model.systems.size(), 2U);
    EXPECT_EQ(model.systems[0].load_conversion_factor, 3.0F);
    ASSERT_EQ(model.systems[0].loads.size(), 2U);
    EXPECT_EQ(model.systems[0].loads[0].segment, 900000000);
    EXPECT_EQ(model.systems[0].loads[0].breakpoint_count, 3);
    EXPECT_EQ(model.systems[0].loads[0].series.size(), 1U);
    EXPECT_EQ(model.systems[0].loads[1].segment, -4);
    EXPECT_EQ(model.systems[0].loads[1].series.size(), 2U);
    EXPECT_EQ(model.systems[1].no_load_scale_factor, 0.5F);
    EXPECT_EQ(model.systems[1].no_load_conversion_factor, 0.25F);
    EXPECT_EQ(host.violation_count(), 0U);
}

TEST_F(ModelTest, KeepsTheTimeFunctionsByNumber) {
    send("PNBRKTF", 2147483647, 1, 2);
    send("PBRKTF", 2147483647, 1, 1, 0.0F, 15.0F);
    send("PBRKTF", 2147483647, 1, 2, 365.0F, 16.0F);
    send("PNBRKTF", -7, 2, 0);
    ASSERT_EQ(model.time_functions.size(), 2U);
    EXPECT_EQ(model.time_functions[0].number, 2147483647);
    const auto &series = model.time_functions[0].series.at(0);
    EXPECT_EQ(series.breakpoint_count, 2);
    EXPECT_EQ(series.breakpoints.at(1).time, 365.0F);
    EXPECT_EQ(series.breakpoints.at(1).value, 16.0F);
    EXPECT_EQ(model.time_functions[1].number, -7);
    EXPECT_EQ(model.time_functions[1].series.size(), 2U);
    EXPECT_EQ(host.violation_count(), 0U);
}

TEST_F(ModelTest, TellsTimeFunctionsThatComeAfterTheConstants) {
    send("PNBRKTF", 4, 1, 1);
    send("PNBRKTF", 5, 1, 1);
    send("PTFSREFRESH");
    send("PCONSTANTSREFRESH");
    send("PNBRKTF", 37, 1, 2);
    send("PBRKTF", 37, 1, 1, 0.0F, 15.0F);
    send("PNBRKTF", 5, 1, 2); // the later one holds
    ASSERT_EQ(model.time_functions.size(), 3U);
    EXPECT_FALSE(model.time_functions[0].follows_constants);
    EXPECT_TRUE(model.time_functions[1].follows_constants);
    EXPECT_TRUE(model.time_functions[2].follows_constants);
}

TEST_F(ModelTest, TellsSystemsWithoutInitialConditions) {
    send("PNUMSYS", 4);
    send("PCMAX", 1, 0.0F);
    send("PDENSITY", 2, 0.0F);
    send("PIFIELD", 3, 0);
    send("PINITC", 4, 1, 0.5F);
    ASSERT_EQ(model.systems.size(), 4U);
    EXPECT_TRUE(model.systems[0].has_initial_settings);
    EXPECT_TRUE(model.systems[1].has_initial_settings);
    EXPECT_TRUE(model.systems[2].has_initial_settings);
    EXPECT_FALSE(model.systems[3].has_initial_settings);
}

TEST_F(ModelTest, KeepsTheSegmentParameters) {
    send("PADDPARAM", 21, 2);
    send("PSCALEPARAMBYISC", 21, 2, 1.5F);
    send("PCONSTPARAM", 1, 21, 2, 0.5F);
    send("PCONSTPARAM", 2, 21, 2, 0.25F);
    send("PADDPARAM", 21, 1);
    ASSERT_EQ(model.segment_parameters.size(), 2U);
    const auto &parameter = model.segment_parameters[0];
    EXPECT_EQ(parameter.number, 21);
    EXPECT_EQ(parameter.class_index, 2);
    EXPECT_EQ(parameter.scale_factor, 1.5F);
    EXPECT_EQ(parameter.values, (std::vector<float>{0.5F, 0.25F}));
    EXPECT_EQ(model.segment_parameters[1].class_index, 1);
}

TEST_F(ModelTest, KeepsTheConstants) {
    send("PADDCONST", 101, 1);
    send("PADDCONST", 101, 3);
    send("PCONSTVALUEBYISC", 101, 3, 0.5F);
    send("PCONSTISUSED", 101, 3, 1);
    ASSERT_EQ(model.constants.size(), 2U);
    EXPECT_EQ(model.constants[0].used, 0);
    EXPECT_EQ(model.constants[1].number, 101);
    EXPECT_EQ(model.constants[1].column, 3);
    EXPECT_EQ(model.constants[1].value, 0.5F);
    EXPECT_EQ(model.constants[1].used, 1);
}

TEST_F(ModelTest, CountsTheRefreshes) {
    using kova_host::RefreshCounts;
    const std::vector<std::pair<std::string_view, std::int64_t RefreshCounts::*>> rows = {
        {"PSYSTEMSREFRESH", &RefreshCounts::systems},
        {"PSEGMENTSREFRESH", &RefreshCounts::segments},
        {"PFLOWSREFRESH", &RefreshCounts::flows},
        {"PEXCHANGESREFRESH", &RefreshCounts::exchanges},
        {"PTFSREFRESH", &RefreshCounts::time_functions},
        {"PPARAMSREFRESH", &RefreshCounts::segment_parameters},
        {"PCONSTANTSREFRESH", &RefreshCounts::constants},
    };
    for (std::size_t times = 1; times <= rows.size(); ++times)
        for (std::size_t row = 0; row < times; ++row)
            send(rows[row].first);
    for (std::size_t row = 0; row < rows.size(); ++row)
        EXPECT_EQ(model.refreshes.*rows[row].second, static_cast<std::int64_t>(7 - row));
}

TEST_F(ModelTest, ACountCutsItsListButDoesNotGrowIt) {
    for (std::int32_t segment = 1; segment <= 3; ++segment)
        send("PVOLUME", segment, 1.0F);
    send("PNUMSEG", 2147483647);
    EXPECT_EQ(model.segment_count, 2147483647);
    EXPECT_EQ(model.segments.size(), 3U);
    send("PNUMSEG", 2);
    EXPECT_EQ(model.segments.size(), 2U);
    send("PNUMSEG", -5);
    EXPECT_EQ(model.segment_count, -5);
    EXPECT_TRUE(model.segments.empty());
}

TEST_F(ModelTest, ALoadOfASystemThatWasCutOffIsNotMistaken) {
    send("PNBWK", 1, 10, 1);
    send("PNBWK", 1, 20, 2);
    send("PNUMSYS", 0);
    send("PNUMSYS", 1);
    send("PNBWK", 1, 20, 3);
    send("PNBWK", 1, 10, 4);
    send("PNBWK", 1, 20, 5);
    const auto &loads = model.systems.at(0).loads;
    ASSERT_EQ(loads.size(), 2U);
    EXPECT_EQ(loads[0].segment, 20);
    EXPECT_EQ(loads[0].breakpoint_count, 5);
    EXPECT_EQ(loads[1].segment, 10);
    EXPECT_EQ(loads[1].breakpoint_count, 4);
}

TEST_F(ModelTest, WildNumbersAreViolations) {
    const std::int32_t wild = std::numeric_limits<std::int32_t>::max();
    const std::int32_t least = std::numeric_limits<std::int32_t>::min();
    for (const std::int32_t number : {0, -1, least, wild, 100010}) {
        host.reset();
        send("PVOLUME", number, 1.0F);
        send("PCMAX", number, 1.0F);
        send("PIBC", 1, number, 1);
        send("PIBC", number, 1, 1);
        send("PNINQ", number, 1);
        send("PNOQS", 1, number, 1);
        send("PJQ", 1, 1, number, 1);
        send("PNOQFUNC", 1, 1, number, 1.0F, 1.0F);
        send("PNTEX", number, 1);
        send("PNORS", 1, number, 1);
        send("PJRSEG", 1, 1, number, 1);
        send("PNORFUNC", 1, 1, number, 1.0F, 1.0F);
        send("PNBRKTF", 1, number, 1);
        send("PBRKTF", 1, 1, number, 1.0F, 1.0F);
        send("PINITC", 1, number, 1.0F);
        send("PCONSTPARAM", number, 1, 1, 1.0F);
        EXPECT_EQ(host.violation_count(), 16U) << number << "\n" << violations();
        EXPECT_TRUE(model.segments.empty());
    }
}

TEST_F(ModelTest, AModelHasRoomForAHundredThousandGaps) {
    send("PNTEX", 100001, 1);
    EXPECT_EQ(violations(), "");
    EXPECT_EQ(model.exchange_fields.size(), 100001U);
    send("PNTEX", 100002, 1);
    EXPECT_EQ(violations(), "");
    send("PNTEX", 100004, 1);
    EXPECT_EQ(violations(), "the number of the exchange field is 100004, a number near 100002 was "
                            "expected\n");
    EXPECT_EQ(model.exchange_fields.size(), 100002U);
}

TEST_F(ModelTest, AnAnnouncementCountsEvenWhenItsRecordHasNoRoom) {
    SendBuffer buffer(kova_import::send_buffer_size, 1);
    send("PNBFP", 1, 0, 1);
    log();
    send("PALLBOUNDFUNC", 1, 1, &buffer, &buffer);
    EXPECT_EQ(log(), "4 PALLBOUNDFUNC[14] int 1, int 1, real[170000] 1 | 169999*1, "
                     "real[170000] 1 | 169999*1\n");
}

} // namespace
