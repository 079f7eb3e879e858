#include "host_test.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace host_test;
using kova_import::ArgumentKind;
using kova_import::host_commands;

/// A keyword and its arguments, one letter each: i integer, r real, l literal, f field, n field
/// with a NUL, h HTML fragment, A answer, T text that the host writes, b send buffer; texts of a
/// fixed width have it behind them.
struct KeywordAndArguments {
    std::string_view keyword;
    std::string_view arguments;
};

// clang-format off
constexpr KeywordAndArguments expected[] = {
    {"GFILENAME", "T512"},
    {"GSPRINTFI", "Tli"},
    {"GSPRINTFR", "Tlr"},
    {"GWEIRTYPE", "ir"},
    {"PADDCONST", "ii"},
    {"PADDPARAM", "ii"},
    {"PALLBOUNDFUNC", "iibb"},
    {"PALLLOADFUNC", "iibb"},
    {"PBEDDT", "r"},
    {"PBEDOPT", "i"},
    {"PBOTSEG", "ii"},
    {"PBOTTOMELEVATION", "ir"},
    {"PBQ", "iiir"},
    {"PBRKTF", "iiirr"},
    {"PCLEARINFO", ""},
    {"PCMAX", "ir"},
    {"PCONSTANTSREFRESH", ""},
    {"PCONSTISUSED", "iii"},
    {"PCONSTPARAM", "iiir"},
    {"PCONSTVALUEBYISC", "iir"},
    {"PCONVB", "ir"},
    {"PCONVQ", "ir"},
    {"PCONVR", "ir"},
    {"PCONVV", "r"},
    {"PCONVW", "ir"},
    {"PDENSITY", "ir"},
    {"PDEXP", "ir"},
    {"PDIALOG", "llllA"},
    {"PDMULT", "ir"},
    {"PENDJULIAN", "r"},
    {"PEXCHANGEFUNCDESC", "iif30"},
    {"PEXCHANGESREFRESH", ""},
    {"PFDISS", "iir"},
    {"PFILENAME", "n513"},
    {"PFLOWFUNCDESC", "iif30"},
    {"PFLOWSREFRESH", ""},
    {"PFLOWTYPE", "ii"},
    {"PFRACMAXTS", "r"},
    {"PHYDROFILE", "f512"},
    {"PHYDSKIPDATE", "iii"},
    {"PHYDSKIPTIME", "iii"},
    {"PIBC", "iii"},
    {"PICRD", "i"},
    {"PIFIELD", "ii"},
    {"PINFOHTML", "h"},
    {"PINITC", "iir"},
    {"PINITIALDEPTH", "ir"},
    {"PINITIALSURFACEELEVATION", "ir"},
    {"PINTYP", "i"},
    {"PIQ", "iiii"},
    {"PIQOPT", "ii"},
    {"PIRSEG", "iiii"},
    {"PJQ", "iiii"},
    {"PJRSEG", "iiii"},
    {"PLENGTH", "iiir"},
    {"PLOPT", "i"},
    {"PMAXDT", "r"},
    {"PMINDT", "r"},
    {"PMODELOUTPUTINTERVAL", "r"},
    {"PMODELTYPE", "i"},
    {"PNBFP", "iii"},
    {"PNBRKQ", "iii"},
    {"PNBRKTF", "iii"},
    {"PNBWK", "iii"},
    {"PNEGSLN", "i"},
    {"PNFIELD", "i"},
    {"PNINQ", "ii"},
    {"PNOBC", "ii"},
    {"PNOBRKS", "iii"},
    {"PNOQFUNC", "iiirr"},
    {"PNOQS", "iii"},
    {"PNORFUNC", "iiirr"},
    {"PNORS", "iii"},
    {"PNPSFILE", "f512"},
    {"PNRFLD", "i"},
    {"PNTEX", "ii"},
    {"PNUMSEG", "i"},
    {"PNUMSYS", "i"},
    {"PPARAMSREFRESH", ""},
    {"PPROGRESS", "i"},
    {"PSCALB", "ir"},
    {"PSCALEPARAMBYISC", "iir"},
    {"PSCALEQ", "ir"},
    {"PSCALER", "ir"},
    {"PSCALV", "r"},
    {"PSCALW", "ir"},
    {"PSEEDDATE", "iii"},
    {"PSEEDTIME", "iii"},
    {"PSEGLENGTH", "ir"},
    {"PSEGMENTSREFRESH", ""},
    {"PSEGMINDEPTH", "ir"},
    {"PSEGNAME", "if40"},
    {"PSEGROUGH", "ir"},
    {"PSEGSLOPE", "ir"},
    {"PSEGTYPE", "ii"},
    {"PSEGWIDTH", "ir"},
    {"PSIDESLOPE", "ir"},
    {"PSOLUTIONTYPE", "i"},
    {"PSYSNAME", "in31n6"},
    {"PSYSTEMSREFRESH", ""},
    {"PTFSREFRESH", ""},
    {"PVEXP", "ir"},
    {"PVMULT", "ir"},
    {"PVOLUME", "ir"},
    {"PWEIRHEIGHT", "ir"},
    {"PXAREA", "iiir"},
};
// clang-format on

