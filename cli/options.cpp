#include "cli/options.h"

#include "cli/import_outcome.h"
#include "cli/platform.h"
#include "cli/suggestions.h"
#include "cli/text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

namespace kova_command {

namespace {

constexpr const char *examples = R"(Examples:
  kova-import river.inp                          import a file and tell what it brought
  kova-import --scope transport river.inp        only the network and its transport
  kova-import --ask river.inp                    be asked for the options
  kova-import --log river.log river.inp          also write every host command to a file
  kova-import --report river.html river.inp      also write a page for people
  kova-import --json river.inp > river.json      the result for a program
  kova-import check *.inp                        would these files come across whole?
  kova-import check --format sarif *.inp         the same, for tools that show findings

Exit status of an import:
  0   imported
  1   stopped at a read error, also one in the header, or for want of memory
  2   wrong use
  3   the file cannot be opened
Exit status of a check:
  0   every file would come across whole; converted data and defaults are reported only
  1   at least one file would not
  2   wrong use
Of both:
  70  the installation is broken, or an internal error
  74  the results cannot be written
)";

std::string joined(const std::vector<std::string> &words, const char *separator) {
    std::string text;
    for (const std::string &word : words)
        text += (text.empty() ? "" : separator) + word;
    return text;
}

/// Help as people read it: both sub-commands on one page.
class HelpFormatter : public CLI::Formatter {
  public:
    std::string make_usage(const CLI::App *, std::string) const override {
        return "Usage:\n  kova-import [import] [OPTION...] FILE\n"
               "  kova-import check [OPTION...] FILE...\n";
    }
    std::string make_option_opts(const CLI::Option *option) const override {
        return option->get_type_name().empty() ? "" : " " + option->get_type_name();
    }
    std::string make_subcommands(const CLI::App *program, CLI::AppFormatMode) const override {
        std::string text;
        for (const CLI::App *command : program->get_subcommands({}))
            text += "\n" + command->get_name() + ": " + command->get_description() +
                    make_groups(command, CLI::AppFormatMode::Sub);
        return text;
    }
};

/// The options of both sub-commands, with the parser that fills them.
class Parser {
  public:
    Parser();

    [[nodiscard]] CommandLine parse(const std::vector<std::string> &arguments);

  private:
    // Files are told from options before the library sees the arguments, since it would look into
    // their names.
    struct Arguments {
        std::string command;              ///< empty when the first word was not taken for one
        std::vector<std::string> options; ///< with their values
        std::vector<std::string> files;
        std::string without_value; ///< an option that should have one
        bool after_dashes = false; ///< `--` came first: no file is a mistaken sub-command
    };

    void add_import();
    void add_check();
    template <class Options>
    static void add_answers(CLI::App &command, Options &options);
    static void add_choice(CLI::App &command, const std::string &name,
                           const std::vector<std::string> &words, const std::string &help,
                           const std::function<void(const std::string &)> &take_word);
    [[nodiscard]] Arguments split(const std::vector<std::string> &arguments);
    [[nodiscard]] bool takes_value(const std::string &option) const;
    [[nodiscard]] std::vector<std::string> option_names(const CLI::App &command) const;
    [[nodiscard]] CommandLine wrong_use(const std::string &message) const;
    [[nodiscard]] CommandLine unknown_option(const CLI::App &command,
                                             const std::string &option) const;
    [[nodiscard]] CommandLine take(Arguments arguments);

