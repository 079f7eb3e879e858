#include "tests/support/temporary_file.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <system_error>

namespace kova_test {

TemporaryFolder::TemporaryFolder() {
    std::random_device number;
    do
        path_ = std::filesystem::temp_directory_path() / ("kova-test-" + std::to_string(number()));
    while (!std::filesystem::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryFolder::write(const std::string &name,
                                             std::string_view content) const {
    std::filesystem::path path = path_ / name;
    std::ofstream(path, std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
    return path;
}

std::string read_file(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace kova_test
