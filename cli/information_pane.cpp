#include "cli/information_pane.h"

#include <algorithm>
#include <cstddef>

namespace kova_command {

namespace {

constexpr std::string_view path_label = "File: ";
/// The report field that holds the label and the path, which is cut there.
constexpr std::size_t path_line_length = 132;

std::string_view without_padding(std::string_view text) {
    const std::size_t last = text.find_last_not_of(std::string_view(" \0", 2));
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

void PaneRecorder::take(const kova_host::ReceivedCommand &command) {
    if (!command.well_formed)
        return;
    if (command.keyword == "PCLEARINFO") {
        fragments_.clear();
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
        fragments_.push_back({std::string(without_padding(text)), true});
    } else if (is_path_line(text)) {
        fragments_.push_back({std::string(path_label), false});
        fragments_.push_back({std::string(without_padding(text.substr(path_label.size()))), true});
    } else {
        if (!text.empty() && text.back() == '\0')
            text.remove_suffix(1);
        fragments_.push_back({std::string(text), false});
    }
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

bool PaneRecorder::is_path_line(std::string_view text) const {
    if (text.size() != path_line_length || !text.starts_with(path_label))
        return false;
    const std::string_view shown = text.substr(path_label.size());
    return shown.starts_with(std::string_view(path_).substr(0, shown.size()));
}

} // namespace kova_command
