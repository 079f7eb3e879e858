#include "control/input_file.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <unistd.h>

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

/// Opens and closes the file where standard input has been closed, so that it gets handle 0. Says
/// whether that goes as always.
bool opens_in_place_of_standard_input(const std::string &path, int left_over_error) {
    ::close(STDIN_FILENO);
    const std::ptrdiff_t before = open_file_count();
    InputFile file;
    errno = left_over_error;
    const bool is_opened = file.open(path) == nullptr && file.is_open();
    const std::ptrdiff_t while_open = open_file_count();
    file.close();
    return is_opened && while_open == before + 1 && !file.is_open() && open_file_count() == before;
}

TEST(InputFileDeathTest, MayTakeThePlaceOfStandardInput) {
    const kova_test::TemporaryFolder folder;
    const std::string path = folder.write("model.inp", "text").string();
    // a call that went well leaves the reason why an earlier one did not
    for (const int left_over_error : {0, EINTR, EWOULDBLOCK})
        EXPECT_EXIT(std::_Exit(opens_in_place_of_standard_input(path, left_over_error) ? 0 : 1),
                    testing::ExitedWithCode(0), "")
            << left_over_error;
}

} // namespace
} // namespace kova_import
