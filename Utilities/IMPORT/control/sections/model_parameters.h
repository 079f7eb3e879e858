#pragma once

// The opening block of a file: dates, options and time steps, and the systems that the host will
// simulate.

#include "control/fixed_text.h"
#include "control/import_module.h"
#include "control/packed_list.h"
#include "control/report.h"

#include <cstdint>

namespace kova_import {

struct Date {
    std::int32_t month = 0;
    std::int32_t day = 0;
    std::int32_t year = 0;
};

struct TimeOfDay {
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;
};

struct ModelParameters {
    std::int32_t model_type = 0; ///< 11 eutrophication, 8 toxicant
    Date start_date;
    TimeOfDay start_time;
    Date skip_date; ///< in the hydrodynamic linkage file
    TimeOfDay skip_time;
    float simulation_length = 0; ///< days
    std::int32_t system_count = 0;
    std::int32_t solution_type = 0;
    std::int32_t negative_solution_option = 0;
    std::int32_t icrd_option = 0;
    std::int32_t intyp_option = 0;
    float maximum_time_step_fraction = 0;
    float minimum_time_step = 0; ///< days
    float maximum_time_step = 0; ///< days
    float output_interval = 0;   ///< days
};

/// A system as the host lists it.
struct SystemName {
    FixedText<5> short_name;
    FixedText<30> long_name;
};

using SystemNames = PackedList<SystemName>;

/// Model types that have a name in the report.
inline constexpr std::int32_t eutrophication = 11;
inline constexpr std::int32_t toxicant = 8;

/// Reads the header record again, into the shared model type and file version.
void read_header(ImportModule &module, ModelParameters &parameters);

/// Reads the dates, the simulation length and the system count, which later sections share.
void read_period(ImportModule &module, ModelParameters &parameters);

/// Reads the options behind the system count, and the time-step limits.
void read_options(ImportModule &module, ModelParameters &parameters);

/// Sends the rows of the table of model parameters, behind its title.
void send_parameter_rows(const ModelParameters &parameters);

/// Sends the table of model parameters to the information pane. `title` is its title cell.
template <std::size_t n>
void send_parameter_table(const ModelParameters &parameters, const char (&title)[n]) {
    send<"PINFOHTML">(
        "<body><center><table style=\"text-align: left; width: 436px; height: 192px;\"");
    send<"PINFOHTML">(
        "border=\"1\" cellpadding=\"2\" cellspacing=\"2\"><tbody><tr align=\"center\">");
    send<"PINFOHTML">("<td style=\"width: 214px;\" colspan=\"2\" rowspan=\"1\">");
    send<"PINFOHTML">(title);
    send_parameter_rows(parameters);
}

/// Sends the model file name and the dates, the systems with their table, and the options and time
/// steps. `system_count` is the number of systems as the host gets it.
void send_model(ImportModule &module, const ModelParameters &parameters, std::int32_t system_count,
                const SystemNames &systems);

} // namespace kova_import
