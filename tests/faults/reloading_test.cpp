// The library as it is delivered, loaded and unloaded a thousand times, with imports in between.
//
//     reloading LIBRARY

#include "import_export.h"
#include "tests/faults/fault_points.h"
#include "tests/support/model_text.h"
#include "tests/support/noting_host.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kova_test {
namespace {

std::filesystem::path library_path;

/// The library while it is loaded.
class Library {
  public:
    Library() : handle_(::dlopen(library_path.c_str(), RTLD_NOW | RTLD_LOCAL)) {}
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;
    ~Library() {
        if (is_loaded()) {
            EXPECT_EQ(::dlclose(handle_), 0);
        }
    }

    [[nodiscard]] bool is_loaded() const { return handle_ != nullptr; }

    /// The commands of an import.
    std::vector<std::string> import(const std::filesystem::path &path) {
        static std::FILE *const nowhere = std::fopen("/dev/null", "w");
        noting_host().import_path = path.string();
        std::FILE *const console = std::exchange(stdout, nowhere);
        reinterpret_cast<void (*)()>(::dlsym(handle_, "importexport"))();
        stdout = console;
        return std::exchange(noting_host().log, {});
    }

    [[nodiscard]] const import_export_data &block() const {
        return *static_cast<const import_export_data *>(::dlsym(handle_, "IMPORT_EXPORT"));
    }

  private:
    void *handle_;
};

struct Footprint {
    std::size_t files = 0;
    std::size_t mappings = 0;
    long blocks = 0;
    bool is_mapped = false;

    bool operator==(const Footprint &) const = default;
};

Footprint footprint() {
    Footprint result;
    {
        const std::filesystem::directory_iterator files("/proc/self/fd");
        result.files = static_cast<std::size_t>(std::distance(begin(files), end(files)));
        std::ifstream maps("/proc/self/maps");
        const std::string name = library_path.filename().string();
        for (std::string line; std::getline(maps, line);) {
            result.mappings += line.find(".so") != std::string::npos ? 1U : 0U;
            result.is_mapped = result.is_mapped || line.ends_with(name);
        }
    }
    result.blocks = blocks_in_use();
    return result;
}

TEST(Reloading, LeavesNothingBehind) {
    const TemporaryFolder folder;
    // as long as each other: a longer name outlives its import, though not the library
    const std::array files = {folder.write("model7.inp", text_of(legacy_records())),
                              folder.write("model8.inp", text_of(current_records())),
                              folder.path() / "nobody.inp"};
    std::array<std::vector<std::string>, files.size()> first_logs;
    constexpr int times = 1000;
    constexpr int settled = 10; // the loader keeps what it will need again
    Footprint expected;
    for (int i = 0; i < times; ++i) {
        {
            Library library;
            ASSERT_TRUE(library.is_loaded()) << ::dlerror();
            EXPECT_EQ(library.block().line_counter, 1);
            for (std::size_t j = 0; j < files.size(); ++j) {
                const std::vector<std::string> log = library.import(files[j]);
                if (i == 0)
                    first_logs[j] = log;
                EXPECT_TRUE(log == first_logs[j]);
            }
        }
        const Footprint now = footprint();
        EXPECT_FALSE(now.is_mapped);
        if (i == settled)
            expected = now;
        if (i > settled) {
            EXPECT_EQ(now.files, expected.files);
            EXPECT_EQ(now.mappings, expected.mappings);
            EXPECT_EQ(now.blocks, expected.blocks);
        }
        ASSERT_FALSE(HasFailure()) << "load " << i + 1;
    }
    EXPECT_GT(first_logs[0].size(), 200U);
    EXPECT_GT(first_logs[1].size(), 200U);
    EXPECT_EQ(first_logs[2].size(), 8U) << "no such file";
}

} // namespace
} // namespace kova_test

int main(int count, char **arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (count != 2) {
        std::fprintf(stderr, "usage: reloading LIBRARY\n");
        return 2;
    }
    kova_test::library_path = arguments[1];
    return RUN_ALL_TESTS();
}
