// Prints the index of all host commands for docs/host-link.md, as a Markdown table.

#include "control/host_commands.h"

#include <iostream>
#include <string_view>

namespace {

using kova_import::Argument;
using kova_import::ArgumentKind;
using kova_import::HostCommand;

std::string_view kind_of(const Argument &argument) {
    switch (argument.kind) {
    case ArgumentKind::none:
        break;
    case ArgumentKind::integer:
        return "integer";
    case ArgumentKind::real:
        return "real";
    case ArgumentKind::literal:
        return "literal text";
    case ArgumentKind::field:
    case ArgumentKind::terminated_field:
        return "field";
    case ArgumentKind::fragment:
        return "fragment";
    case ArgumentKind::answer:
        return "answer";
    case ArgumentKind::result:
        return "result";
    case ArgumentKind::send_buffer:
        return "send buffer";
    }
    return {};
}

void print_kind(const Argument &argument) {
    std::cout << kind_of(argument);
    if (argument.width != 0)
        std::cout << '[' << argument.width << ']';
    else if (argument.kind == ArgumentKind::result)
        std::cout << "[80 or 132]";
    if (argument.kind == ArgumentKind::terminated_field)
        std::cout << " with NUL";
}

/// A kind holds for the names behind it, up to the next kind.
void print_arguments(const HostCommand &command) {
    const Argument *before = nullptr;
    for (std::size_t i = 0; i < command.argument_count(); ++i) {
        const Argument &argument = command.arguments[i];
        if (before != nullptr)
            std::cout << ", ";
        if (before == nullptr || before->kind != argument.kind || before->width != argument.width) {
            print_kind(argument);
            std::cout << ' ';
        }
        std::cout << '*' << argument.name << '*';
        before = &argument;
    }
    if (before == nullptr)
        std::cout << "none";
}

} // namespace

int main() {
    std::cout << "| Keyword | Entry point | Arguments | What it does |\n|---|---|---|---|\n";
    for (const HostCommand &command : kova_import::host_commands) {
        std::cout << "| `" << command.keyword << "` | `host_call_" << command.argument_count()
                  << "` | ";
        print_arguments(command);
        std::cout << " | " << command.effect << " |\n";
    }
    return std::cout.flush() ? 0 : 1;
}
