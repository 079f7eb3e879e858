#pragma once

// The files that the benchmark reads. The same size gives the same bytes, everywhere.

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace kova_import::bench {

/// What a record holds and how it is read. The Fortran side knows these numbers.
enum class Shape : std::int32_t {
    two_reals = 0,
    three_integers = 1,
    geometry = 2,          ///< three integers and ten reals
    fixed_geometry = 3,    ///< (4(I5),16(F15.5))
    fixed_connections = 4, ///< (7X,I5,11X,I5,18X,F10.0)
    fixed_pairs = 5,       ///< (2(F10.0))
};

class Random;

/// Makes one line of a file, with its end. Records are numbered from 0.
using MakeLine = std::string (*)(std::int32_t record, Random &random);

struct DataSet {
    const char *name;
    const char *label;
    Shape shape;
    MakeLine make_line;
};

[[nodiscard]] const std::array<DataSet, 7> &data_sets();

/// A data set as a file.
struct DataFile {
    const DataSet *set = nullptr;
    std::string path;
    std::size_t size = 0; ///< bytes
    std::int32_t records = 0;
};

/// A new folder for temporary files, gone at the end with what is in it.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder();

    [[nodiscard]] const std::filesystem::path &path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// Writes whole lines of `set` up to `size` bytes, at least one.
[[nodiscard]] DataFile write_data(const TemporaryFolder &folder, const DataSet &set,
                                  std::size_t size);

} // namespace kova_import::bench
