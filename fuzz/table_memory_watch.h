#pragma once

// Follows the memory of the library's tables, which comes in chunks of one size.

#include "control/chunk_pool.h"
#include "fuzz/fuzz_support.h"

#include <algorithm>
#include <cstddef>

#include <sanitizer/allocator_interface.h>

namespace kova_fuzz {

/// Counts what has the size of a chunk; hardly anything else has.
class TableMemoryWatch {
  public:
    /// Once in a process.
    static void install() {
        require(__sanitizer_install_malloc_and_free_hooks(hear_malloc, hear_free) != 0,
                "the memory can be followed");
    }

    static void start_import() { most_ = before_ = now_; }

    /// The tables of an import take a few times the memory of their records in the file, and a
    /// chunk for each of the `lists` that have begun: no count of the file decides how large they
    /// are.
    static void check(std::size_t file_size, std::size_t lists) {
        constexpr std::size_t times = 4;
        require((most_ - before_) * kova_import::chunk_pool::chunk_bytes <=
                    times * file_size + lists * kova_import::chunk_pool::chunk_bytes,
                "tables take no more memory than a few times the file");
    }

  private:
    static void hear_malloc(const volatile void * /*memory*/, std::size_t size) {
        if (size == kova_import::chunk_pool::chunk_bytes)
            most_ = std::max(most_, ++now_);
    }
    static void hear_free(const volatile void *memory) {
        if (memory != nullptr &&
            __sanitizer_get_allocated_size(memory) == kova_import::chunk_pool::chunk_bytes)
            --now_;
    }

    static inline std::size_t before_ = 0;
    static inline std::size_t now_ = 0;
    static inline std::size_t most_ = 0;
};

} // namespace kova_fuzz
