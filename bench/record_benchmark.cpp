// How fast records are read, next to two peers that read the same bytes in the same run: the
// Fortran runtime, and a bare loop of std::from_chars over the file in memory.
//
//   record_benchmark [--size=BYTES] [options of Google Benchmark]

#include "record_data.h"

#include "control/record_reader.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <type_traits>
#include <unistd.h>
#include <utility>
#include <vector>

extern "C" std::int32_t read_with_fortran(const char *path, std::int32_t path_length,
                                          std::int32_t shape, std::int32_t count, double *total);

namespace kova_import::bench {

namespace {

template <std::size_t integer_count, std::size_t real_count>
struct Record {
    std::array<std::int32_t, integer_count> integers{};
    std::array<float, real_count> reals{};

    [[nodiscard]] auto fields() {
        return [this]<std::size_t... i, std::size_t... k>(std::index_sequence<i...>,
                                                          std::index_sequence<k...>) {
            return std::tuple{field("an integer", integers[i])..., field("a real", reals[k])...};
        }
        (std::make_index_sequence<integer_count>{}, std::make_index_sequence<real_count>{});
    }

    void add_to(double &total) const {
        for (const std::int32_t value : integers)
            total += value;
        for (const float value : reals)
            total += static_cast<double>(value);
    }
};

// Each of these reads the whole file, starting with opening it, and returns the sum of all values,
// added in their order; or nothing, when the reading failed.

template <class AnyRecord, class ReadRecord>
std::optional<double> read_all(const DataFile &file, ReadRecord read_record) {
    std::int32_t counter = 0;
    RecordReader reader(counter);
    if (reader.stream().open(file.path) != nullptr)
        return std::nullopt;
    reader.start_counting();
    double total = 0;
    AnyRecord record;
    reader.for_each_record(file.records, [&](std::int32_t) {
        read_record(reader, record);
        record.add_to(total);
    });
    if (!reader.ok() || counter != file.records + 1)
        return std::nullopt;
    return total;
}

template <class AnyRecord>
std::optional<double> read_lists(const DataFile &file) {
    return read_all<AnyRecord>(file, [](RecordReader &reader, AnyRecord &record) {
        reader.list("a free-form record", record.fields());
    });
}

template <class AnyRecord, Literal layout>
std::optional<double> read_fixed(const DataFile &file) {
    return read_all<AnyRecord>(file, [](RecordReader &reader, AnyRecord &record) {
        reader.fixed<layout>("a fixed-column record", record.fields());
    });
}

using TwoReals = Record<0, 2>;
using ThreeIntegers = Record<3, 0>;
using Geometry = Record<3, 10>;
using FixedGeometry = Record<4, 16>;
using FixedConnection = Record<2, 1>;

std::optional<double> read_with_reader(const DataFile &file, std::vector<char> &) {
    switch (file.set->shape) {
    case Shape::two_reals:
        return read_lists<TwoReals>(file);
    case Shape::three_integers:
        return read_lists<ThreeIntegers>(file);
    case Shape::geometry:
        return read_lists<Geometry>(file);
    case Shape::fixed_geometry:
        return read_fixed<FixedGeometry, "(4(I5),16(F15.5))">(file);
    case Shape::fixed_connections:
        return read_fixed<FixedConnection, "(7X,I5,11X,I5,18X,F10.0)">(file);
    case Shape::fixed_pairs:
        return read_fixed<TwoReals, "(2(F10.0))">(file);
    }
    return std::nullopt;
}

std::optional<double> read_with_runtime(const DataFile &file, std::vector<char> &) {
    double total = 0;
    const std::int32_t status =
        read_with_fortran(file.path.data(), static_cast<std::int32_t>(file.path.size()),
                          static_cast<std::int32_t>(file.set->shape), file.records, &total);
    return status == 0 ? std::optional(total) : std::nullopt;
}

// Goes to the next value, takes it and adds it. Says whether there was one.
template <class T>
bool take(const char *&position, const char *end, double &total) {
    while (position != end && (*position == ' ' || *position == '\n'))
        ++position;
    T value{};
    const std::from_chars_result result = std::from_chars(position, end, value);
    position = result.ptr;
    if (result.ec != std::errc{})
        return false;
    total += static_cast<double>(value);
    return true;
}

template <std::size_t integer_count, std::size_t real_count>
std::optional<double> add_up(std::string_view text, Record<integer_count, real_count>) {
    const char *position = text.data();
    const char *const end = position + text.size();
    double total = 0;
    for (;;) {
        for (std::size_t i = 0; i < integer_count; ++i)
            if (!take<std::int32_t>(position, end, total))
                return position == end ? std::optional(total) : std::nullopt;
        for (std::size_t i = 0; i < real_count; ++i)
            if (!take<float>(position, end, total))
                return position == end ? std::optional(total) : std::nullopt;
    }
}

// It counts nothing and knows no positions. The memory is there before it starts.
std::optional<double> read_with_bare_loop(const DataFile &file, std::vector<char> &memory) {
    const int handle = ::open(file.path.c_str(), O_RDONLY | O_CLOEXEC);
    if (handle < 0)
        return std::nullopt;
    const ssize_t size = ::read(handle, memory.data(), memory.size());
    ::close(handle);
    if (size < 0 || static_cast<std::size_t>(size) != file.size)
        return std::nullopt;
    const std::string_view text(memory.data(), file.size);
    switch (file.set->shape) {
    case Shape::two_reals:
    case Shape::fixed_pairs:
        return add_up(text, TwoReals{});
    case Shape::three_integers:
        return add_up(text, ThreeIntegers{});
    case Shape::geometry:
        return add_up(text, Geometry{});
    case Shape::fixed_geometry:
        return add_up(text, FixedGeometry{});
    case Shape::fixed_connections:
        return add_up(text, FixedConnection{});
    }
    return std::nullopt;
}

using Read = std::optional<double> (*)(const DataFile &file, std::vector<char> &memory);

struct Peer {
    const char *name;
    Read read;
};

constexpr std::array<Peer, 3> peers{{
    {"reader", read_with_reader},
    {"bare_loop", read_with_bare_loop},
    {"fortran", read_with_runtime},
}};

void measure(benchmark::State &state, Read read, const DataFile &file, std::vector<char> &memory,
             double expected) {
    for ([[maybe_unused]] const auto &iteration : state) {
        const std::optional<double> total = read(file, memory);
        if (total != expected) {
            state.SkipWithError("another sum of the values");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size));
    // The counter is in seconds and printed with a unit, as in "35.1n".
    state.counters["per_record"] = benchmark::Counter(
        file.records, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.SetLabel(file.set->label);
}

// Takes --size=BYTES out of the arguments.
std::size_t take_size(int &argc, char **argv) {
    std::size_t size = std::size_t{4} << 20U;
    constexpr std::string_view option = "--size=";
    int kept = 0;
    for (int i = 0; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (!argument.starts_with(option)) {
            argv[kept++] = argv[i];
            continue;
        }
        const char *const end = argument.data() + argument.size();
        const auto [rest, error] = std::from_chars(argument.data() + option.size(), end, size);
        // The Fortran side counts records in 32 bits.
        if (error != std::errc{} || rest != end || size == 0 || size > std::size_t{1} << 30U)
            throw std::runtime_error("--size=BYTES takes a number from 1 to 1073741824");
    }
    argc = kept;
    argv[kept] = nullptr;
    return size;
}

int run(int argc, char **argv) {
    const std::size_t size = take_size(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;

    const TemporaryFolder folder;
    std::array<DataFile, std::tuple_size_v<std::remove_cvref_t<decltype(data_sets())>>> files;
    std::size_t largest = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        files[i] = write_data(folder, data_sets()[i], size);
        largest = std::max(largest, files[i].size);
    }
    std::vector<char> memory(largest);

    for (const DataFile &file : files) {
        const std::optional<double> expected = read_with_bare_loop(file, memory);
        for (const Peer &peer : peers) {
            if (!expected || peer.read(file, memory) != expected)
                throw std::runtime_error(std::string(file.set->name) + ": the readings differ");
            benchmark::RegisterBenchmark((std::string(file.set->name) + '/' + peer.name).c_str(),
                                         measure, peer.read, std::cref(file), std::ref(memory),
                                         *expected)
                ->MeasureProcessCPUTime()
                ->Unit(benchmark::kMillisecond);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace

} // namespace kova_import::bench

int main(int argc, char **argv) {
    try {
        return kova_import::bench::run(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "record_benchmark: %s\n", error.what());
        return 1;
    }
}
