#include "host_test.h"

#include <algorithm>
#include <memory>

namespace {

using namespace host_test;
using kova_import::ArgumentKind;
using kova_import::host_commands;

struct KeywordAndEntry {
    std::string_view keyword;
    std::size_t entry_point;
};

// clang-format off
constexpr KeywordAndEntry expected[] = {
    {"GFILENAME", 1}, {"GSPRINTFI", 3}, {"GSPRINTFR", 3}, {"GWEIRTYPE", 2}, {"PADDCONST", 2},
    {"PADDPARAM", 2}, {"PALLBOUNDFUNC", 4}, {"PALLLOADFUNC", 4}, {"PBEDDT", 1}, {"PBEDOPT", 1},
    {"PBOTSEG", 2}, {"PBOTTOMELEVATION", 2}, {"PBQ", 4}, {"PBRKTF", 5}, {"PCLEARINFO", 0},
    {"PCMAX", 2}, {"PCONSTANTSREFRESH", 0}, {"PCONSTISUSED", 3}, {"PCONSTPARAM", 4},
    {"PCONSTVALUEBYISC", 3}, {"PCONVB", 2}, {"PCONVQ", 2}, {"PCONVR", 2}, {"PCONVV", 1},
    {"PCONVW", 2}, {"PDENSITY", 2}, {"PDEXP", 2}, {"PDIALOG", 5}, {"PDMULT", 2}, {"PENDJULIAN", 1},
    {"PEXCHANGEFUNCDESC", 3}, {"PEXCHANGESREFRESH", 0}, {"PFDISS", 3}, {"PFILENAME", 1},
    {"PFLOWFUNCDESC", 3}, {"PFLOWSREFRESH", 0}, {"PFLOWTYPE", 2}, {"PFRACMAXTS", 1},
    {"PHYDROFILE", 1}, {"PHYDSKIPDATE", 3}, {"PHYDSKIPTIME", 3}, {"PIBC", 3}, {"PICRD", 1},
    {"PIFIELD", 2}, {"PINFOHTML", 1}, {"PINITC", 3}, {"PINITIALDEPTH", 2},
    {"PINITIALSURFACEELEVATION", 2}, {"PINTYP", 1}, {"PIQ", 4}, {"PIQOPT", 2}, {"PIRSEG", 4},
    {"PJQ", 4}, {"PJRSEG", 4}, {"PLENGTH", 4}, {"PLOPT", 1}, {"PMAXDT", 1}, {"PMINDT", 1},
    {"PMODELOUTPUTINTERVAL", 1}, {"PMODELTYPE", 1}, {"PNBFP", 3}, {"PNBRKQ", 3}, {"PNBRKTF", 3},
    {"PNBWK", 3}, {"PNEGSLN", 1}, {"PNFIELD", 1}, {"PNINQ", 2}, {"PNOBC", 2}, {"PNOBRKS", 3},
    {"PNOQFUNC", 5}, {"PNOQS", 3}, {"PNORFUNC", 5}, {"PNORS", 3}, {"PNPSFILE", 1}, {"PNRFLD", 1},
    {"PNTEX", 2}, {"PNUMSEG", 1}, {"PNUMSYS", 1}, {"PPARAMSREFRESH", 0}, {"PPROGRESS", 1},
    {"PSCALB", 2}, {"PSCALEPARAMBYISC", 3}, {"PSCALEQ", 2}, {"PSCALER", 2}, {"PSCALV", 1},
    {"PSCALW", 2}, {"PSEEDDATE", 3}, {"PSEEDTIME", 3}, {"PSEGLENGTH", 2}, {"PSEGMENTSREFRESH", 0},
    {"PSEGMINDEPTH", 2}, {"PSEGNAME", 2}, {"PSEGROUGH", 2}, {"PSEGSLOPE", 2}, {"PSEGTYPE", 2},
    {"PSEGWIDTH", 2}, {"PSIDESLOPE", 2}, {"PSOLUTIONTYPE", 1}, {"PSYSNAME", 3},
    {"PSYSTEMSREFRESH", 0}, {"PTFSREFRESH", 0}, {"PVEXP", 2}, {"PVMULT", 2}, {"PVOLUME", 2},
    {"PWEIRHEIGHT", 2}, {"PXAREA", 4},
};
// clang-format on

/// Sound arguments for a command.
std::vector<Value> sound_arguments(const kova_import::HostCommand &command, SendBuffer &buffer) {
    std::vector<Value> values;
    for (std::size_t index = 0; index < command.argument_count(); ++index) {
        const auto &argument = command.arguments[index];
        switch (argument.kind) {
        case ArgumentKind::real:
            values.emplace_back(2.5F);
            break;
        case ArgumentKind::literal:
            values.emplace_back(literal(command.keyword == "GSPRINTFR" ? "%f" : "%d"));
            break;
        case ArgumentKind::field:
            values.emplace_back(field("text", argument.width));
            break;
        case ArgumentKind::terminated_field:
            values.emplace_back(terminated_field("text", argument.width));
            break;
        case ArgumentKind::fragment:
            values.emplace_back(literal("<p>"));
            break;
        case ArgumentKind::result:
            values.emplace_back(field("", argument.width == 0 ? 132 : argument.width));
            break;
        case ArgumentKind::send_buffer:
            values.emplace_back(&buffer);
            break;
        default:
            values.emplace_back(1);
        }
    }
    return values;
}

TEST(CommandTableTest, HasEveryKeywordAtItsEntryPoint) {
    ASSERT_EQ(std::size(expected), 106U);
    ASSERT_EQ(host_commands.size(), std::size(expected));
    for (std::size_t index = 0; index < host_commands.size(); ++index) {
        EXPECT_EQ(host_commands[index].keyword, expected[index].keyword);
        EXPECT_EQ(host_commands[index].argument_count(), expected[index].entry_point)
            << expected[index].keyword;
    }
}

TEST(CommandTableTest, IsInTheOrderOfTheAlphabet) {
    EXPECT_TRUE(std::is_sorted(
        host_commands.begin(), host_commands.end(),
        [](const auto &left, const auto &right) { return left.keyword < right.keyword; }));
    for (const auto &command : host_commands)
        EXPECT_EQ(kova_import::find_host_command(command.keyword), &command);
    EXPECT_EQ(kova_import::find_host_command(""), nullptr);
    EXPECT_EQ(kova_import::find_host_command("ZZZ"), nullptr);
}

TEST(CommandTableTest, EveryCommandHasAHandler) {
    for (const auto &row : expected)
        EXPECT_TRUE(kova_host::ReferenceHost::handles(row.keyword)) << row.keyword;
    EXPECT_FALSE(kova_host::ReferenceHost::handles("PNONSENSE"));
}

struct SoundCommandTest : HostTest {};

TEST_F(SoundCommandTest, EveryCommandWithSoundArgumentsIsTaken) {
    SendBuffer buffer(kova_import::send_buffer_size);
    for (const auto &command : host_commands)
        send_keyword(literal(command.keyword), sound_arguments(command, buffer));
    EXPECT_EQ(host.command_count(), 106U);
    EXPECT_EQ(violations(), "");
    const std::string lines = log();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 106);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '?'), 0);
}

