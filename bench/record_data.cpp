#include "record_data.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <system_error>

namespace kova_import::bench {

/// Numbers drawn from a fixed seed. The distributions of the standard library differ from one
/// library to the next.
class Random {
  public:
    /// From 0 up to, and without, `limit`.
    std::int64_t below(std::int64_t limit) {
        return static_cast<std::int64_t>(engine_() % static_cast<std::uint64_t>(limit));
    }

    std::int32_t integer_below(std::int32_t limit) {
        return static_cast<std::int32_t>(below(limit));
    }

    /// From 0 up to `limit`, in steps of a ten-thousandth.
    double real_below(std::int32_t limit) {
        return static_cast<double>(below(std::int64_t{limit} * 10000)) / 10000.0;
    }

  private:
    std::mt19937_64 engine_{20250101};
};

namespace {

template <class... T>
std::string formatted(const char *format, T... values) {
    std::array<char, 512> line{};
    const int length = std::snprintf(line.data(), line.size(), format, values...);
    return {line.data(), static_cast<std::size_t>(length)};
}

// A year in steps of a bit more than three minutes, over and over.
double days(std::int32_t record) { return static_cast<double>(record % 160000) * 0.00228125; }

std::string pair(std::int32_t record, Random &random) {
    return formatted("%12.4f %12.4f\n", days(record), random.real_below(5000));
}

std::string exponent_pair(std::int32_t record, Random &random) {
    return formatted("%15.7E %15.7E\n", days(record), random.real_below(5000) * 1.0e-3);
}

std::string three_integers(std::int32_t record, Random &random) {
    return formatted("%d %d %d\n", record + 1, random.integer_below(1000),
                     random.integer_below(100000));
}

std::string geometry(std::int32_t record, Random &random) {
    std::string line = formatted("%d %d %d", record + 1, random.integer_below(1000), 1);
    for (const int decimals : {1, 2, 2, 3, 4, 4, 4, 2, 1, 3})
        line += formatted(" %.*f", decimals, random.real_below(2000));
    return line + '\n';
}

std::string fixed_geometry(std::int32_t record, Random &random) {
    std::string line =
        formatted("%5d%5d%5d%5d", record % 9999 + 1, random.integer_below(1000), 1, 0);
    for (int i = 0; i < 16; ++i)
        line += formatted("%15.5f", random.real_below(100000));
    return line + '\n';
}

// The columns between the fields are blank, so that a loop that knows no columns can read it too.
std::string fixed_connection(std::int32_t record, Random &random) {
    return formatted("%7s%5d%11s%5d%18s%10.3f\n", "", record % 9999 + 1, "",
                     random.integer_below(1000), "", random.real_below(5000));
}

std::string fixed_pair(std::int32_t record, Random &random) {
    return formatted("%10.4f%10.4f\n", days(record), random.real_below(5000));
}

} // namespace

const std::array<DataSet, 7> &data_sets() {
    static constexpr std::array<DataSet, 7> all{{
        {"pairs", "free-form, 2 reals as F12.4", Shape::two_reals, pair},
        {"exponent_pairs", "free-form, 2 reals as E15.7", Shape::two_reals, exponent_pair},
        {"integers", "free-form, 3 integers", Shape::three_integers, three_integers},
        {"geometry", "free-form, 3 integers and 10 reals", Shape::geometry, geometry},
        {"fixed_geometry", "(4(I5),16(F15.5))", Shape::fixed_geometry, fixed_geometry},
        {"fixed_connections", "(7X,I5,11X,I5,18X,F10.0)", Shape::fixed_connections,
         fixed_connection},
        {"fixed_pairs", "(2(F10.0))", Shape::fixed_pairs, fixed_pair},
    }};
    return all;
}

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "record_benchmark.XXXXXX");
    if (::mkdtemp(name.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), "a temporary folder");
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

DataFile write_data(const TemporaryFolder &folder, const DataSet &set, std::size_t size) {
    DataFile file;
    file.set = &set;
    file.path = folder.path() / set.name;
    std::ofstream out(file.path, std::ios::binary);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    Random random;
    for (;;) {
        const std::string line = set.make_line(file.records, random);
        if (file.records > 0 && file.size + line.size() > size)
            break;
        out << line;
        file.size += line.size();
        ++file.records;
    }
    out.close();
    return file;
}

} // namespace kova_import::bench
