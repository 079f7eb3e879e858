#pragma once

#include "host/dialog.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace kova_command {

/// Whether there is a person to ask: questions go to standard error, answers come from standard
/// input.
[[nodiscard]] bool can_ask();

/// Gives a line that a person typed, or nothing when there are no more.
using ReadLine = std::function<std::optional<std::string>()>;

/// Puts a question to the person until the answer is one of the two buttons. An empty answer is the
/// button `preset`. No answer when the person ends the input.
[[nodiscard]] std::optional<std::int32_t> ask(const kova_host::Dialog &dialog, std::int32_t preset,
                                              const ReadLine &read_line);

/// As above, at the terminal.
[[nodiscard]] std::optional<std::int32_t> ask_at_terminal(const kova_host::Dialog &dialog,
                                                          std::int32_t preset);

/// The button that an answer means: its number, its label or the beginning of only one label, in
/// either case.
[[nodiscard]] std::optional<std::int32_t> button_of(const std::string &answer,
                                                    const kova_host::Dialog &dialog);

} // namespace kova_command
