#include "cli/suggestions.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace kova_command {

namespace {

/// The least number of letters to insert, delete, replace or swap with their neighbour.
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> before_last(other.size() + 1);
    std::vector<std::size_t> last(other.size() + 1);
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= one.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= other.size(); ++j) {
            const bool differs = one[i - 1] != other[j - 1];
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (differs ? 1 : 0)});
            const bool swapped =
                i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1];
            if (swapped)
                row[j] = std::min(row[j], before_last[j - 2] + 1);
        }
        before_last.swap(last);
        last.swap(row);
    }
    return last[other.size()];
}

} // namespace

std::optional<std::string> nearest(std::string_view word, const std::vector<std::string> &known) {
    constexpr std::size_t longest = 64;
    if (word.size() > longest)
        return std::nullopt;
    std::optional<std::string> best;
    std::size_t least = std::max<std::size_t>(1, word.size() / 3) + 1;
    for (const std::string &candidate : known) {
        // A word that is only begun is meant to be what it begins.
        const bool begun = word.size() > 3 && candidate.starts_with(word);
        const std::size_t steps = begun ? 1 : distance(word, candidate);
        if (steps < least) {
            least = steps;
            best = candidate;
        }
    }
    return best;
}

} // namespace kova_command
