#include "control/input_file.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kova_import {

namespace {

const char *reason_of(int error) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return "there is no such file";
    case EACCES:
    case EPERM:
        return "the file may not be read";
    case ENAMETOOLONG:
        return "the path is too long";
    case EMFILE:
    case ENFILE:
        return "too many files are open";
    default:
        return "the system cannot open the file";
    }
}

int open_for_reading(const char *path, int more_flags) {
    for (;;) {
        const int handle = ::open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY | more_flags);
        if (handle >= 0 || errno != EINTR)
            return handle;
    }
}

int descriptor_of(std::intptr_t handle) { return static_cast<int>(handle); }

} // namespace

const char *InputFile::open(std::string_view path) {
    // The host's field has 512 characters; a path that fills it has no room for its NUL there.
    std::array<char, 513> terminated{};
    if (path.empty())
        return "no file was named";
    if (path.size() >= terminated.size())
        return "the path is too long";
    path.copy(terminated.data(), path.size());

    close();
    // Without O_NONBLOCK a pipe would wait for a writer before it can be told from a file.
    struct stat status {};
    int handle = open_for_reading(terminated.data(), O_NONBLOCK);
    if (handle < 0 && errno == EWOULDBLOCK && ::stat(terminated.data(), &status) == 0 &&
        S_ISREG(status.st_mode))
        handle = open_for_reading(terminated.data(), 0); // a file server gives it back in a moment
    if (handle < 0)
        return reason_of(errno);
    const bool known = ::fstat(handle, &status) == 0;
    if (!known || !S_ISREG(status.st_mode)) {
        ::close(handle);
        if (!known)
            return "the system cannot open the file";
        return S_ISDIR(status.st_mode) ? "it is a folder" : "it is not a regular file";
    }
    handle_ = handle;
    return nullptr;
}

void InputFile::close() {
    if (is_open())
        ::close(descriptor_of(handle_));
    handle_ = closed;
}

std::optional<std::size_t> InputFile::read(char *target, std::size_t size) {
    for (;;) {
        const ssize_t count = ::read(descriptor_of(handle_), target, size);
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            return std::nullopt;
    }
}

bool InputFile::seek(std::int64_t offset) {
    const auto place = static_cast<off_t>(offset);
    return ::lseek(descriptor_of(handle_), place, SEEK_SET) == place;
}

} // namespace kova_import
