#include "cli/standard_output_capture.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace kova_command {

namespace {

[[noreturn]] void fail() {
    throw std::system_error(errno, std::generic_category(),
                            "the library's console lines cannot be taken off standard output");
}

void redirect_to(int target) {
    if (target < 0 || ::dup2(target, STDOUT_FILENO) < 0)
        fail();
}

} // namespace

StandardOutputCapture::StandardOutputCapture(What what) {
    // What is already printed must not follow the library's lines.
    static_cast<void>(std::fflush(stdout));
    const int saved = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (saved < 0)
        fail();
    try {
        if (what == What::keep) {
            kept_.reset(std::tmpfile());
            redirect_to(kept_ == nullptr ? -1 : ::fileno(kept_.get()));
        } else {
            const int sink = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
            redirect_to(sink);
            ::close(sink);
        }
    } catch (...) {
        ::close(saved);
        throw;
    }
    saved_ = saved;
}

StandardOutputCapture::~StandardOutputCapture() { restore(); }

void StandardOutputCapture::restore() {
    if (saved_ < 0)
        return;
    static_cast<void>(std::fflush(stdout));
    // A sink that is full is not the program's own output failing.
    std::clearerr(stdout);
    static_cast<void>(::dup2(saved_, STDOUT_FILENO));
    ::close(saved_);
    saved_ = -1;
}

std::vector<std::string> StandardOutputCapture::finish() {
    restore();
    std::vector<std::string> lines;
    if (kept_ == nullptr)
        return lines;
    std::rewind(kept_.get());
    std::string line;
    for (int character = 0; (character = std::fgetc(kept_.get())) != EOF;) {
        if (character == '\n')
            lines.push_back(std::exchange(line, {}));
        else
            line += static_cast<char>(character);
    }
    if (!line.empty())
        lines.push_back(std::move(line));
    return lines;
}

void open_missing_standard_streams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        struct stat status {};
        if (::fstat(stream, &status) == 0 || errno != EBADF)
            continue;
        // The lowest free number is the one that is missing. The direction is the wrong one on
        // purpose.
        const int opened = ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        if (opened < 0)
            return;
    }
}

} // namespace kova_command
