#pragma once

// The reference host: it receives every host command, checks it against the table of commands,
// keeps what it says and writes it to a log. Tests and the command-line program run the utility
// with it.

#include "host/dialog.h"
#include "host/model.h"
#include "host/received_command.h"
#include "host_calls.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kova_host {

struct HostState;

/// A command that breaks the rules of the link. It is logged and counted, and has no effect, or
/// only the part of its effect that can be had.
struct Violation {
    std::string keyword;
    std::uint64_t command_number = 0; ///< 1 for the first command that the host received
    std::string sentence;             ///< what was found, then what was expected
};

/// What the host has been told to show.
struct InformationPane {
    std::string html;                   ///< the fragments joined
    std::vector<std::string> fragments; ///< each as it arrived, with NULs and blanks
    std::int64_t times_cleared = 0;
};

/// Gets the log piece by piece; a piece is any number of bytes, not a line.
using LogSink = std::function<void(std::string_view)>;
/// Gets every command, ill-formed ones too.
using CommandObserver = std::function<void(const ReceivedCommand &)>;
/// Gets every progress value.
using ProgressObserver = std::function<void(std::int32_t)>;

class ReferenceHost;

/// Makes a host the one that the entry points call, until it goes out of scope; then the one before
/// is back.
class [[nodiscard]] Connection {
  public:
    KOVA_HOST_API explicit Connection(ReferenceHost &host);
    KOVA_HOST_API ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;
    Connection(Connection &&) = delete;
    Connection &operator=(Connection &&) = delete;

  private:
    ReferenceHost *host_;
    ReferenceHost *previous_;
};

/// All calls must come from one thread. Whatever arrives through the entry points, no exception
/// leaves them: what an observer, a sink or a dialog function throws becomes a violation.
class ReferenceHost {
  public:
    /// A host that answers with the default `DialogSettings`, has no import file and writes no log.
    KOVA_HOST_API ReferenceHost();
    /// Sends the rest of the log and disconnects the host.
    KOVA_HOST_API ~ReferenceHost();
    ReferenceHost(const ReferenceHost &) = delete;
    ReferenceHost &operator=(const ReferenceHost &) = delete;
    ReferenceHost(ReferenceHost &&) = delete;
    ReferenceHost &operator=(ReferenceHost &&) = delete;

    /// Connects the host for as long as the result lives. The host must outlive it.
    KOVA_HOST_API Connection connect();
    /// Calls that arrived while no host was connected; they are dropped.
    KOVA_HOST_API static std::uint64_t unconnected_call_count();
    /// Whether a keyword (without its NUL) has a handler.
    KOVA_HOST_API static bool handles(std::string_view keyword);

    /// Takes a call; the entry points end here.
    KOVA_HOST_API void receive(const RawCall &call) noexcept;
    /// Forgets everything received, the part of the log that is not sent yet too; settings and
    /// observers stay.
    KOVA_HOST_API void reset();

    /// Where the answers to questions come from.
    KOVA_HOST_API void answer_dialogs(DialogSource source);
    /// The path of the import file, in the bytes that the utility is to open; cut at 512.
    KOVA_HOST_API void set_import_file(std::string path);
    /// Whether the host keeps what it is told to show; a new one does.
    KOVA_HOST_API void keep_pane(bool keep);
    /// Starts the log; an empty sink ends it. It goes through a buffer: see `flush_log`.
    KOVA_HOST_API void log_to(LogSink sink);
    /// Sends what is buffered to the sink; what the sink throws comes out here.
    KOVA_HOST_API void flush_log();
    /// Called before a command takes effect and, for the second, after it has and is logged.
    KOVA_HOST_API void observe_before(CommandObserver observer);
    KOVA_HOST_API void observe_after(CommandObserver observer);
    KOVA_HOST_API void observe_progress(ProgressObserver observer);

    [[nodiscard]] KOVA_HOST_API const Model &model() const;
    [[nodiscard]] KOVA_HOST_API const InformationPane &pane() const;
    [[nodiscard]] KOVA_HOST_API const std::vector<std::int32_t> &progress() const;
    [[nodiscard]] KOVA_HOST_API const std::vector<Dialog> &dialogs() const;
    [[nodiscard]] KOVA_HOST_API std::uint64_t command_count() const;
    /// The first thousand violations; `violation_count` counts them all.
    [[nodiscard]] KOVA_HOST_API const std::vector<Violation> &violations() const;
    [[nodiscard]] KOVA_HOST_API std::uint64_t violation_count() const;

  private:
    std::unique_ptr<HostState> state_;
};

} // namespace kova_host
