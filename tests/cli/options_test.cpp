#include "cli/options.h"
#include "cli/questions.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kova_command {
namespace {

ImportOptions import_of(const std::vector<std::string> &arguments) {
    const CommandLine line = parse_command_line(arguments);
    EXPECT_TRUE(std::holds_alternative<ImportOptions>(line)) << arguments.front();
    return std::holds_alternative<ImportOptions>(line) ? std::get<ImportOptions>(line)
                                                       : ImportOptions();
}

std::string error_of(const std::vector<std::string> &arguments) {
    const CommandLine line = parse_command_line(arguments);
    if (!std::holds_alternative<Reply>(line))
        return "no error";
    EXPECT_EQ(std::get<Reply>(line).exit_status, 2);
    return std::get<Reply>(line).error;
}

TEST(Options, AreFoundWhereverTheyStand) {
    EXPECT_EQ(import_of({"river.inp"}).file, "river.inp");
    EXPECT_EQ(import_of({"import", "river.inp"}).file, "river.inp");
    EXPECT_EQ(import_of({"--scope", "transport", "river.inp"}).file, "river.inp");
    EXPECT_TRUE(import_of({"river.inp", "--scope=transport"}).transport_only);
    EXPECT_FALSE(import_of({"river.inp", "--scope=all"}).transport_only);
    EXPECT_FALSE(import_of({"--index-names", "no", "import", "river.inp"}).index_segment_names);
    EXPECT_EQ(import_of({"--log", "check", "river.inp"}).log, "check");
    EXPECT_EQ(import_of({"--log", "-x.log", "river.inp"}).log, "-x.log");
    EXPECT_EQ(import_of({"--log={}", "river.inp"}).log, "{}");
    EXPECT_EQ(import_of({"--log", "[a,b]", "river.inp"}).log, "[a,b]");
    EXPECT_TRUE(import_of({"--scope=all", "--scope", "transport", "river.inp"}).transport_only);
    EXPECT_TRUE(import_of({"-q", "river.inp"}).quiet);
    EXPECT_TRUE(import_of({"river.inp", "-v", "--json"}).verbose);
    EXPECT_TRUE(import_of({"river.inp", "--json", "--data"}).data);
    EXPECT_FALSE(import_of({"river.inp", "--json"}).data);
    EXPECT_NE(error_of({"river.inp", "--data"}).find("--json"), std::string::npos);
}

TEST(Options, TakeAnyFileName) {
    for (const char *name : {"", "-", "[a,b]", "{}", "a b", "%%", "\xFF\xFE", "--ask", "check"})
        EXPECT_EQ(import_of({"--", name}).file, name);
    for (const char *name : {"", "-", "[a,b]", "{}", "import"})
        EXPECT_EQ(import_of({"import", name}).file, name);
    const CommandLine line = parse_command_line({"check", "[a,b]", "", "--", "-x", "{}"});
    ASSERT_TRUE(std::holds_alternative<CheckOptions>(line));
    EXPECT_EQ(std::get<CheckOptions>(line).files,
              (std::vector<std::string>{"[a,b]", "", "-x", "{}"}));
}

TEST(Options, SuggestWhatWasMeant) {
    EXPECT_NE(error_of({"--scop", "all", "f"}).find("--scop; did you mean --scope?"),
              std::string::npos);
    EXPECT_NE(error_of({"--scope", "transprot", "f"}).find("did you mean transport?"),
              std::string::npos);
    EXPECT_NE(error_of({"chekc", "f"}).find("did you mean check?"), std::string::npos);
    EXPECT_NE(error_of({"check", "--fromat=json", "f"}).find("did you mean --format?"),
              std::string::npos);
    EXPECT_NE(error_of({"check", "--ask", "f"}).find("belongs to \"import\""), std::string::npos);
    EXPECT_NE(error_of({"check", "--json", "f"})
                  .find("no option --json of \"check\"; it belongs to \"import\"; use --format "
                        "json\n"),
              std::string::npos);
    EXPECT_NE(error_of({"import", "--format=json", "f"})
                  .find("it belongs to \"check\"; for JSON use --json\n"),
              std::string::npos);
    EXPECT_NE(error_of({"--wibble", "f"}).find("no option --wibble\n"), std::string::npos);
}

TEST(Options, RefuseWrongUse) {
    EXPECT_NE(error_of({}).find("Usage:"), std::string::npos);
    EXPECT_NE(error_of({"import"}).find("name the file"), std::string::npos);
    EXPECT_NE(error_of({"check"}).find("at least one file"), std::string::npos);
    EXPECT_NE(error_of({"a.inp", "b.inp"}).find("one file is imported"), std::string::npos);
    EXPECT_NE(error_of({"-q", "-v", "a.inp"}).find("excludes"), std::string::npos);
    EXPECT_NE(error_of({"a.inp", "--log"}).find("--log needs a value"), std::string::npos);
    EXPECT_NE(error_of({"a.inp", "--index-names", "1"}).find("not one of yes, no"),
              std::string::npos);
}

TEST(Questions, UnderstandAnswers) {
    kova_host::Dialog dialog;
    dialog.first_button = "Transport Only";
    dialog.second_button = "All";
    for (const char *answer : {"1", "t", "Transport Only", " TRANSPORT\r"})
        EXPECT_EQ(button_of(answer, dialog), kova_host::first_button) << answer;
    for (const char *answer : {"2", "a", "All", "all "})
        EXPECT_EQ(button_of(answer, dialog), kova_host::second_button) << answer;
    for (const char *answer : {"", "3", "x", "alles", "12"})
        EXPECT_EQ(button_of(answer, dialog), std::nullopt) << answer;
}

TEST(Questions, AreAskedUntilAnswered) {
    kova_host::Dialog dialog;
    dialog.first_button = "Yes";
    dialog.second_button = "No";
    std::vector<std::string> lines = {"no", "perhaps", ""};
    const auto read_line = [&lines]() -> std::optional<std::string> {
        if (lines.empty())
            return std::nullopt;
        std::string line = lines.back();
        lines.pop_back();
        return line;
    };
    EXPECT_EQ(ask(dialog, kova_host::first_button, read_line), kova_host::first_button);
    EXPECT_EQ(ask(dialog, kova_host::first_button, read_line), kova_host::second_button);
    EXPECT_EQ(ask(dialog, kova_host::first_button, read_line), std::nullopt);
}

} // namespace
} // namespace kova_command