    CLI::App app_{"Imports model input files of version 7 (legacy) and version 8 (current).",
                  "kova-import"};
    CLI::App *import_command_ = nullptr;
    CLI::App *check_command_ = nullptr;
    ImportOptions import_;
    CheckOptions check_;
};

Parser::Parser() {
    constexpr std::size_t first_column = 28;
    const auto formatter = std::make_shared<HelpFormatter>();
    formatter->column_width(first_column);
    app_.formatter(formatter);
    app_.footer(examples);
    app_.set_version_flag("--version", std::string("kova-import ") + KOVA_COMMAND_VERSION,
                          "Show the version and exit");
    app_.set_help_flag("-h,--help", "Show this help and exit");
    add_import();
    add_check();
}

/// Lets only `words` pass.
CLI::Validator one_of(const std::vector<std::string> &words) {
    return {[words](std::string &value) -> std::string {
                if (std::find(words.begin(), words.end(), value) != words.end())
                    return {};
                const auto meant = nearest(value, words);
                return "\"" + value + "\" is not one of " + joined(words, ", ") +
                       (meant ? "; did you mean " + *meant + "?" : "");
            },
            ""};
}

void Parser::add_import() {
    CLI::App &command =
        *app_.add_subcommand("import", "Import FILE; also done when no sub-command is named");
    import_command_ = &command;
    command.set_help_flag();
    add_answers(command, import_);
    command.add_flag("--ask", import_.ask, "Ask the questions of the import on the terminal");
    command.add_option("--log", import_.log, "Write every host command to LOG")->type_name("LOG");
    command.add_option("--report", import_.report, "Write a report of the import to HTML, a page")
        ->type_name("HTML");
    CLI::Option *const json =
        command.add_flag("--json", import_.json, "Write the result to standard output as JSON");
    command.add_flag("--data", import_.data, "With --json: and all data from the flow paths on")
        ->needs(json);
    CLI::Option *const verbose = command.add_flag("-v,--verbose", import_.verbose,
                                                  "Show every notice and the library's own lines");
    command.add_flag("-q,--quiet", import_.quiet, "Show errors, warnings and notes only")
        ->excludes(verbose);
}

void Parser::add_check() {
    CLI::App &command = *app_.add_subcommand(
        "check", "Read whole files and tell what would not come across; nothing is asked");
    check_command_ = &command;
    command.set_help_flag();
    add_choice(command, "--format", {"text", "json", "sarif"},
               "How to write the result: text (default), json or sarif",
               [this](const std::string &word) {
                   if (word != "text")
                       check_.format = word == "json" ? CheckFormat::json : CheckFormat::sarif;
               });
    add_answers(command, check_);
    CLI::Option *const verbose =
        command.add_flag("-v,--verbose", check_.verbose, "Show every notice in full");
    command.add_flag("-q,--quiet", check_.quiet, "Show only verdicts, not the notices")
        ->excludes(verbose);
}

template <class Options>
void Parser::add_answers(CLI::App &command, Options &options) {
    add_choice(
        command, "--scope", {"all", "transport"},
        "What to import: all (default), or only the network and its transport",
        [&options](const std::string &word) { options.transport_only = word == "transport"; });
    add_choice(
        command, "--index-names", {"yes", "no"},
        "Put its number before the name of each segment: yes (default) or no",
        [&options](const std::string &word) { options.index_segment_names = word == "yes"; });
}

void Parser::add_choice(CLI::App &command, const std::string &name,
                        const std::vector<std::string> &words, const std::string &help,
                        const std::function<void(const std::string &)> &take_word) {
    command.add_option_function<std::string>(name, take_word, help)
        ->check(one_of(words))
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
        ->type_name(joined(words, "|"));
}

bool Parser::takes_value(const std::string &option) const {
    const auto has = [&](const CLI::App &command) {
        const CLI::Option *const found = command.get_option_no_throw(option);
        return found != nullptr && found->get_expected_min() > 0;
    };
    return has(*import_command_) || has(*check_command_);
}

Parser::Arguments Parser::split(const std::vector<std::string> &arguments) {
    Arguments result;
    bool only_files = false;
    bool first_word = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string &argument = arguments[i];
        if (!only_files && argument == "--") {
            only_files = true;
            result.after_dashes = first_word;
        } else if (!only_files && argument.size() > 1 && argument.front() == '-') {
            if (!takes_value(argument))
                result.options.push_back(argument);
            else if (++i < arguments.size() && !arguments[i].empty())
                // In one piece, so that the value may look like an option.
                result.options.push_back(argument + '=' + arguments[i]);
            else
                result.without_value = argument;
        } else {
            const bool is_command =
                first_word && !only_files &&
                (argument == import_command_->get_name() || argument == check_command_->get_name());
            if (is_command)
                result.command = argument;
            else
                result.files.push_back(argument);
            first_word = false;
        }
    }
    return result;
}

