#include "cli/platform.h"

#include <cerrno>
#include <dlfcn.h>
#include <fcntl.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kova_command::platform {

namespace {

[[noreturn]] void fail_to_load() {
    const char *const message = ::dlerror();
    throw std::runtime_error(message == nullptr ? "unknown error of the loader" : message);
}

} // namespace

std::vector<std::string> arguments_of(int argument_count, char **arguments) {
    return {arguments + (argument_count > 0 ? 1 : 0), arguments + argument_count};
}

unsigned prepare_standard_streams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        struct stat status {};
        if (::fstat(stream, &status) == 0 || errno != EBADF)
            continue;
        // The lowest free number is the one that is missing. The direction is the wrong one on
        // purpose.
        const int opened = ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        if (opened < 0)
            break;
    }
    return 0;
}

void give_console_back(unsigned /*before*/) {}

bool is_terminal(std::FILE *stream) {
    const int handle = ::fileno(stream);
    return handle >= 0 && ::isatty(handle) == 1;
}

std::optional<std::size_t> terminal_columns(std::FILE *stream) {
    winsize size{};
    if (::ioctl(::fileno(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return std::nullopt;
    return size.ws_col;
}

bool obeys_escapes(std::FILE *stream) { return is_terminal(stream); }

std::FILE *open_for_writing(const std::string &path) { return std::fopen(path.c_str(), "wbe"); }

std::FILE *open_temporary_file() { return std::tmpfile(); }

int take_standard_output(std::FILE *target) {
    const int saved = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (saved < 0)
        return saved;
    const int sink =
        target != nullptr ? ::fileno(target) : ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    const bool taken = sink >= 0 && ::dup2(sink, STDOUT_FILENO) >= 0;
    const int error = errno;
    if (target == nullptr && sink >= 0)
        ::close(sink);
    if (taken)
        return saved;
    ::close(saved);
    errno = error;
    return -1;
}

void give_standard_output_back(int saved) {
    static_cast<void>(::dup2(saved, STDOUT_FILENO));
    ::close(saved);
}

LoadedLibrary::LoadedLibrary(const char *name) : handle_(::dlopen(name, RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr)
        fail_to_load();
}

void *LoadedLibrary::find(const char *name) const {
    void *const address = ::dlsym(handle_, name);
    if (address == nullptr)
        fail_to_load();
    return address;
}

} // namespace kova_command::platform
