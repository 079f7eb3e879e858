#pragma once

#include <cstdint>

namespace kova_import {

/// Calls `visit(number)` for number = 1 .. `count`. A negative count is none.
template <class Visit>
void for_each_number(std::int32_t count, Visit visit) {
    for (std::int64_t number = 1; number <= count; ++number)
        visit(static_cast<std::int32_t>(number));
}

} // namespace kova_import