std::vector<std::string> Parser::option_names(const CLI::App &command) const {
    std::vector<std::string> names = {"--version", "--help"};
    for (const CLI::Option *option : command.get_options())
        for (const std::string &name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

CommandLine Parser::wrong_use(const std::string &message) const {
    return Reply{exit_status::wrong_use, "",
                 "kova-import: error: " + message + "\nTry \"kova-import --help\".\n"};
}

/// The other sub-command's option for JSON.
std::string hint_for(std::string_view option) {
    if (option == "--json")
        return "; use --format json";
    return option == "--format" ? "; for JSON use --json" : "";
}

CommandLine Parser::unknown_option(const CLI::App &command, const std::string &option) const {
    const std::string name = option.substr(0, option.find('='));
    std::string message = "there is no option " + printable(name);
    if (const auto meant = nearest(name, option_names(command)))
        return wrong_use(message + "; did you mean " + *meant + "?");
    const CLI::App *const other = &command == import_command_ ? check_command_ : import_command_;
    if (other->get_option_no_throw(name) != nullptr)
        return wrong_use(message + " of \"" + command.get_name() + "\"; it belongs to \"" +
                         other->get_name() + '"' + hint_for(name));
    return wrong_use(message);
}

CommandLine Parser::take(Arguments arguments) {
    const bool is_check = arguments.command == check_command_->get_name();
    if (arguments.files.empty())
        return wrong_use(is_check ? "name at least one file to check" : "name the file to import");
    if (is_check) {
        check_.files = std::move(arguments.files);
        return check_;
    }
    // A word that is no file but nearly a sub-command.
    const std::string &first = arguments.files.front();
    std::error_code error;
    if (arguments.command.empty() && !arguments.after_dashes &&
        first.find_first_of("./\\:") == std::string::npos &&
        !std::filesystem::exists(platform::path_of(first), error))
        if (const auto meant = nearest(first, {"import", "check"}))
            return wrong_use("there is no sub-command or file " + printable(first) +
                             "; did you mean " + *meant + "?");
    if (arguments.files.size() > 1)
        return wrong_use(
            "one file is imported at a time, but " +
            counted(static_cast<std::int64_t>(arguments.files.size()), "file", "files") +
            " are named; to look at several, use \"kova-import check\"");
    import_.file = std::move(arguments.files.front());
    return import_;
}

CommandLine Parser::parse(const std::vector<std::string> &arguments) {
    Arguments split_arguments = split(arguments);
    const bool is_check = split_arguments.command == check_command_->get_name();
    CLI::App &command = is_check ? *check_command_ : *import_command_;
    command.allow_extras();
    const auto &options = split_arguments.options;
    const auto has = [&](const char *name) {
        return std::find(options.begin(), options.end(), name) != options.end();
    };
    if (has("--version"))
        return Reply{exit_status::success, app_.version() + '\n', ""};
    if (arguments.empty())
        return Reply{exit_status::wrong_use, "", app_.help()};
    if (has("--help") || has("-h"))
        return Reply{exit_status::success, app_.help(), ""};
    if (!split_arguments.without_value.empty())
        return wrong_use("the option " + split_arguments.without_value + " needs a value");
    std::vector<std::string> reversed = {command.get_name()};
    reversed.insert(reversed.end(), options.begin(), options.end());
    std::reverse(reversed.begin(), reversed.end());
    try {
        app_.parse(std::move(reversed));
    } catch (const CLI::ParseError &error) {
        return wrong_use(printable(error.what()));
    }
    if (const std::vector<std::string> unknown = command.remaining(true); !unknown.empty())
        return unknown_option(command, unknown.front());
    return take(std::move(split_arguments));
}

} // namespace

CommandLine parse_command_line(const std::vector<std::string> &arguments) {
    return Parser().parse(arguments);
}

} // namespace kova_command
