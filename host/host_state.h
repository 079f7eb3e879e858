#pragma once

// Everything that a reference host holds.

#include "host/command_log.h"
#include "host/model_store.h"
#include "host/reference_host.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kova_host {

/// What the commands have put into the host.
struct Received {
    ModelStore store;
    InformationPane pane;
    std::vector<std::int32_t> progress;
    std::vector<Dialog> dialogs;
    std::vector<Violation> violations;
    std::uint64_t violation_count = 0;
    std::uint64_t command_count = 0;
    std::int32_t announced = 0; ///< entries of the send buffers that mean something
    std::size_t script_position = 0;
};

struct HostState {
    DialogSource dialog_source;
    std::string import_file;
    bool keeps_pane = true;
    CommandObserver before;
    CommandObserver after;
    ProgressObserver progress_observer;
    CommandLog log;
    Received received;
    int depth = 0; ///< commands that are being handled

    void violate(const ReceivedCommand &command, std::string sentence);
    void handle_call(const RawCall &call);
};

} // namespace kova_host
