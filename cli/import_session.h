#pragma once

// Runs imports: connects the reference host, lets the utility work, and gathers what came of it.

#include "cli/import_outcome.h"
#include "cli/utility_library.h"
#include "host/reference_host.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kova_command {

/// A question that the utility puts to the person, and the button that is pressed when there is
/// nobody to ask.
using Ask = std::function<std::optional<std::int32_t>(const kova_host::Dialog &, std::int32_t)>;
/// Gets every percentage with the name of the section that starts there; the last has none.
using ShowProgress = std::function<void(std::int32_t, std::string_view)>;

struct ImportRequest {
    std::string path; ///< bytes
    bool transport_only = false;
    bool index_segment_names = true;
    bool keep_console = false; ///< the utility's console lines
    bool keep_pane = false;    ///< what it shows in the information pane
    Ask ask;                   ///< may be empty; no answer cancels the import
    ShowProgress progress;     ///< may be empty
    kova_host::LogSink log;    ///< gets the command log; may be empty
};

/// Imports in one process, one after the other.
class ImportSession {
  public:
    explicit ImportSession(const UtilityLibrary &library) : library_(library) {
        host_.keep_pane(false); // the outcome has what is wanted of it
    }

    /// Runs one import. Throws only what `request`'s functions and the system throw outside the
    /// utility.
    [[nodiscard]] ImportOutcome run(const ImportRequest &request);

    /// What the host holds of the last import, until the next.
    [[nodiscard]] const kova_host::Model &model() const { return host_.model(); }

  private:
    const UtilityLibrary &library_;
    kova_host::ReferenceHost host_;
};

} // namespace kova_command