std::string letters_of(const kova_import::HostCommand &command) {
    std::string letters;
    for (std::size_t index = 0; index < command.argument_count(); ++index) {
        const auto &argument = command.arguments[index];
        letters += "-irlfnhATb"[static_cast<std::size_t>(argument.kind)];
        if (argument.width != 0)
            letters += std::to_string(argument.width);
    }
    return letters;
}

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

TEST(CommandTableTest, HasEveryKeywordWithItsArguments) {
    ASSERT_EQ(std::size(expected), 106U);
    ASSERT_EQ(host_commands.size(), std::size(expected));
    for (std::size_t index = 0; index < host_commands.size(); ++index) {
        EXPECT_EQ(host_commands[index].keyword, expected[index].keyword);
        EXPECT_EQ(letters_of(host_commands[index]), expected[index].arguments)
            << expected[index].keyword;
    }
}

TEST(CommandTableTest, GetsDataFromTheHostWithFourCommandsOnly) {
    std::vector<std::string_view> getting;
    for (const auto &command : host_commands)
        if (command.direction() == kova_import::Direction::get)
            getting.push_back(command.keyword);
    EXPECT_EQ(getting,
              (std::vector<std::string_view>{"GFILENAME", "GSPRINTFI", "GSPRINTFR", "PDIALOG"}));
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

TEST_F(SoundCommandTest, KeywordsThatOnlyLookLikeOneAreNotKnown) {
    std::vector<std::string> keywords = {"", "P", "PP", std::string(600, 'P')};
    for (const auto &command : host_commands) {
        const std::string keyword(command.keyword);
        keywords.push_back(keyword + 'X');
        keywords.push_back(keyword.substr(1));
        for (std::size_t index = 0; index < keyword.size(); ++index) {
            keywords.push_back(keyword);
            keywords.back()[index] = '\xE9';
            keywords.push_back(keyword.substr(0, index));
        }
    }
    std::uint64_t unknown = 0;
    for (const std::string &keyword : keywords) {
        if (kova_import::find_host_command(keyword) != nullptr)
            continue;
        ++unknown;
        send(keyword);
        EXPECT_EQ(host.violation_count(), unknown) << keyword;
    }
    EXPECT_GT(unknown, 1000U);
    EXPECT_EQ(host.violations().back().sentence, "the keyword is not known");
}

TEST_F(SoundCommandTest, NumbersTravelWithoutLengths) {
    send("PVOLUME", 1, 2.5F);
    EXPECT_EQ(host.violation_count(), 0U);
    Text keyword = literal("PVOLUME");
    std::int32_t segment = 1;
    float volume = 3.5F;
    call(2, keyword.bytes.data(), {&segment, &volume}, {keyword.bytes.size(), 0, 4});
    EXPECT_EQ(violations(), "length 3, which belongs to no text, is 4, 0 was expected\n");
    EXPECT_EQ(host.model().segments[0].volume, 2.5F);
}

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
