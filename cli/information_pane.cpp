#include "cli/information_pane.h"

#include <algorithm>
#include <cstddef>

namespace kova_command {

namespace {

constexpr std::string_view path_label = "File: ";
/// The report field that holds the label and the path, which is cut there.
constexpr std::size_t path_line_length = 132;
/// The report field, and the NUL behind it, that holds a message about a legacy time function:
/// words that end in ": ", its name and the end of the line.
constexpr std::size_t message_length = 133;
constexpr std::string_view message_end = "</span></li>";

std::string_view without_padding(std::string_view text) {
    const std::size_t last = text.find_last_not_of(std::string_view(" \0", 2));
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

void PaneRecorder::take(const kova_host::ReceivedCommand &command) {
    if (!command.well_formed)
        return;
    if (command.keyword == "PCLEARINFO") {
        pane_ = {};
    } else if (command.keyword == "PINFOHTML") {
        add(command.text(0));
    } else if (command.keyword.starts_with('P')) { // the others ask for something
        std::vector<std::string> names;
        for (std::size_t i = 0; i < command.lengths.size(); ++i)
            if (command.lengths[i] > 0)
                names.emplace_back(command.text(i));
        if (!names.empty())
            names_ = std::move(names);
    }
}

void PaneRecorder::add(std::string_view text) {
    if (take_name(text)) {
        keep(without_padding(text), true);
    } else if (take_name_in_message(text)) {
        return;
    } else if (is_path_line(text)) {
        keep(path_label, false);
        keep(without_padding(text.substr(path_label.size())), true);
    } else {
        if (!text.empty() && text.back() == '\0')
            text.remove_suffix(1);
        keep(text, false);
    }
}

void PaneRecorder::keep(std::string_view text, bool from_file) {
    if (pane_.fragments.size() < most_pane_fragments)
        pane_.fragments.push_back({std::string(text), from_file});
    else
        pane_.is_cut = true;
}

bool PaneRecorder::take_name(std::string_view text) {
    // Each name is shown once. Names fill fields of their own lengths, which tells them from the
    // utility's words even where a name imitates these.
    const auto found = std::find(names_.begin(), names_.end(), text);
    if (found == names_.end())
        return false;
    names_.erase(found);
    return true;
}

bool PaneRecorder::take_name_in_message(std::string_view text) {
    if (text.size() != message_length)
        return false;
    const std::string_view line = without_padding(text);
    constexpr std::string_view separator = ": ";
    const std::size_t end_of_words = line.find(separator);
    if (end_of_words == std::string_view::npos || !line.ends_with(message_end))
        return false;
    const std::size_t name = end_of_words + separator.size();
    keep(line.substr(0, name), false);
    keep(without_padding(line.substr(name, line.size() - message_end.size() - name)), true);
    keep(message_end, false);
    return true;
}

bool PaneRecorder::is_path_line(std::string_view text) const {
    if (text.size() != path_line_length || !text.starts_with(path_label))
        return false;
    const std::string_view shown = text.substr(path_label.size());
    return shown.starts_with(std::string_view(path_).substr(0, shown.size()));
}

} // namespace kova_command
