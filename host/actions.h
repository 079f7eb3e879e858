#pragma once

// What the host does for the commands that are not about the model.

#include "host/host_state.h"

namespace kova_host {

/// The text of a field: up to its first NUL, without trailing blanks.
std::string field_text(std::string_view field);

void ask_dialog(HostState &host, const ReceivedCommand &command);
void give_file_name(HostState &host, const ReceivedCommand &command);
void format_integer_field(HostState &host, const ReceivedCommand &command);
void format_real_field(HostState &host, const ReceivedCommand &command);
void append_to_pane(HostState &host, const ReceivedCommand &command);
void clear_pane(HostState &host, const ReceivedCommand &command);
void move_progress(HostState &host, const ReceivedCommand &command);

} // namespace kova_host
