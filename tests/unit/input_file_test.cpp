#include "control/input_file.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>

namespace kova_import {
namespace {

TEST(InputFile, RefusesPathsThatAreTooLong) {
    InputFile file;
    // of 512 characters, all that a host can give, by the system; longer ones before it is asked
    for (const std::size_t size : {512U, 513U, 2000U}) {
        EXPECT_STREQ(file.open(std::string(size, 'a')), "the path is too long") << size;
        EXPECT_FALSE(file.is_open());
    }
}

std::ptrdiff_t open_file_count() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(InputFile, HoldsOneFileWhileItIsOpen) {
    const kova_test::TemporaryFolder folder;
    const std::string path = folder.write("model.inp", "text").string();
    const std::ptrdiff_t before = open_file_count();
    InputFile file;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(file.open(path), nullptr);
        EXPECT_EQ(open_file_count(), before + 1);
    }
    EXPECT_STREQ(file.open(folder.path().string()), "it is a folder");
    EXPECT_EQ(open_file_count(), before);
}

TEST(InputFile, ClosesItsFileWhenItEnds) {
    const kova_test::TemporaryFolder folder;
    const std::string path = folder.write("model.inp", "text").string();
    const std::ptrdiff_t before = open_file_count();
    {
        InputFile file;
        EXPECT_EQ(file.open(path), nullptr);
    }
    EXPECT_EQ(open_file_count(), before);
}

} // namespace
} // namespace kova_import
