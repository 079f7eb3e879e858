#include "control/sections/fields.h"

#include "control/notices.h"

#include <cstddef>

namespace kova_import {

namespace {

constexpr const char *factor_statement = "factors of the field";

} // namespace

void FieldFactors::read(ImportModule &module, std::int32_t field_number) {
    RecordReader &reader = module.reader;
    reader.list(factor_statement, field("scale factor", factors_.scale),
                field("conversion factor", factors_.conversion));
    if (reader.ok())
        fields_.push_back({reader.last_record().line, field_number, factors_});
}

void FieldFactors::give_replaced(const ImportModule &module) const {
    for (RowWalk walk(fields_); !walk.at_end();) {
        const OfField &row = walk.next();
        if (row.factors != factors_)
            give_reason_at(module, {factor_statement, row.line}, IMPORT_EXPORT_REPLACED,
                           "The host gets the factors of the last field that has functions.",
                           row.field_number);
    }
}

FixedText<30> kept_description(const ImportModule &module, const FixedText<80> &line,
                               std::int32_t function) {
    constexpr std::size_t kept = FixedText<30>::width;
    if (module.reader.ok() && line.trimmed().size() > kept)
        give_reason(module, IMPORT_EXPORT_CUT,
                    "The description of the function is cut at 30 characters.", function);
    return FixedText<30>(line.view().substr(0, kept));
}

} // namespace kova_import
