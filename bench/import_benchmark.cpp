// What a whole import costs, next to three peers that go through the same file in the same run: a
// Fortran program that imports it into the same host, a bare loop of std::from_chars, and reading
// the bytes alone.
//
//   import_benchmark [options of Google Benchmark] FILE...
//
// The Fortran program takes part in files whose name starts with "legacy".

#include "peers.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <malloc.h>
#include <string>
#include <string_view>
#include <vector>

namespace kova_import::bench {

namespace {

struct NamedPeer {
    const char *name;
    Peer go;
    bool legacy_only = false;
};

constexpr std::array<NamedPeer, 4> peers{{
    {"library", import_with_library},
    {"fortran", import_with_fortran, true},
    {"bare_loop", add_up_numbers},
    {"bytes", read_bytes},
}};

void measure(benchmark::State &state, Peer go, const std::string &path, std::int64_t size) {
    for ([[maybe_unused]] const auto &iteration : state) {
        // A host imports a file once, with memory that is fresh from the system. What the
        // repetition before has given back must not serve this one.
        state.PauseTiming();
        malloc_trim(0);
        state.ResumeTiming();
        if (!go(path.c_str())) {
            state.SkipWithError("it did not go well");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * size);
}

int run(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (argc < 2) {
        std::fputs("usage: import_benchmark [options of Google Benchmark] FILE...\n", stderr);
        return 2;
    }
    const std::vector<std::string> paths(argv + 1, argv + argc);
    for (const std::string &path : paths) {
        const std::string name = std::filesystem::path(path).stem().string();
        const auto size = static_cast<std::int64_t>(std::filesystem::file_size(path));
        for (const NamedPeer &peer : peers)
            if (!peer.legacy_only || name.starts_with("legacy"))
                benchmark::RegisterBenchmark((name + '/' + peer.name).c_str(), measure, peer.go,
                                             path, size)
                    ->MeasureProcessCPUTime()
                    ->Unit(benchmark::kMillisecond);
    }
    // Large arrays would change these for those that come after them.
    constexpr int ordinary_threshold = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, ordinary_threshold);
    mallopt(M_TRIM_THRESHOLD, ordinary_threshold);
    // The library writes its lines to standard output.
    if (std::freopen("/dev/null", "w", stdout) == nullptr)
        return 1;
    benchmark::ConsoleReporter reporter(benchmark::ConsoleReporter::OO_None);
    reporter.SetOutputStream(&std::cerr);
    reporter.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}

} // namespace

} // namespace kova_import::bench

int main(int argc, char **argv) {
    try {
        return kova_import::bench::run(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "import_benchmark: %s\n", error.what());
        return 1;
    }
}
