#include "host/actions.h"

#include "host/number_format.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace kova_host {

namespace {

std::string_view up_to_nul(std::string_view text) { return text.substr(0, text.find('\0')); }

/// Writes a text into a field: padded with blanks, cut at the field's length.
void fill(const ReceivedCommand &command, std::size_t index, std::string_view text) {
    auto *field = static_cast<char *>(command.arguments[index]);
    const std::size_t length = command.lengths[index];
    const std::size_t size = std::min(text.size(), length);
    std::copy_n(text.data(), size, field);
    std::fill_n(field + size, length - size, ' ');
}

void fill_formatted(HostState &host, const ReceivedCommand &command,
                    const std::optional<std::string> &text) {
    if (text)
        fill(command, 0, *text);
    else
        host.violate(command, "the format is \"" + std::string(up_to_nul(command.text(1))) +
                                  "\", one with a single conversion of the value was expected");
}

DialogAnswer answer_from(const DialogSettings &settings, HostState &, const Dialog &dialog) {
    if (dialog.title == "Set Verbose Option:")
        return settings.verbose;
    if (dialog.title == "Import Options")
        return settings.scope;
    if (dialog.title == "Index Segment Names")
        return settings.index_segment_names;
    if (dialog.title == "Continue")
        return settings.continue_import;
    return std::nullopt;
}

DialogAnswer answer_from(const DialogScript &script, HostState &host, const Dialog &) {
    const std::size_t position = host.received.script_position++;
    return position < script.answers.size() ? script.answers[position] : std::nullopt;
}

DialogAnswer answer_from(const DialogFunction &function, HostState &, const Dialog &dialog) {
    return function ? function(dialog) : std::nullopt;
}

DialogAnswer answer_from(const Unanswered &, HostState &, const Dialog &) { return std::nullopt; }

} // namespace

std::string field_text(std::string_view field) {
    const std::string_view text = up_to_nul(field);
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

void ask_dialog(HostState &host, const ReceivedCommand &command) {
    constexpr std::size_t answer_index = 4;
    Dialog dialog;
    dialog.title = up_to_nul(command.text(0));
    dialog.question = up_to_nul(command.text(1));
    dialog.first_button = up_to_nul(command.text(2));
    dialog.second_button = up_to_nul(command.text(3));
    dialog.answer_on_arrival = command.answer_on_arrival;
    const DialogSource asked = host.dialog_source; // whoever answers may set another source
    const DialogAnswer answer =
        std::visit([&](const auto &source) { return answer_from(source, host, dialog); }, asked);
    if (answer)
        std::memcpy(command.arguments[answer_index], &*answer, sizeof *answer);
    dialog.answered = answer.has_value();
    dialog.answer = command.integer(answer_index);
    host.received.dialogs.push_back(dialog);
}

void give_file_name(HostState &host, const ReceivedCommand &command) {
    fill(command, 0, host.import_file);
}

void format_integer_field(HostState &host, const ReceivedCommand &command) {
    fill_formatted(host, command, format_integer(up_to_nul(command.text(1)), command.integer(2)));
}

void format_real_field(HostState &host, const ReceivedCommand &command) {
    fill_formatted(host, command, format_real(up_to_nul(command.text(1)), command.real(2)));
}

void append_to_pane(HostState &host, const ReceivedCommand &command) {
    if (!host.keeps_pane)
        return;
    const std::string_view fragment = command.text(0);
    // Only a report field travels without its own NUL at the end.
    if (fragment.back() == '\0')
        host.received.pane.html += fragment.substr(0, fragment.size() - 1);
    else
        host.received.pane.html += field_text(fragment);
    host.received.pane.fragments.emplace_back(fragment);
}

void clear_pane(HostState &host, const ReceivedCommand &) {
    host.received.pane.html.clear();
    host.received.pane.fragments.clear();
    ++host.received.pane.times_cleared;
}

void move_progress(HostState &host, const ReceivedCommand &command) {
    host.received.progress.push_back(command.integer(0));
    if (host.progress_observer)
        host.progress_observer(command.integer(0));
}

} // namespace kova_host
