// Fuzzes whole imports. The first byte of the input says which header the file gets and what the
// host answers; the rest is the file behind its header. Built once for each family of formats, so
// that each is really reached: KOVA_FUZZ_FIRST_VERSION is 0 for the legacy one, 3 for the current.

#include "fuzz/file_mutator.h"
#include "fuzz/fuzz_support.h"
#include "fuzz/import_checks.h"
#include "fuzz/import_input.h"
#include "fuzz/import_run.h"
#include "fuzz/new_files.h"
#include "fuzz/send_buffer_watch.h"

#include "host/reference_host.h"

#include <cstddef>
#include <cstdint>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t most);

namespace kova_fuzz {
namespace {

/// Imports another file, so that what an import leaves behind shows in the next one.
void import_another(Input input, MemoryFile &file) {
    input.file = input.hash / 32 % 2 == 0 ? "   11      2\n" + new_legacy_file(input.hash).text
                                          : "   11      3\n" + new_current_file(input.hash).text;
    input.repeat = false;
    input.has_tables = !input.has_tables;
    file.write(input.file);
    kova_host::ReferenceHost host;
    check_run(import_into(host, input, file), host, input);
}

/// Imports the file with one of its counts made large, and with the records for it.
void import_stretched(Input input, MemoryFile &file) {
    input.file = stretched_file(input.file, input.hash);
    input.repeat = false;
    file.write(input.file);
    kova_host::ReferenceHost host;
    check_run(import_into(host, input, file), host, input);
}

void run(const Input &input) {
    static MemoryFile file;
    file.write(input.file);
    kova_host::ReferenceHost host;
    const Run first = import_into(host, input, file);
    check_run(first, host, input);
    require((input.path == Path::missing) <= host.progress().empty(),
            "a file that is not there is not imported");
    if (input.is_stretched)
        import_stretched(input, file);
    if (!input.repeat)
        return;
    import_another(input, file);
    file.write(input.file);
    kova_host::ReferenceHost other_host;
    const Run second = import_into(other_host, input, file);
    check_run(second, other_host, input);
    require(!first.log.empty() &&
                without_buffer_tails(first.log) == without_buffer_tails(second.log),
            "the same file gives the same log, but for what earlier series have left");
    require(first.notices == second.notices, "the same file gives the same notices");
}

// Mutation

constexpr std::size_t options = 1;

std::size_t mutate(std::uint8_t *data, std::size_t size, std::size_t most, std::uint32_t seed) {
    constexpr std::uint32_t plain_options = 0x41; // the first header, a plain path
    constexpr std::uint32_t choices = 32;
    const std::uint32_t choice = seed % choices;
    const std::uint32_t rest = seed / choices;
    if (size == 0 || most == 0 || choice < 8)
        return LLVMFuzzerMutate(data, size, most);
    if (choice == 8) {
        data[0] = static_cast<std::uint8_t>(rest);
        return size;
    }
    if (choice == 9) {
        const std::uint32_t transport_only = rest % 4 == 0 ? 0x08 : 0;
        data[0] = static_cast<std::uint8_t>(plain_options | transport_only);
        const NewFile file = is_current_target ? new_current_file(rest) : new_legacy_file(rest);
        return put_file_behind(options, file.text, data, most);
    }
    return put_file_behind(options, mutated_file(file_behind(options, data, size), rest), data,
                           most);
}

} // namespace
} // namespace kova_fuzz

extern "C" {
int LLVMFuzzerInitialize(int *argument_count, char ***arguments);
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t most,
                                    unsigned seed);
std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t *start, std::size_t start_size,
                                      const std::uint8_t *end, std::size_t end_size,
                                      std::uint8_t *joined, std::size_t most, unsigned seed);
}

int LLVMFuzzerInitialize(int * /*argument_count*/, char *** /*arguments*/) {
    kova_fuzz::prepare_process();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    kova_fuzz::run(kova_fuzz::input_of({reinterpret_cast<const char *>(data), size}));
    return 0;
}

std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t most,
                                    unsigned seed) {
    return kova_fuzz::mutate(data, size, most, seed);
}

std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t *start, std::size_t start_size,
                                      const std::uint8_t *end, std::size_t end_size,
                                      std::uint8_t *joined, std::size_t most, unsigned seed) {
    if (start_size == 0 || end_size == 0 || most == 0)
        return 0;
    joined[0] = start[0];
    using kova_fuzz::file_behind;
    using kova_fuzz::options;
    return kova_fuzz::put_file_behind(
        options,
        kova_fuzz::joined_files(file_behind(options, start, start_size),
                                file_behind(options, end, end_size), seed),
        joined, most);
}
