// Fuzzes single sections. The first three bytes of the input say how the import is done, which
// section is meant, and which of some sound files stands in front of it; the rest is the section.
// The host ends the import behind it, so that no effort goes into other sections. Built once for
// each family of formats.

#include "fuzz/file_mutator.h"
#include "fuzz/file_target.h"
#include "fuzz/fuzz_support.h"
#include "fuzz/import_checks.h"
#include "fuzz/import_input.h"
#include "fuzz/import_run.h"
#include "fuzz/new_files.h"

#include "host/reference_host.h"
#include "import_export.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kova_fuzz {
namespace {

constexpr std::size_t section_count = 11;

NewFile new_file(std::uint32_t seed) {
    return is_current_target ? new_current_file(seed) : new_legacy_file(seed);
}

MemoryFile &memory_file() {
    static MemoryFile file;
    return file;
}

/// Imports a file and checks what comes of it; returns whether all of it could be read.
bool import_checked(const Input &input) {
    memory_file().write(input.file);
    kova_host::ReferenceHost host;
    const Run run = import_into(host, input, memory_file());
    check_run(run, host, input);
    return run.count(IMPORT_EXPORT_READ_FAILED) == 0;
}

std::string header_of(bool has_toxicants) {
    std::string header = has_toxicants ? "    8" : "   11";
    header += is_current_target ? "      3\n" : "      2\n";
    return header;
}

/// One of 256 files that can be read to their end.
const NewFile &sound_file(std::uint8_t number) {
    static std::array<std::optional<NewFile>, 256> files;
    std::optional<NewFile> &file = files[number];
    for (std::uint32_t seed = number; !file; seed += files.size()) {
        NewFile candidate = new_file(seed);
        Input input;
        input.file = header_of(false) + candidate.text;
        if (import_checked(input))
            file = std::move(candidate);
    }
    return *file;
}

std::size_t section_of(const std::uint8_t *data) { return 1 + data[1] % section_count; }

} // namespace

const std::size_t option_bytes = 3;

void run_input(const std::uint8_t *data, std::size_t size) {
    const std::size_t section = section_of(data);
    Input input;
    input.transport_only = (data[0] & 0x01U) != 0;
    input.index_segment_names = (data[0] & 0x02U) == 0;
    input.has_tables = (data[0] & 0x04U) != 0;
    input.file = header_of((data[0] & 0x08U) != 0);
    input.file += sound_file(data[2]).front(section);
    input.file += file_behind(option_bytes, data, size);
    input.last_section = static_cast<std::int32_t>(section);
    static_cast<void>(import_checked(input));
}

std::size_t mutate_input(std::uint8_t *data, std::size_t size, std::size_t most,
                         std::uint32_t seed) {
    constexpr std::uint32_t choices = 32;
    const std::uint32_t choice = seed % choices;
    const std::uint32_t rest = seed / choices;
    if (choice < 6)
        return LLVMFuzzerMutate(data, size, most);
    switch (choice) {
    case 6:
        data[0] = static_cast<std::uint8_t>(rest);
        return size;
    case 7:
        data[2] = static_cast<std::uint8_t>(rest);
        return size;
    case 8:
        data[1] = static_cast<std::uint8_t>(rest % section_count);
        data[2] = static_cast<std::uint8_t>(rest / section_count);
        return put_file_behind(option_bytes, sound_file(data[2]).section(section_of(data)), data,
                               most);
    case 9:
        return put_file_behind(option_bytes, new_file(rest).section(section_of(data)), data, most);
    default:
        return put_file_behind(
            option_bytes, mutated_file(file_behind(option_bytes, data, size), rest), data, most);
    }
}

} // namespace kova_fuzz
