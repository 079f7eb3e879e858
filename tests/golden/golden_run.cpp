// Imports all golden cases through the library as it is delivered, on every system: golden_run
// FOLDER. Prints the first difference of each case that has one.

#include "tests/golden/golden_cases.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

int main(int argument_count, char **arguments) {
    if (argument_count != 2)
        return 2;
    int failed = 0;
    int passed = 0;
    try {
        const std::filesystem::path folder = std::filesystem::absolute(arguments[1]);
        for (const std::string &name : kova_test::golden_case_names(folder)) {
            std::string difference;
            try {
                difference = kova_test::golden_difference(folder, name);
            } catch (const std::exception &error) {
                difference = error.what();
            }
            ++(difference.empty() ? passed : failed);
            if (!difference.empty())
                std::fprintf(stderr, "%s: %s\n", name.c_str(), difference.c_str());
        }
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
    std::printf("%d cases as worked out, %d not\n", passed, failed);
    return failed == 0 && passed > 0 ? 0 : 1;
}
