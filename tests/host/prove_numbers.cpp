// Holds the fast conversions of the command log against the standard library's:
//
//     prove_numbers [STEP [FIRST]]
//
// takes every STEP-th bit pattern from FIRST on; without a step all of them, which takes some ten
// minutes.

#include "number_proof.h"

#include <cstdlib>
#include <iostream>

int main(int argc, char **argv) {
    constexpr std::uint64_t patterns = std::uint64_t{1} << 32U;
    constexpr int decimal = 10;
    const std::uint64_t step = argc > 1 ? std::strtoull(argv[1], nullptr, decimal) : 1;
    const std::uint64_t first = argc > 2 ? std::strtoull(argv[2], nullptr, decimal) : 0;
    if (step == 0) {
        std::cerr << "the step must be 1 or more\n";
        return 2;
    }
    std::uint64_t checked = 0;
    std::uint64_t plain = 0;
    for (std::uint64_t bits = first; bits < patterns; bits += step, ++checked) {
        const auto pattern = static_cast<std::uint32_t>(bits);
        if (kova_host::is_plain_real(std::bit_cast<float>(pattern)))
            ++plain;
        if (const std::string complaint = host_test::complaint_about(pattern); !complaint.empty()) {
            std::cerr << complaint << '\n';
            return 1;
        }
    }
    std::cout << checked << " bit patterns are right, " << plain << " by the fast conversion\n";
}
