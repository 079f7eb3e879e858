// Goes once through a model file and says what it took, as one line of JSON:
//
//   import_once FILE
//
// KOVA_BENCH_PEER is the function that does it (see peers.h).

#include "bench_host.h"
#include "peers.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

namespace {

double processor_seconds() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// The most memory that the process has had at one time. What wait4 tells of a child holds the
/// memory of its parent, too.
long peak_memory_kib() {
    std::FILE *const status = std::fopen("/proc/self/status", "re");
    if (status == nullptr)
        return 0;
    long kib = 0;
    char line[256];
    while (std::fgets(line, sizeof line, status) != nullptr)
        if (std::sscanf(line, "VmHWM: %ld", &kib) == 1)
            break;
    std::fclose(status);
    return kib;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
        return 2;
    }
    // The library's own lines go nowhere.
    const int output = ::dup(STDOUT_FILENO);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (output < 0 || nowhere < 0 || ::dup2(nowhere, STDOUT_FILENO) < 0)
        return 2;
    const double start = processor_seconds();
    const bool went_well = kova_import::bench::KOVA_BENCH_PEER(argv[1]);
    const double seconds = processor_seconds() - start;
    ::dprintf(output,
              "{\"went_well\": %s, \"processor_seconds\": %.6f, \"peak_memory_kib\": %ld, "
              "\"commands\": %" PRIu64 ", \"checksum\": \"%016" PRIx64 "\"}\n",
              went_well ? "true" : "false", seconds, peak_memory_kib(), bench_host_commands(),
              bench_host_checksum());
    return went_well ? 0 : 1;
}