TEST_F(SoundCommandTest, AnyArgumentMayBeNull) {
    SendBuffer buffer(kova_import::send_buffer_size);
    for (const auto &command : host_commands) {
        for (std::size_t index = 0; index < command.argument_count(); ++index) {
            host.reset();
            auto values = sound_arguments(command, buffer);
            values[index] = Null{};
            send_keyword(literal(command.keyword), std::move(values));
            EXPECT_GE(host.violation_count(), 1U) << command.keyword;
        }
    }
}

/// Texts of every length up to a little more than the right one, each in memory of just that
/// length.
TEST_F(SoundCommandTest, TextsMayHaveAnyLength) {
    constexpr std::array<std::size_t, 14> lengths = {0,  1,  2,  5,  6,   7,   29,
                                                     31, 39, 41, 79, 511, 513, 514};
    SendBuffer buffer(kova_import::send_buffer_size);
    for (const auto &command : host_commands) {
        for (std::size_t index = 0; index < command.argument_count(); ++index) {
            if (!is_text(command.arguments[index].kind))
                continue;
            for (const std::size_t length : lengths) {
                auto values = sound_arguments(command, buffer);
                values[index] = Text{std::string(length, 'x')};
                send_keyword(literal(command.keyword), std::move(values));
            }
        }
    }
    EXPECT_GT(host.violation_count(), 0U);
}

} // namespace
