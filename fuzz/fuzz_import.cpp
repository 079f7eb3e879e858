// Fuzzes whole imports. The first byte of the input says which header the file gets and what the
// host answers; the rest is the file behind its header. Built once for each family of formats, so
// that each is really reached: KOVA_FUZZ_FIRST_VERSION is 0 for the legacy one, 3 for the current.

#include "fuzz/file_mutator.h"
#include "fuzz/file_target.h"
#include "fuzz/fuzz_support.h"
#include "fuzz/import_checks.h"
#include "fuzz/import_input.h"
#include "fuzz/import_run.h"
#include "fuzz/new_files.h"
#include "fuzz/send_buffer_watch.h"

#include "host/reference_host.h"

#include <cstddef>
#include <cstdint>

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

} // namespace

const std::size_t option_bytes = 1;

void run_input(const std::uint8_t *data, std::size_t size) {
    run(input_of({reinterpret_cast<const char *>(data), size}));
}

std::size_t mutate_input(std::uint8_t *data, std::size_t size, std::size_t most,
                         std::uint32_t seed) {
    constexpr std::uint32_t plain_options = 0x41; // the first header, a plain path
    constexpr std::uint32_t choices = 32;
    const std::uint32_t choice = seed % choices;
    const std::uint32_t rest = seed / choices;
    if (choice < 8)
        return LLVMFuzzerMutate(data, size, most);
    if (choice == 8) {
        data[0] = static_cast<std::uint8_t>(rest);
        return size;
    }
    if (choice == 9) {
        const std::uint32_t transport_only = rest % 4 == 0 ? 0x08 : 0;
        data[0] = static_cast<std::uint8_t>(plain_options | transport_only);
        const NewFile file = is_current_target ? new_current_file(rest) : new_legacy_file(rest);
        return put_file_behind(option_bytes, file.text, data, most);
    }
    return put_file_behind(option_bytes, mutated_file(file_behind(option_bytes, data, size), rest),
                           data, most);
}

} // namespace kova_fuzz
