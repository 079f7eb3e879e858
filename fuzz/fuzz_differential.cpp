// Compares the record reader with a plain one, statement by statement: what was read, by its bits;
// where the next record starts; which read failed, why and where; the line counter.

#include "fuzz/fuzz_support.h"
#include "fuzz/plain_reader.h"
#include "fuzz/record_program.h"

#include "control/record_reader.h"

#include <cstdint>
#include <cstring>
#include <string_view>

namespace kova_fuzz {
namespace {

using kova_import::RecordReader;

void compare(RecordReader &reader, const PlainReader &plain) {
    require(reader.ok() == plain.ok(), "both readers take a record, or both refuse it");
    require(reader.line_counter() == plain.line_counter(), "their line counters agree");
    if (!reader.ok()) {
        const kova_import::FilePlace place = reader.failure().place;
        require(reader.failure().kind == plain.failure_kind(), "they refuse it for one reason");
        require(place.line == plain.failure_place().line &&
                    place.column == plain.failure_place().column,
                "they refuse it at one place");
        return;
    }
    require(reader.stream().at_end_of_file() != plain.has_line(), "the file ends for both");
    require(!plain.has_line() || reader.stream().place().line == plain.line(),
            "their next records start in one line");
}

void run(const Input &input) {
    constexpr int most_rounds = 50;
    static MemoryFile file;
    file.write(input.text);
    std::int32_t exported_counter = 0;
    RecordReader reader(exported_counter);
    require(reader.stream().open(file.path()) == nullptr, "the file can be opened");
    reader.start_counting();
    PlainReader plain(input.text);
    Statements<RecordReader> statements(reader);
    Statements<PlainReader> plain_statements(plain);
    for (int round = 0; round < most_rounds; ++round) {
        for (const char letter : input.program) {
            statements.perform(letter);
            plain_statements.perform(letter);
            compare(reader, plain);
            require(std::memcmp(&statements.targets(), &plain_statements.targets(),
                                sizeof(Targets)) == 0,
                    "they read the same values");
            if (!reader.ok())
                return;
        }
        if (!plain.has_line())
            return;
    }
}

} // namespace
} // namespace kova_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const kova_fuzz::Input input =
        kova_fuzz::input_of({reinterpret_cast<const char *>(data), size});
    // Other encodings than plain text are for the record target alone.
    if (!kova_fuzz::is_wide_text(input.text))
        kova_fuzz::run(input);
    return 0;
}
