#pragma once

// What the fields of flows and those of dispersive exchanges have in common.

#include "control/chunked_list.h"
#include "control/fixed_text.h"
#include "control/import_module.h"

#include <cstdint>

namespace kova_import {

/// Scale and conversion factor of the fields that have functions.
///
/// There is one pair for a whole section, and every field's record overwrites it: hosts get the
/// factors of the last field for all fields, and models that were imported that way rely on it.
class FieldFactors {
  public:
    /// Reads the factors of a field. A factor that the record leaves out stays as it is.
    void read(ImportModule &module, std::int32_t field_number);

    /// Tells which fields do not get the factors that their own record gives.
    void give_replaced(const ImportModule &module) const;

    [[nodiscard]] float scale() const { return factors_.scale; }
    [[nodiscard]] float conversion() const { return factors_.conversion; }

  private:
    struct Factors {
        float scale = 0;
        float conversion = 0;
        friend bool operator==(const Factors &, const Factors &) = default;
    };
    struct OfField {
        std::int64_t line = 0;
        std::int32_t field_number = 0;
        Factors factors;
    };

    Factors factors_;
    ChunkedList<OfField> fields_;
};

/// What the host gets of a description line: its first 30 columns. Tells when that is not all.
[[nodiscard]] FixedText<30> kept_description(const ImportModule &module, const FixedText<80> &line,
                                             std::int32_t function);

} // namespace kova_import
