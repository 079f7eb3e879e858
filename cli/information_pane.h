#pragma once

// What the utility shows in the host's information pane: HTML of its own, and between it texts that
// come from the import file.

#include "host/received_command.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kova_command {

/// A piece of the information pane, bytes.
struct PaneFragment {
    std::string text;       ///< without the NUL that ends it
    bool from_file = false; ///< a name from the file or the file's path: plain text, whatever it is
};

/// A file can make a table row of every byte. What is beyond this is left out.
inline constexpr std::size_t most_pane_fragments = 100000;

struct InformationPane {
    std::vector<PaneFragment> fragments; ///< up to `most_pane_fragments`
    bool is_cut = false;                 ///< there were more
};

/// Gathers the pane from the commands that a host receives. Names reach the pane right after the
/// command that gave them to the model, so that they can be told from the utility's own words. No
/// command has those of time functions: they are known by where they stand.
class PaneRecorder {
  public:
    /// `path` is the one that the host has answered with.
    explicit PaneRecorder(std::string path) : path_(std::move(path)) {}

    /// Takes every well-formed command in order.
    void take(const kova_host::ReceivedCommand &command);

    [[nodiscard]] InformationPane finish() { return std::move(pane_); }

  private:
    void add(std::string_view text);
    void keep(std::string_view text, bool from_file);
    [[nodiscard]] bool take_name(std::string_view text);
    [[nodiscard]] bool is_path_line(std::string_view text) const;
    bool take_name_in_message(std::string_view text);

    std::string path_;
    std::vector<std::string> names_; ///< of the last command that gave any, as they travelled
    InformationPane pane_;
};

} // namespace kova_command
