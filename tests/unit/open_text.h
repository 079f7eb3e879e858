#pragma once

#include "control/record_reader.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

namespace kova_import {

/// A reader on a file of its own with the given text.
class OpenText {
  public:
    explicit OpenText(std::string_view text) : reader_(exported_counter_) {
        const char *reason = reader_.stream().open(folder_.write("text.inp", text).string());
        EXPECT_EQ(reason, nullptr);
        reader_.start_counting();
    }

    RecordReader &operator*() { return reader_; }
    RecordReader *operator->() { return &reader_; }
    [[nodiscard]] std::int32_t exported_counter() const { return exported_counter_; }

  private:
    kova_test::TemporaryFolder folder_;
    std::int32_t exported_counter_ = 0;
    RecordReader reader_;
};

} // namespace kova_import
