#include "host/reference_host.h"

#include "host/command_decoder.h"
#include "host/handlers.h"
#include "host/host_state.h"

#include <exception>
#include <utility>

namespace kova_host {

namespace {

constexpr std::size_t most_kept_violations = 1000;
constexpr std::size_t most_shown_keyword = 64;

ReferenceHost *connected = nullptr;
std::uint64_t unconnected_calls = 0;

void deliver(const RawCall &call) {
    if (connected != nullptr)
        connected->receive(call);
    else
        ++unconnected_calls;
}

/// Does something for a command; what it throws becomes a violation.
template <class Action>
void guard(HostState &host, const ReceivedCommand &command, Action action) {
    try {
        action();
    } catch (const std::exception &error) {
        host.violate(command, std::string("the host failed: ") + error.what());
    } catch (...) {
        host.violate(command, "the host failed");
    }
}

void take_effect(HostState &host, const ReceivedCommand &command) {
    handler_of (*command.command)(host, command);
    if (host.received.store.has_problem())
        host.violate(command, host.received.store.take_problem());
}

} // namespace

void HostState::violate(const ReceivedCommand &command, std::string sentence) {
    ++received.violation_count;
    if (received.violations.size() < most_kept_violations)
        received.violations.push_back({std::string(command.keyword.substr(0, most_shown_keyword)),
                                       command.number, std::move(sentence)});
}

void HostState::handle_call(const RawCall &call) {
    std::vector<std::string> problems;
    ReceivedCommand command = decode(call, problems);
    command.number = ++received.command_count;
    if (depth > 1)
        problems.emplace_back("the command arrived while another was being handled");
    for (std::string &problem : problems)
        violate(command, std::move(problem));
    if (before)
        guard(*this, command, [&] { before(command); });
    if (command.well_formed)
        guard(*this, command, [&] { take_effect(*this, command); });
    if (log.is_open())
        guard(*this, command, [&] { log.write(command, received.announced); });
    if (after)
        guard(*this, command, [&] { after(command); });
}

Connection::Connection(ReferenceHost &host)
    : host_(&host), previous_(std::exchange(connected, &host)) {}

Connection::~Connection() {
    if (connected == host_)
        connected = previous_;
}

ReferenceHost::ReferenceHost() : state_(std::make_unique<HostState>()) {}

ReferenceHost::~ReferenceHost() {
    if (connected == this)
        connected = nullptr;
    try {
        flush_log();
    } catch (...) { // there is nobody left to tell; `flush_log` before tells
        state_->log.discard();
    }
}

Connection ReferenceHost::connect() { return Connection(*this); }

std::uint64_t ReferenceHost::unconnected_call_count() { return unconnected_calls; }

bool ReferenceHost::handles(std::string_view keyword) {
    const kova_import::HostCommand *command = kova_import::find_host_command(keyword);
    return command != nullptr && handler_of(*command) != nullptr;
}

void ReferenceHost::receive(const RawCall &call) noexcept {
    ++state_->depth;
    try {
        state_->handle_call(call);
    } catch (...) { // no memory, not even to describe it
        ++state_->received.violation_count;
    }
    --state_->depth;
}

void ReferenceHost::reset() {
    state_->received = Received{};
    state_->log.discard();
}

void ReferenceHost::answer_dialogs(DialogSource source) {
    state_->dialog_source = std::move(source);
    state_->received.script_position = 0;
}

void ReferenceHost::set_import_file(std::string path) { state_->import_file = std::move(path); }

void ReferenceHost::keep_pane(bool keep) { state_->keeps_pane = keep; }

void ReferenceHost::log_to(LogSink sink) { state_->log.open(std::move(sink)); }

void ReferenceHost::flush_log() { state_->log.flush(); }

void ReferenceHost::observe_before(CommandObserver observer) {
    state_->before = std::move(observer);
}

void ReferenceHost::observe_after(CommandObserver observer) { state_->after = std::move(observer); }

void ReferenceHost::observe_progress(ProgressObserver observer) {
    state_->progress_observer = std::move(observer);
}

const Model &ReferenceHost::model() const { return state_->received.store.model(); }

const InformationPane &ReferenceHost::pane() const { return state_->received.pane; }

const std::vector<std::int32_t> &ReferenceHost::progress() const {
    return state_->received.progress;
}

const std::vector<Dialog> &ReferenceHost::dialogs() const { return state_->received.dialogs; }

std::uint64_t ReferenceHost::command_count() const { return state_->received.command_count; }

const std::vector<Violation> &ReferenceHost::violations() const {
    return state_->received.violations;
}

std::uint64_t ReferenceHost::violation_count() const { return state_->received.violation_count; }

} // namespace kova_host

extern "C" {

void KOVA_HOST_CALL host_call_0(char *keyword, size_t keyword_length) {
    kova_host::deliver({0, keyword, {}, {keyword_length}});
}

void KOVA_HOST_CALL host_call_1(char *keyword, void *argument_1, size_t keyword_length,
                                size_t length_1) {
    kova_host::deliver({1, keyword, {argument_1}, {keyword_length, length_1}});
}

void KOVA_HOST_CALL host_call_2(char *keyword, void *argument_1, void *argument_2,
                                size_t keyword_length, size_t length_1, size_t length_2) {
    kova_host::deliver(
        {2, keyword, {argument_1, argument_2}, {keyword_length, length_1, length_2}});
}

void KOVA_HOST_CALL host_call_3(char *keyword, void *argument_1, void *argument_2, void *argument_3,
                                size_t keyword_length, size_t length_1, size_t length_2,
                                size_t length_3) {
    kova_host::deliver({3,
                        keyword,
                        {argument_1, argument_2, argument_3},
                        {keyword_length, length_1, length_2, length_3}});
}

void KOVA_HOST_CALL host_call_4(char *keyword, void *argument_1, void *argument_2, void *argument_3,
                                void *argument_4, size_t keyword_length, size_t length_1,
                                size_t length_2, size_t length_3, size_t length_4) {
    kova_host::deliver({4,
                        keyword,
                        {argument_1, argument_2, argument_3, argument_4},
                        {keyword_length, length_1, length_2, length_3, length_4}});
}

void KOVA_HOST_CALL host_call_5(char *keyword, void *argument_1, void *argument_2, void *argument_3,
                                void *argument_4, void *argument_5, size_t keyword_length,
                                size_t length_1, size_t length_2, size_t length_3, size_t length_4,
                                size_t length_5) {
    kova_host::deliver({5,
                        keyword,
                        {argument_1, argument_2, argument_3, argument_4, argument_5},
                        {keyword_length, length_1, length_2, length_3, length_4, length_5}});
}

} // extern "C"
