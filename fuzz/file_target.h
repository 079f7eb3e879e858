#pragma once

// What a target that fuzzes import files supplies. `file_target.cpp` hands it to libFuzzer, which
// wants functions of its own names.

#include <cstddef>
#include <cstdint>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t most);

namespace kova_fuzz {

/// Bytes of an input that say how its file is imported; the file stands behind them.
extern const std::size_t option_bytes;

/// Imports an input, which has its options at least.
void run_input(const std::uint8_t *data, std::size_t size);

/// Changes an input of `size` bytes in place, up to `most`; returns its new size.
std::size_t mutate_input(std::uint8_t *data, std::size_t size, std::size_t most,
                         std::uint32_t seed);

} // namespace kova_fuzz
