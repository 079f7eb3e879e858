#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kova_import {

/// Calls `visit(number)` for each number that has stood among `numbers` before, as often as it has.
template <class Number, class Visit>
void for_each_repeated(std::vector<Number> numbers, Visit visit) {
    std::sort(numbers.begin(), numbers.end());
    for (std::size_t i = 1; i < numbers.size(); ++i)
        if (numbers[i] == numbers[i - 1])
            visit(numbers[i]);
}

} // namespace kova_import
