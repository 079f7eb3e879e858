#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kova_import {

/// Takes `count` numbers, which `next()` gives one after the other, and calls `visit(number)` for
/// each that has been there before: first for neighbours that are alike, which take no room, so
/// that a file of blank records does not fill the memory, and then for the others in ascending
/// order.
template <class Next, class Visit>
void for_each_repeated(std::size_t count, Next next, Visit visit) {
    std::vector<decltype(next())> numbers;
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = next();
        if (!numbers.empty() && numbers.back() == number)
            visit(number);
        else
            numbers.push_back(number);
    }
    std::sort(numbers.begin(), numbers.end());
    for (std::size_t i = 1; i < numbers.size(); ++i)
        if (numbers[i] == numbers[i - 1])
            visit(numbers[i]);
}

} // namespace kova_import
