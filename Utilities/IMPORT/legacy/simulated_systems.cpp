#include "legacy/simulated_systems.h"

#include <algorithm>
#include <cstddef>

namespace kova_import::legacy {

SimulatedSystems::SimulatedSystems(const ImportModule &module)
    : count_(module.shared.state_variable_count),
      system_of_state_variable_(module.system_of_state_variable) {}

bool SimulatedSystems::has(std::int32_t system) const {
    const auto known = static_cast<std::int32_t>(legacy_system_count);
    const auto *const end = system_of_state_variable_.data() + std::clamp(count_, 0, known);
    return std::find(system_of_state_variable_.data(), end, system) != end;
}

} // namespace kova_import::legacy
