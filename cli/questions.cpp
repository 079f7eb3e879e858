#include "cli/questions.h"

#include "cli/output.h"
#include "cli/platform.h"
#include "cli/text.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string_view>

namespace kova_command {

namespace {

std::string folded(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    text = text.substr(first, text.find_last_not_of(blanks) - first + 1);
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                    : character;
    });
    return result;
}

} // namespace

bool can_ask() { return platform::is_terminal(stdin) && platform::is_terminal(stderr); }

std::optional<std::int32_t> button_of(const std::string &answer, const kova_host::Dialog &dialog) {
    const std::string word = folded(answer);
    if (word == "1")
        return kova_host::first_button;
    if (word == "2")
        return kova_host::second_button;
    if (word.empty())
        return std::nullopt;
    const bool is_first = folded(dialog.first_button).starts_with(word);
    const bool is_second = folded(dialog.second_button).starts_with(word);
    if (is_first == is_second)
        return std::nullopt;
    return is_first ? kova_host::first_button : kova_host::second_button;
}

std::optional<std::int32_t> ask(const kova_host::Dialog &dialog, std::int32_t preset,
                                const ReadLine &read_line) {
    const std::string first = printable(dialog.first_button);
    const std::string second = printable(dialog.second_button);
    const std::string &usual = preset == kova_host::first_button ? first : second;
    std::string title = printable(dialog.title);
    if (!title.empty() && title.back() == ':')
        title.pop_back();
    write_message(title + ": " + printable(dialog.question) + "\n  1  " + first + "\n  2  " +
                  second + '\n');
    const std::string again =
        "Please answer \"" + first + "\" or \"" + second + "\", or their number.\n";
    const std::string prompt = "Answer 1 or 2 (Enter for " + usual + "): ";
    for (;;) {
        write_message(prompt);
        const std::optional<std::string> line = read_line();
        if (!line) {
            write_message("\n");
            return std::nullopt;
        }
        if (folded(*line).empty())
            return preset;
        if (const std::optional<std::int32_t> button = button_of(*line, dialog))
            return button;
        write_message(again);
    }
}

std::optional<std::int32_t> ask_at_terminal(const kova_host::Dialog &dialog, std::int32_t preset) {
    return ask(dialog, preset, []() -> std::optional<std::string> {
        std::string line;
        if (!std::getline(std::cin, line))
            return std::nullopt;
        return line;
    });
}

} // namespace kova_command
