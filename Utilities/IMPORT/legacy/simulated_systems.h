#pragma once

#include "control/import_module.h"
#include "control/notices.h"

#include <array>
#include <cstdint>

namespace kova_import::legacy {

/// The systems of the file that the host simulates, as they are when a section starts. The host
/// numbers them in the order of the file, each for one system, so that what is read of them one
/// behind the other can be sent in that order.
class SimulatedSystems {
  public:
    explicit SimulatedSystems(const ImportModule &module);

    /// State variables of the host.
    [[nodiscard]] std::int32_t count() const { return count_; }

    /// Whether a state variable stands for `system`, a number of the file.
    [[nodiscard]] bool has(std::int32_t system) const;

    /// Reads the records of a system by `read(module, system, table)`. Those of a system that the
    /// host simulates go into `table`; others are checked like them and let go, for
    /// `reason_to_drop`. `Table` has `is_kept` and `holds_data()`.
    template <class Table, class Read>
    void read_system(ImportModule &module, std::int32_t system, Table &table, Read read,
                     const char *reason_to_drop) const {
        if (has(system)) {
            read(module, system, table);
            return;
        }
        const RecordPlace heading = module.reader.last_record();
        Table dropped;
        dropped.is_kept = false;
        module.drops_system = true;
        read(module, system, dropped);
        module.drops_system = false;
        if (dropped.holds_data() && is_awaited(module))
            give_reason_at(module, heading, IMPORT_EXPORT_CONDITION_UNMET, reason_to_drop, system);
    }

  private:
    std::int32_t count_;
    std::array<std::int32_t, legacy_system_count> system_of_state_variable_;
};

} // namespace kova_import::legacy
