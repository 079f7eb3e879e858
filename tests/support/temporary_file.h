#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kova_test {

/// A folder of its own in the system's temporary folder, gone with the object.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder();

    [[nodiscard]] const std::filesystem::path &path() const { return path_; }

    /// Writes a file in the folder and returns its path.
    std::filesystem::path write(const std::string &name, std::string_view content) const;

  private:
    std::filesystem::path path_;
};

[[nodiscard]] std::string read_file(const std::filesystem::path &path);

} // namespace kova_test
