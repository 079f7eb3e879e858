// What the commands of flow paths, flow time series, exchanges, boundary conditions and loads leave
// in the model: in any order, with counts that lie and with numbers that want to do harm.

#include "host_test.h"

#include <algorithm>
#include <limits>

namespace {

using namespace host_test;
using kova_host::Model;

constexpr std::int32_t wild = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

struct Command {
    std::string_view keyword;
    std::vector<Value> values;
};

struct SectionModelTest : HostTest {
    const Model &model = host.model();
    SendBuffer zeros = SendBuffer(kova_import::send_buffer_size);
    SendBuffer ones = SendBuffer(kova_import::send_buffer_size, 1);
    SendBuffer twos = SendBuffer(kova_import::send_buffer_size, 2);

    static void send_all(const std::vector<Command> &commands) {
        for (const Command &command : commands)
            send_keyword(literal(command.keyword), command.values);
    }

    void send_placeholder(std::int32_t system) {
        send("PSCALW", system, 0.0F);
        send("PCONVW", system, 0.0F);
        send("PNBWK", system, 1, 2);
        send("PALLLOADFUNC", system, 1, &zeros, &zeros);
    }

    [[nodiscard]] bool is_placeholder(std::size_t system, std::size_t load) const {
        return kova_host::is_placeholder(model.systems.at(system),
                                         model.systems.at(system).loads.at(load));
    }
};

TEST_F(SectionModelTest, EverySegmentHasItsFlowOption) {
    send("PNUMSEG", 4);
    for (std::int32_t segment = 1; segment <= 4; ++segment)
        send("PFLOWTYPE", segment, 3);
    ASSERT_EQ(model.segments.size(), 4U);
    for (const auto &segment : model.segments)
        EXPECT_EQ(segment.flow_option, 3);
    send("PFLOWTYPE", 2, -7);
    EXPECT_EQ(model.segments[1].flow_option, -7);
    EXPECT_EQ(model.segments[2].flow_option, 3);
}

TEST_F(SectionModelTest, AHydrodynamicFileMayFillItsField) {
    send("PHYDROFILE", field(std::string(512, 'h'), 512));
    EXPECT_EQ(model.settings.hydrodynamic_file, std::string(512, 'h'));
    send("PNPSFILE", field("a b.nps", 512));
    EXPECT_EQ(model.settings.non_point_source_file, "a b.nps");
}

TEST_F(SectionModelTest, FlowsMayArriveInAnyOrder) {
    std::vector<Command> commands = {
        {"PNFIELD", {1}},
        {"PNINQ", {1, 1}},
        {"PNOQS", {1, 1, 2}},
        {"PFLOWFUNCDESC", {1, 1, field("Creek", 30)}},
        {"PJQ", {1, 1, 1, 10}},
        {"PIQ", {1, 1, 1, 11}},
        {"PBQ", {1, 1, 1, 0.5F}},
        {"PJQ", {1, 1, 2, 12}},
        {"PIQ", {1, 1, 2, 13}},
        {"PBQ", {1, 1, 2, 0.25F}},
        {"PSCALEQ", {1, 2.0F}},
        {"PCONVQ", {1, 3.0F}},
        {"PNBRKQ", {1, 1, 2}},
        {"PNOQFUNC", {1, 1, 1, 4.0F, 5.0F}},
        {"PNOQFUNC", {1, 1, 2, 6.0F, 7.0F}},
    };
    for (int direction = 0; direction < 2; ++direction) {
        host.reset();
        send_all(commands);
        EXPECT_EQ(violations(), "");
        EXPECT_EQ(model.flow_field_count, 1);
        ASSERT_EQ(model.flow_fields.size(), 1U);
        EXPECT_EQ(model.flow_fields[0].scale_factor, 2.0F);
        EXPECT_EQ(model.flow_fields[0].conversion_factor, 3.0F);
        EXPECT_EQ(model.flow_fields[0].function_count, 1);
        ASSERT_EQ(model.flow_fields[0].functions.size(), 1U);
        const auto &function = model.flow_fields[0].functions[0];
        EXPECT_EQ(function.description, "Creek");
        EXPECT_EQ(function.pair_count, 2);
        ASSERT_EQ(function.pairs.size(), 2U);
        EXPECT_EQ(function.pairs[0].second_segment, 11);
        EXPECT_EQ(function.pairs[1].first_segment, 12);
        EXPECT_EQ(function.pairs[1].routing_fraction, 0.25F);
        EXPECT_EQ(function.breakpoint_count, 2);
        ASSERT_EQ(function.breakpoints.size(), 2U);
        EXPECT_EQ(function.breakpoints[0].first_value, 4.0F);
        EXPECT_EQ(function.breakpoints[1].second_value, 7.0F);
        std::reverse(commands.begin(), commands.end());
    }
}

TEST_F(SectionModelTest, ExchangesMayArriveInAnyOrder) {
    std::vector<Command> commands = {
        {"PNRFLD", {1}},
        {"PNTEX", {1, 1}},
        {"PSCALER", {1, 2.0F}},
        {"PCONVR", {1, 3.0F}},
        {"PEXCHANGEFUNCDESC", {1, 1, field("Wind", 30)}},
        {"PNORS", {1, 1, 1}},
        {"PJRSEG", {1, 1, 1, 10}},
        {"PIRSEG", {1, 1, 1, 11}},
        {"PXAREA", {1, 1, 1, 4.0F}},
        {"PLENGTH", {1, 1, 1, 5.0F}},
        {"PNOBRKS", {1, 1, 2}},
        {"PNORFUNC", {1, 1, 1, 6.0F, 7.0F}},
        {"PNORFUNC", {1, 1, 2, 8.0F, 9.0F}},
    };
    for (int direction = 0; direction < 2; ++direction) {
        host.reset();
        send_all(commands);
        EXPECT_EQ(violations(), "");
        EXPECT_EQ(model.exchange_field_count, 1);
        ASSERT_EQ(model.exchange_fields.size(), 1U);
        EXPECT_EQ(model.exchange_fields[0].scale_factor, 2.0F);
        EXPECT_EQ(model.exchange_fields[0].conversion_factor, 3.0F);
        EXPECT_EQ(model.exchange_fields[0].function_count, 1);
        ASSERT_EQ(model.exchange_fields[0].functions.size(), 1U);
        const auto &function = model.exchange_fields[0].functions[0];
        EXPECT_EQ(function.description, "Wind");
        ASSERT_EQ(function.pairs.size(), 1U);
        EXPECT_EQ(function.pair_count, 1);
        EXPECT_EQ(function.pairs[0].first_segment, 10);
        EXPECT_EQ(function.pairs[0].second_segment, 11);
        EXPECT_EQ(function.pairs[0].interfacial_area, 4.0F);
        EXPECT_EQ(function.pairs[0].mixing_length, 5.0F);
        EXPECT_EQ(function.breakpoint_count, 2);
        ASSERT_EQ(function.breakpoints.size(), 2U);
        EXPECT_EQ(function.breakpoints[0].value, 6.0F);
        EXPECT_EQ(function.breakpoints[1].time, 9.0F);
        std::reverse(commands.begin(), commands.end());
    }
}

// The flow time series announce the fields and functions of the flow paths again.
TEST_F(SectionModelTest, CountsThatAreSentAgainKeepThePaths) {
    for (int section = 0; section < 2; ++section) {
        send("PNFIELD", 1);
        send("PNINQ", 1, 2);
        if (section == 0)
            for (std::int32_t function = 1; function <= 2; ++function) {
                send("PNOQS", 1, function, 1);
                send("PJQ", 1, function, 1, function + 4);
            }
        else
            send("PNBRKQ", 1, 2, 0);
    }
    ASSERT_EQ(model.flow_fields.at(0).functions.size(), 2U);
    EXPECT_EQ(model.flow_fields[0].functions[0].pairs.at(0).first_segment, 5);
    EXPECT_EQ(model.flow_fields[0].functions[1].pairs.at(0).first_segment, 6);
    // The smaller count holds.
    send("PNINQ", 1, 1);
    EXPECT_EQ(model.flow_fields[0].functions.size(), 1U);
}

TEST_F(SectionModelTest, ASeriesHasTheEntriesAnnouncedForIt) {
    send("PNBFP", 1, 1, 3);
    send("PNBFP", 1, 2, 1);
    send("PNBWK", 1, 9, 2);
    ones[2] = 30;
    twos[2] = 40;
    ones[3] = 50; // an earlier boundary left this in the buffers
    send("PALLBOUNDFUNC", 1, 1, &ones, &twos);
    send("PALLBOUNDFUNC", 1, 2, &ones, &twos);
    send("PALLLOADFUNC", 1, 9, &ones, &twos);
    const auto &system = model.systems.at(0);
    ASSERT_EQ(system.boundaries.at(0).series.size(), 3U);
    EXPECT_EQ(system.boundaries[0].series[2].value, 30.0F);
    EXPECT_EQ(system.boundaries[0].series[2].time, 40.0F);
    EXPECT_EQ(system.boundaries.at(1).series.size(), 1U);
    EXPECT_EQ(system.loads.at(0).series.size(), 2U);
    // Nothing was announced for these.
    send("PALLBOUNDFUNC", 1, 3, &ones, &twos);
    send("PALLLOADFUNC", 1, 10, &ones, &twos);
    EXPECT_TRUE(system.boundaries.at(2).series.empty());
    EXPECT_TRUE(system.loads.at(1).series.empty());
}

TEST_F(SectionModelTest, ASeriesEndsWithTheBuffers) {
    for (const std::int32_t count : {170000, 170001, wild}) {
        host.reset();
        send("PNBFP", 1, 1, count);
        send("PALLBOUNDFUNC", 1, 1, &ones, &twos);
        send("PNBWK", 1, 5, count);
        send("PALLLOADFUNC", 1, 5, &ones, &twos);
        const auto &system = model.systems.at(0);
        EXPECT_EQ(system.boundaries.at(0).breakpoint_count, count);
        EXPECT_EQ(system.boundaries[0].series.size(), 170000U);
        EXPECT_EQ(system.boundaries[0].series.back().value, 1.0F);
        EXPECT_EQ(system.boundaries[0].series.back().time, 2.0F);
        EXPECT_EQ(system.loads.at(0).breakpoint_count, count);
        EXPECT_EQ(system.loads[0].series.size(), 170000U);
        EXPECT_EQ(host.violation_count(), 0U);
    }
}

TEST_F(SectionModelTest, CountsAloneTakeNoMemory) {
    for (const std::int32_t count : {-1, least, wild}) {
        host.reset();
        send_all({
            {"PNFIELD", {count}},
            {"PNINQ", {1, count}},
            {"PNOQS", {1, 1, count}},
            {"PNBRKQ", {1, 1, count}},
            {"PNRFLD", {count}},
            {"PNTEX", {1, count}},
            {"PNORS", {1, 1, count}},
            {"PNOBRKS", {1, 1, count}},
            {"PNOBC", {1, count}},
            {"PNBFP", {1, 1, count}},
            {"PNBWK", {1, 1, count}},
        });
        EXPECT_EQ(violations(), "");
        EXPECT_EQ(model.flow_field_count, count);
        EXPECT_EQ(model.exchange_field_count, count);
        ASSERT_EQ(model.flow_fields.size(), 1U);
        EXPECT_EQ(model.flow_fields[0].function_count, count);
        ASSERT_EQ(model.flow_fields[0].functions.size(), 1U);
        EXPECT_EQ(model.flow_fields[0].functions[0].pair_count, count);
        EXPECT_TRUE(model.flow_fields[0].functions[0].pairs.empty());
        EXPECT_EQ(model.flow_fields[0].functions[0].breakpoint_count, count);
        EXPECT_TRUE(model.flow_fields[0].functions[0].breakpoints.empty());
        ASSERT_EQ(model.exchange_fields.size(), 1U);
        EXPECT_EQ(model.exchange_fields[0].function_count, count);
        ASSERT_EQ(model.exchange_fields[0].functions.size(), 1U);
        EXPECT_EQ(model.exchange_fields[0].functions[0].pair_count, count);
        EXPECT_TRUE(model.exchange_fields[0].functions[0].pairs.empty());
        EXPECT_EQ(model.exchange_fields[0].functions[0].breakpoint_count, count);
        EXPECT_TRUE(model.exchange_fields[0].functions[0].breakpoints.empty());
        const auto &system = model.systems.at(0);
        EXPECT_EQ(system.boundary_count, count);
        EXPECT_EQ(system.boundaries.at(0).breakpoint_count, count);
        EXPECT_TRUE(system.boundaries[0].series.empty());
        EXPECT_EQ(system.loads.at(0).breakpoint_count, count);
        EXPECT_TRUE(system.loads[0].series.empty());
    }
}

TEST_F(SectionModelTest, ANegativeCountCutsItsListAndItsSeries) {
    send("PIBC", 1, 1, 4);
    send("PNBWK", 1, 4, 2);
    send("PALLLOADFUNC", 1, 4, &ones, &ones);
    send("PNBWK", 1, 4, -2);
    send("PALLLOADFUNC", 1, 4, &ones, &ones);
    send("PNOBC", 1, -1);
    EXPECT_TRUE(model.systems.at(0).boundaries.empty());
    EXPECT_EQ(model.systems[0].loads.at(0).breakpoint_count, -2);
    EXPECT_TRUE(model.systems[0].loads[0].series.empty());
}

// Each number of each command in turn; the segments of loads are the file's own and may be any.
TEST_F(SectionModelTest, WildNumbersAreViolationsAndTakeNoMemory) {
    const std::vector<std::pair<Command, std::size_t>> commands = {
        {{"PFLOWTYPE", {1, 1}}, 1},
        {{"PNINQ", {1, 1}}, 1},
        {{"PSCALEQ", {1, 1.0F}}, 1},
        {{"PCONVQ", {1, 1.0F}}, 1},
        {{"PNOQS", {1, 1, 1}}, 2},
        {{"PFLOWFUNCDESC", {1, 1, field("x", 30)}}, 2},
        {{"PNBRKQ", {1, 1, 1}}, 2},
        {{"PJQ", {1, 1, 1, 1}}, 3},
        {{"PIQ", {1, 1, 1, 1}}, 3},
        {{"PBQ", {1, 1, 1, 1.0F}}, 3},
        {{"PNOQFUNC", {1, 1, 1, 1.0F, 1.0F}}, 3},
        {{"PNTEX", {1, 1}}, 1},
        {{"PSCALER", {1, 1.0F}}, 1},
        {{"PCONVR", {1, 1.0F}}, 1},
        {{"PEXCHANGEFUNCDESC", {1, 1, field("x", 30)}}, 2},
        {{"PNORS", {1, 1, 1}}, 2},
        {{"PNOBRKS", {1, 1, 1}}, 2},
        {{"PJRSEG", {1, 1, 1, 1}}, 3},
        {{"PIRSEG", {1, 1, 1, 1}}, 3},
        {{"PXAREA", {1, 1, 1, 1.0F}}, 3},
        {{"PLENGTH", {1, 1, 1, 1.0F}}, 3},
        {{"PNORFUNC", {1, 1, 1, 1.0F, 1.0F}}, 3},
        {{"PNOBC", {1, 1}}, 1},
        {{"PSCALB", {1, 1.0F}}, 1},
        {{"PIBC", {1, 1, 1}}, 2},
        {{"PNBFP", {1, 1, 1}}, 2},
        {{"PALLBOUNDFUNC", {1, 1, &ones, &ones}}, 2},
        {{"PCONVB", {1, 1.0F}}, 1},
        {{"PSCALW", {1, 1.0F}}, 1},
        {{"PCONVW", {1, 1.0F}}, 1},
        {{"PNBWK", {1, 1, 1}}, 1},
        {{"PALLLOADFUNC", {1, 1, &ones, &ones}}, 1},
    };
    for (const auto &[command, number_count] : commands)
        for (std::size_t index = 0; index < number_count; ++index)
            for (const std::int32_t number : {0, -1, least, wild}) {
                host.reset();
                std::vector<Value> values = command.values;
                values[index] = number;
                send_keyword(literal(command.keyword), values);
                EXPECT_EQ(host.violation_count(), 1U) << command.keyword << " " << number;
                EXPECT_LE(model.systems.size() + model.segments.size() + model.flow_fields.size() +
                              model.exchange_fields.size(),
                          1U)
                    << command.keyword;
            }
}

TEST_F(SectionModelTest, APlaceholderIsToldFromALoad) {
    send_placeholder(1);
    // A load of the file with the same numbers: its system gets the other factor.
    send("PCONVB", 2, 1.0F);
    send("PNBWK", 2, 1, 2);
    send("PALLLOADFUNC", 2, 1, &zeros, &zeros);
    ASSERT_EQ(model.systems.size(), 2U);
    EXPECT_TRUE(model.systems[0].has_no_load_factors);
    EXPECT_FALSE(model.systems[1].has_no_load_factors);
    EXPECT_TRUE(is_placeholder(0, 0));
    EXPECT_FALSE(is_placeholder(1, 0));
}

TEST_F(SectionModelTest, APlaceholderMayArriveInAnyOrder) {
    send("PNBWK", 1, 1, 2);
    send("PALLLOADFUNC", 1, 1, &zeros, &zeros);
    EXPECT_FALSE(is_placeholder(0, 0));
    send("PCONVW", 1, 0.0F);
    EXPECT_TRUE(is_placeholder(0, 0));
    send("PNBWK", 2, 1, 2);
    send("PALLLOADFUNC", 2, 1, &zeros, &zeros);
    send("PSCALW", 2, 0.0F);
    EXPECT_TRUE(is_placeholder(1, 0));
}

TEST_F(SectionModelTest, OnlyALoadOfNothingOnSegment1IsAPlaceholder) {
    send("PSCALW", 1, 0.0F);
    send("PNBWK", 1, 2, 2); // another segment
    send("PALLLOADFUNC", 1, 2, &zeros, &zeros);
    EXPECT_FALSE(is_placeholder(0, 0));
    send("PSCALW", 2, 0.0F);
    send("PNBWK", 2, 1, 3); // another count
    send("PALLLOADFUNC", 2, 1, &zeros, &zeros);
    EXPECT_FALSE(is_placeholder(1, 0));
    send("PSCALW", 3, 0.0F);
    send("PNBWK", 3, 1, 2); // another value
    send("PALLLOADFUNC", 3, 1, &ones, &zeros);
    EXPECT_FALSE(is_placeholder(2, 0));
    send("PNBWK", 3, 1, 2); // another time
    send("PALLLOADFUNC", 3, 1, &zeros, &ones);
    EXPECT_FALSE(is_placeholder(2, 0));
    send("PSCALW", 4, 0.0F); // nothing but the count
    send("PNBWK", 4, 1, 2);
    EXPECT_FALSE(is_placeholder(3, 0));
}

TEST_F(SectionModelTest, CommandsAboutTwoRecordsMayTakeTurns) {
    for (std::int32_t number = 1; number <= 3; ++number)
        send_all({
            {"PBRKTF", {7, 1, number, 1.0F, 10.0F}},
            {"PBRKTF", {-7, 1, number, 2.0F, 20.0F}},
            {"PCONSTPARAM", {number, 7, 1, 3.0F}},
            {"PCONSTPARAM", {number, 1, 7, 4.0F}},
            {"PCONSTVALUEBYISC", {7, 1, 5.0F}},
            {"PCONSTVALUEBYISC", {1, 7, 6.0F}},
            {"PNBWK", {1, 7, number}},
            {"PNBWK", {2, 7, 10 * number}},
        });
    EXPECT_EQ(violations(), "");
    ASSERT_EQ(model.time_functions.size(), 2U);
    EXPECT_EQ(model.time_functions[1].number, -7);
    EXPECT_EQ(model.time_functions[0].series.at(0).breakpoints.at(2).value, 10.0F);
    EXPECT_EQ(model.time_functions[1].series.at(0).breakpoints.at(2).value, 20.0F);
    ASSERT_EQ(model.segment_parameters.size(), 2U);
    EXPECT_EQ(model.segment_parameters[0].values, std::vector<float>(3, 3.0F));
    EXPECT_EQ(model.segment_parameters[1].values, std::vector<float>(3, 4.0F));
    ASSERT_EQ(model.constants.size(), 2U);
    EXPECT_EQ(model.constants[0].value, 5.0F);
    EXPECT_EQ(model.constants[1].value, 6.0F);
    EXPECT_EQ(model.systems.at(0).loads.at(0).breakpoint_count, 3);
    EXPECT_EQ(model.systems.at(1).loads.at(0).breakpoint_count, 30);
}

TEST_F(SectionModelTest, ARecordOfTheLastImportIsNotFoundAgain) {
    send("PCONSTVALUEBYISC", 7, 1, 5.0F);
    host.reset();
    send("PCONSTVALUEBYISC", 8, 1, 6.0F);
    send("PCONSTVALUEBYISC", 7, 1, 7.0F);
    ASSERT_EQ(model.constants.size(), 2U);
    EXPECT_EQ(model.constants[1].number, 7);
    EXPECT_EQ(model.constants[1].value, 7.0F);
}

TEST_F(SectionModelTest, ALoadKnowsWhatItReplaced) {
    const auto replaced = [&](std::size_t system, std::size_t load) {
        return kova_host::replaced_count(model.systems.at(system).loads.at(load));
    };
    for (const std::int32_t segment : {4, 5, 4, 4}) {
        send("PNBWK", 1, segment, 1);
        send("PALLLOADFUNC", 1, segment, &ones, &twos);
    }
    send("PNBWK", 2, 4, 1); // another system
    send("PALLLOADFUNC", 2, 4, &ones, &twos);
    send("PNBWK", 1, 5, 2);
    send("PALLLOADFUNC", 1, 5, &twos, &ones);
    ASSERT_EQ(model.systems.at(0).loads.size(), 2U);
    EXPECT_EQ(replaced(0, 0), 2);
    EXPECT_EQ(replaced(0, 1), 1);
    EXPECT_EQ(replaced(1, 0), 0);
    ASSERT_EQ(model.systems[0].loads[1].series.size(), 2U);
    EXPECT_EQ(model.systems[0].loads[1].series[0].value, 2.0F);
    EXPECT_EQ(model.systems[0].loads[1].series[0].time, 1.0F);
    EXPECT_EQ(kova_host::replaced_count({}), 0);
}

} // namespace
