#include "host/command_decoder.h"

namespace kova_host {

using kova_import::Argument;
using kova_import::ArgumentKind;

namespace {

constexpr std::size_t short_report_field = 80;
constexpr std::size_t long_report_field = 132;

std::string counted(std::size_t count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

bool is_report_field(std::size_t length) {
    return length == short_report_field || length == long_report_field;
}

bool length_is_right(const Argument &argument, std::size_t length) {
    if (argument.kind == ArgumentKind::literal || argument.kind == ArgumentKind::fragment)
        return length > 0;
    if (argument.kind == ArgumentKind::result && argument.width == 0)
        return is_report_field(length);
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
           !is_report_field(text.size());
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
    const kova_import::HostCommand *command = kova_import::find_host_command(keyword);
    if (command == nullptr)
        problems.emplace_back("the keyword is not known");
    else if (command->argument_count() != call.entry_point)
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

} // namespace

ReceivedCommand decode(const RawCall &call, std::vector<std::string> &problems) {
    ReceivedCommand received;
    received.entry_point = call.entry_point;
    decode_keyword(call, received, problems);
    if (received.command != nullptr)
        decode_arguments(call, received, problems);
    received.well_formed = problems.empty();
    return received;
}

} // namespace kova_host
