#include "host/command_decoder.h"

#include <array>
#include <cstdint>

namespace kova_host {

using kova_import::Argument;
using kova_import::ArgumentKind;
using kova_import::host_commands;
using kova_import::HostCommand;
using kova_import::is_report_width;

namespace {

/// The commands by a hash of their keyword: a large import has millions of commands, and bisection
/// would compare each keyword with seven others.
constexpr std::size_t places = 512;
static_assert(host_commands.size() * 2 <= places && host_commands.size() < 255);
constexpr std::uint8_t no_command = 255;

constexpr std::size_t place_of(std::string_view keyword) {
    const auto character = [&](std::size_t index) {
        return static_cast<std::size_t>(static_cast<unsigned char>(keyword[index]));
    };
    const std::size_t size = keyword.size();
    if (size == 0)
        return 0;
    // The factors let all but two keywords have a place to themselves.
    return (size * 107 + character(size / 2) * 85 + character(size - 1) * 125 +
            character(size / 4) * 66 + character(size - 1 - size / 4) * 46) %
           places;
}

constexpr auto commands_by_place = [] {
    std::array<std::uint8_t, places> list{};
    list.fill(no_command);
    for (std::size_t index = 0; index < host_commands.size(); ++index) {
        std::size_t place = place_of(host_commands[index].keyword);
        while (list[place] != no_command)
            place = (place + 1) % places;
        list[place] = static_cast<std::uint8_t>(index);
    }
    return list;
}();

const HostCommand *command_of(std::string_view keyword) {
    for (std::size_t place = place_of(keyword); commands_by_place[place] != no_command;
         place = (place + 1) % places) {
        const HostCommand &command = host_commands[commands_by_place[place]];
        if (command.keyword == keyword)
            return &command;
    }
    return nullptr;
}

/// What `decode` needs of a command again and again.
struct Shape {
    std::size_t argument_count = 0;
    bool numbers_only =
        true; ///< integers, reals and send buffers, of which only the address counts
};

constexpr auto shapes = [] {
    std::array<Shape, host_commands.size()> list{};
    for (std::size_t index = 0; index < list.size(); ++index) {
        list[index].argument_count = host_commands[index].argument_count();
        for (const Argument &argument : host_commands[index].arguments)
            if (is_text(argument.kind) || argument.kind == ArgumentKind::answer)
                list[index].numbers_only = false;
    }
    return list;
}();

const Shape &shape_of(const HostCommand &command) {
    return shapes[static_cast<std::size_t>(&command - host_commands.data())];
}

std::string counted(std::size_t count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

bool length_is_right(const Argument &argument, std::size_t length) {
    if (argument.kind == ArgumentKind::literal || argument.kind == ArgumentKind::fragment)
        return length > 0;
    if (argument.kind == ArgumentKind::result && argument.width == 0)
        return is_report_width(length);
    return length == argument.width;
}

std::string expected_length(const Argument &argument) {
    if (argument.kind == ArgumentKind::literal || argument.kind == ArgumentKind::fragment)
        return "at least its NUL";
    if (argument.width == 0)
        return "80 or 132 characters";
    return counted(argument.width, "character");
}

bool lacks_its_nul(const Argument &argument, std::string_view text) {
    if (argument.kind == ArgumentKind::literal || argument.kind == ArgumentKind::terminated_field)
        return text.back() != '\0';
    return argument.kind == ArgumentKind::fragment && text.back() != '\0' &&
           !is_report_width(text.size());
}

/// What is wrong with an argument; empty when nothing is.
std::string problem_of(const Argument &argument, const void *data, std::size_t length) {
    if (data == nullptr)
        return "is a null reference, a reference to data was expected";
    if (!is_text(argument.kind))
        return {};
    if (!length_is_right(argument, length))
        return "has " + counted(length, "character") + ", " + expected_length(argument) +
               " were expected";
    if (lacks_its_nul(argument, {static_cast<const char *>(data), length}))
        return "has " + counted(length, "character") +
               " without a NUL at the end, one was expected";
    return {};
}

void decode_keyword(const RawCall &call, ReceivedCommand &received,
                    std::vector<std::string> &problems) {
    received.keyword_length = call.lengths[0];
    if (call.keyword == nullptr) {
        problems.emplace_back("the keyword is a null reference, a text was expected");
        return;
    }
    std::string_view keyword(call.keyword, received.keyword_length);
    std::size_t nuls = 0;
    for (; !keyword.empty() && keyword.back() == '\0'; keyword.remove_suffix(1))
        ++nuls;
    received.keyword = keyword;
    if (nuls != 1)
        problems.push_back("the keyword ends in " + counted(nuls, "NUL") + ", one was expected");
    const HostCommand *command = command_of(keyword);
    if (command == nullptr)
        problems.emplace_back("the keyword is not known");
    else if (shape_of(*command).argument_count != call.entry_point)
        problems.push_back("the command came through host_call_" +
                           std::to_string(call.entry_point) + ", host_call_" +
                           std::to_string(command->argument_count()) + " was expected");
    else
        received.command = command;
}

void decode_arguments(const RawCall &call, ReceivedCommand &received,
                      std::vector<std::string> &problems) {
    std::size_t texts = 1; // the keyword is the first
    for (std::size_t index = 0; index < call.entry_point; ++index) {
        const Argument &argument = received.command->arguments[index];
        received.arguments[index] = call.arguments[index];
        if (is_text(argument.kind))
            received.lengths[index] = call.lengths[texts++];
        if (std::string problem =
                problem_of(argument, received.arguments[index], received.lengths[index]);
            !problem.empty())
            problems.push_back("argument " + std::to_string(index + 1) + " (" +
                               std::string(argument.name) + ") " + problem);
        if (argument.kind == ArgumentKind::answer)
            received.answer_on_arrival = received.integer(index);
    }
    for (; texts <= call.entry_point; ++texts)
        if (call.lengths[texts] != 0)
            problems.push_back("length " + std::to_string(texts + 1) +
                               ", which belongs to no text, is " +
                               std::to_string(call.lengths[texts]) + ", 0 was expected");
}

/// Takes the arguments of a command that has numbers only, as nearly all have. False, and nothing
/// taken, when there is anything wrong with them.
bool take_numbers(const RawCall &call, ReceivedCommand &received) {
    if (!shape_of(*received.command).numbers_only)
        return false;
    for (std::size_t index = 0; index < call.entry_point; ++index)
        if (call.arguments[index] == nullptr || call.lengths[index + 1] != 0)
            return false;
    received.arguments = call.arguments;
    return true;
}

} // namespace

ReceivedCommand decode(const RawCall &call, std::vector<std::string> &problems) {
    ReceivedCommand received;
    received.entry_point = call.entry_point;
    decode_keyword(call, received, problems);
    if (received.command != nullptr && !take_numbers(call, received))
        decode_arguments(call, received, problems);
    received.well_formed = problems.empty();
    return received;
}

} // namespace kova_host
