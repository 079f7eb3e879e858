// Imports every NAME.inp of a folder with the library and writes what came of it beside the file:
// NAME.log, NAME.console and NAME.failure (statement number, line and column of the read that
// failed). NAME.options changes the answers. The files are taken in the order of their names,
// because the send buffers live from one import to the next.

#include "tests/support/import_run.h"
#include "tests/support/temporary_file.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

void write_lines(const std::filesystem::path &path, const std::vector<std::string> &lines) {
    std::ofstream file(path, std::ios::binary);
    for (const std::string &line : lines)
        file << line << '\n';
}

void import_one(const std::filesystem::path &file) {
    std::filesystem::path base = file;
    base.replace_extension();
    const auto beside = [&base](const char *extension) {
        return std::filesystem::path(base.string() + extension);
    };
    const kova_test::ImportRun run = kova_test::import_text(
        kova_test::read_file(file), kova_test::settings_of(beside(".options")));
    std::vector<std::string> failure;
    for (const kova_test::Notice &notice : run.notices_of(IMPORT_EXPORT_READ_FAILED))
        failure.push_back(std::to_string(notice.statement_number) + " " +
                          std::to_string(notice.line) + " " + std::to_string(notice.column));
    write_lines(beside(".log"), run.log);
    write_lines(beside(".console"), run.console);
    write_lines(beside(".failure"), failure);
}

} // namespace

int main(int argument_count, char **arguments) {
    if (argument_count != 2) {
        std::fputs("usage: import_logs FOLDER\n", stderr);
        return 2;
    }
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(arguments[1]))
        if (entry.path().extension() == ".inp")
            files.push_back(std::filesystem::absolute(entry.path()));
    std::sort(files.begin(), files.end());
    for (const std::filesystem::path &file : files)
        import_one(file);
    return 0;
}
