#include "legacy/simulated_systems.h"

#include "control/notices.h"

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

void SimulatedSystems::read_system(ImportModule &module, std::int32_t system,
                                   SystemSeriesTable &table,
                                   void (*read)(ImportModule &, std::int32_t, SystemSeriesTable &),
                                   const char *reason_to_drop) const {
    if (has(system)) {
        read(module, system, table);
        return;
    }
    const RecordPlace heading = module.reader.last_record();
    SystemSeriesTable dropped;
    dropped.is_kept = false;
    read(module, system, dropped);
    const bool held_data = module.reader.ok() && dropped.series.size() > 0;
    if (held_data && module.shared.transport_only == 0)
        give_reason_at(module, heading, IMPORT_EXPORT_CONDITION_UNMET, reason_to_drop, system);
}

} // namespace kova_import::legacy
