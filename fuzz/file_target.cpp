#include "fuzz/file_target.h"

#include "fuzz/file_mutator.h"
#include "fuzz/import_run.h"

#include <algorithm>

extern "C" {
int LLVMFuzzerInitialize(int *argument_count, char ***arguments);
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t most,
                                    unsigned seed);
std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t *start, std::size_t start_size,
                                      const std::uint8_t *end, std::size_t end_size,
                                      std::uint8_t *joined, std::size_t most, unsigned seed);
}

using kova_fuzz::file_behind;
using kova_fuzz::option_bytes;

int LLVMFuzzerInitialize(int * /*argument_count*/, char *** /*arguments*/) {
    kova_fuzz::prepare_process();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size >= option_bytes)
        kova_fuzz::run_input(data, size);
    return 0;
}

std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t most,
                                    unsigned seed) {
    if (size < option_bytes || most <= option_bytes)
        return LLVMFuzzerMutate(data, size, most);
    return kova_fuzz::mutate_input(data, size, most, seed);
}

std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t *start, std::size_t start_size,
                                      const std::uint8_t *end, std::size_t end_size,
                                      std::uint8_t *joined, std::size_t most, unsigned seed) {
    if (start_size < option_bytes || end_size < option_bytes || most <= option_bytes)
        return 0;
    std::copy_n(start, option_bytes, joined);
    return kova_fuzz::put_file_behind(
        option_bytes,
        kova_fuzz::joined_files(file_behind(option_bytes, start, start_size),
                                file_behind(option_bytes, end, end_size), seed),
        joined, most);
}
