#include "control/input_file.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace kova_import
