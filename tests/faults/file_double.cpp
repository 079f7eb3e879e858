// The linker leads the library's calls for files here (--wrap), and from here to the system.

#include "tests/faults/fault_points.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>

namespace kova_test {

FileFaults &file_faults() {
    static FileFaults faults;
    return faults;
}

namespace {

bool fails(FileCall call) {
    FileFaults &faults = file_faults();
    const bool result = faults[call].fails();
    if (faults.before) {
        const bool library_runs = set_library_runs(false);
        faults.before(call, faults[call].met);
        set_library_runs(library_runs);
    }
    if (result)
        errno = faults.error;
    return result;
}

/// Says whether reads have come to the planned place, and what is to happen there.
std::optional<int> error_at_stop(FileFaults &faults) {
    if (!faults.stop || faults.bytes_read != faults.stop->place)
        return std::nullopt;
    faults.stop->was_met = true;
    const std::optional<int> error = faults.stop->error;
    if (!faults.stop->from_there_on)
        faults.stop->place = std::numeric_limits<std::size_t>::max();
    return error;
}

} // namespace

} // namespace kova_test

using kova_test::fails;
using kova_test::FileCall;

extern "C" {

int __real_open(const char *path, int flags, ...);
int __real_stat(const char *path, struct stat *status);
int __real_fstat(int file, struct stat *status);
ssize_t __real_read(int file, void *target, size_t size);
off_t __real_lseek(int file, off_t offset, int origin);
int __real_close(int file);

int __wrap_open(const char *path, int flags, ...);
int __wrap_open(const char *path, int flags, ...) {
    return fails(FileCall::open) ? -1 : __real_open(path, flags);
}

int __wrap_stat(const char *path, struct stat *status);
int __wrap_stat(const char *path, struct stat *status) {
    return fails(FileCall::stat) ? -1 : __real_stat(path, status);
}

int __wrap_fstat(int file, struct stat *status);
int __wrap_fstat(int file, struct stat *status) {
    return fails(FileCall::fstat) ? -1 : __real_fstat(file, status);
}

ssize_t __wrap_read(int file, void *target, size_t size);
ssize_t __wrap_read(int file, void *target, size_t size) {
    if (fails(FileCall::read))
        return -1;
    kova_test::FileFaults &faults = kova_test::file_faults();
    if (const std::optional<int> error = kova_test::error_at_stop(faults)) {
        errno = *error;
        return *error == 0 ? 0 : -1;
    }
    std::size_t wanted = std::min(size, faults.longest_read);
    if (faults.stop && faults.stop->place > faults.bytes_read)
        wanted = std::min(wanted, faults.stop->place - faults.bytes_read);
    const ssize_t count = __real_read(file, target, wanted);
    faults.bytes_read += count > 0 ? static_cast<std::size_t>(count) : 0;
    return count;
}

off_t __wrap_lseek(int file, off_t offset, int origin);
off_t __wrap_lseek(int file, off_t offset, int origin) {
    return fails(FileCall::seek) ? -1 : __real_lseek(file, offset, origin);
}

// The descriptor is gone also when the system reports an error, as it is on Linux.
int __wrap_close(int file);
int __wrap_close(int file) {
    const bool is_failing = fails(FileCall::close);
    const int error = errno;
    const int result = __real_close(file);
    errno = error;
    return is_failing ? -1 : result;
}
}
