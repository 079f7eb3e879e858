#include "control/sections/model_parameters.h"

#include "control/notices.h"
#include "control/sections/counts.h"

namespace kova_import {

void read_header(ImportModule &module, ModelParameters &parameters) {
    module.reader.fixed<"(I5,5x,I2)">("header", field("model type", module.shared.model_type),
                                      field("file version", module.shared.file_version));
    parameters.model_type = module.shared.model_type;
}

void read_period(ImportModule &module, ModelParameters &parameters) {
    RecordReader &reader = module.reader;
    reader.list("start of the simulation", field("start month", parameters.start_date.month),
                field("start day", parameters.start_date.day),
                field("start year", parameters.start_date.year),
                field("start hour", parameters.start_time.hour),
                field("start minute", parameters.start_time.minute),
                field("start second", parameters.start_time.second));
    reader.list("hydrodynamic skip date", field("skip month", parameters.skip_date.month),
                field("skip day", parameters.skip_date.day),
                field("skip year", parameters.skip_date.year),
                field("skip hour", parameters.skip_time.hour),
                field("skip minute", parameters.skip_time.minute),
                field("skip second", parameters.skip_time.second));
    reader.list("simulation length", field("simulation length", parameters.simulation_length));
    parameters.system_count = read_shared_count(reader, "system count", module.shared.system_count);
    if (reader.ok())
        module.simulation_length = parameters.simulation_length;
}

namespace {

// Reads an option that the host has no place for. One that is 0 says nothing.
void read_dropped_option(ImportModule &module, const char *name) {
    std::int32_t option = 0;
    module.reader.list(name, field(name, option));
    if (module.reader.ok() && option != 0)
        give_reason(module, IMPORT_EXPORT_NOT_IMPORTED,
                    "The option has no counterpart in the current model.");
}

} // namespace

void read_options(ImportModule &module, ModelParameters &parameters) {
    RecordReader &reader = module.reader;
    read_dropped_option(module, "option behind the system count");
    reader.list("solution type", field("solution type", parameters.solution_type));
    reader.list("negative-solution option",
                field("negative-solution option", parameters.negative_solution_option));
    reader.list("ICRD option", field("ICRD option", parameters.icrd_option));
    reader.list("INTYP option", field("INTYP option", parameters.intyp_option));
    read_dropped_option(module, "option behind INTYP");
    reader.list("fraction of the maximum time step",
                field("fraction of the maximum time step", parameters.maximum_time_step_fraction));
    reader.list("time-step limits", field("minimum time step", parameters.minimum_time_step),
                field("maximum time step", parameters.maximum_time_step));
}

namespace {

template <std::size_t n>
void start_row(const char (&label)[n]) {
    send<"PINFOHTML">(
        "</td></tr><tr><td style=\"text-align: right; font-weight: bold; width: 202px;\">");
    send<"PINFOHTML">(label);
}

void send_module_name(std::int32_t model_type) {
    FixedText<132> name;
    if (model_type == eutrophication)
        name.assign("Adv. Eutrophication");
    else if (model_type == toxicant)
        name.assign("Advanced Toxicant");
    send<"PINFOHTML">(
        "</tr><tr><td style=\"text-align: right; font-weight: bold; width: 202px;\">");
    send<"PINFOHTML">("Module:</td><td style=\"width: 214px;\">");
    send<"PINFOHTML">(TerminatedText{name});
}

void send_values(const ModelParameters &parameters) {
    start_row("Starting Month:</td><td style=\"width: 214px;\">");
    send_cell(parameters.start_date.month);
    start_row("Starting Day:</td><td style=\"width: 214px;\">");
    send_cell(parameters.start_date.day);
    start_row("Starting Year:</td><td style=\"width: 214px;\">");
    send_cell(parameters.start_date.year);
    start_row("Simulation Length (days):</td><td style=\"width: 214px;\">");
    send_cell(parameters.simulation_length, "%f");
    start_row("Number of Systems:</td><td style=\"width: 214px;\">");
    send_cell(parameters.system_count);
    send<"PINFOHTML">("</td></tr>");
    send<"PINFOHTML">("<tr><td style=\"text-align: right; font-weight: bold; width: 202px;\">");
    send<"PINFOHTML">("Output Interval:</td><td style=\"width: 214px;\">");
    send_cell(parameters.output_interval, "%F");
    send<"PINFOHTML">("</td></tr></tbody></table><br></center></body>");
}

void send_period(const ImportModule &module, const ModelParameters &parameters) {
    send<"PFILENAME">(TerminatedText{module.model_file_name});
    send<"PMODELTYPE">(parameters.model_type);
    send<"PSEEDTIME">(parameters.start_time.hour, parameters.start_time.minute,
                      parameters.start_time.second);
    send<"PSEEDDATE">(parameters.start_date.month, parameters.start_date.day,
                      parameters.start_date.year);
    send<"PHYDSKIPDATE">(parameters.skip_date.month, parameters.skip_date.day,
                         parameters.skip_date.year);
    send<"PHYDSKIPTIME">(parameters.skip_time.hour, parameters.skip_time.minute,
                         parameters.skip_time.second);
    send<"PENDJULIAN">(parameters.simulation_length);
}

void send_systems(std::int32_t count, const SystemNames &systems) {
    send<"PNUMSYS">(count);
    send<"PINFOHTML">(
        "<body><center><table style=\"text-align: left; width: 436px; height: 172px;\"");
    send<"PINFOHTML">(
        "border=\"1\" cellpadding=\"2\" cellspacing=\"2\"><tbody><tr align=\"center\">");
    send<"PINFOHTML">("<td style=\"width: 331px;\" colspan=\"2\" rowspan=\"1\"><big><big><span");
    send<"PINFOHTML">("style=\"font-weight: bold;\">KOVA 8 State Variables Imported</span></big>");
    send<"PINFOHTML">("</big></td></tr><tr><td style=\"width: 222px; text-align: center; ");
    send<"PINFOHTML">("font-weight: bold;\">KOVA8 System</td><td");
    send<"PINFOHTML">(
        " style=\"width: 331px; text-align: center; font-weight: bold;\">System Name ");
    send<"PINFOHTML">("</td>");
    std::int32_t number = 0;
    for (PackedWalk walk(systems); !walk.at_end();) {
        const SystemName system = walk.next();
        const TerminatedText short_name{system.short_name};
        const TerminatedText long_name{system.long_name};
        send<"PSYSNAME">(++number, long_name, short_name);
        send<"PINFOHTML">("<tr><td style=\"width: 222px; text-align: center;\">");
        send<"PINFOHTML">(short_name);
        send<"PINFOHTML">("</td>");
        send<"PINFOHTML">("<td style=\"width: 331px; text-align: center;\">");
        send<"PINFOHTML">(long_name);
        send<"PINFOHTML">("</td></tr>");
    }
    send<"PINFOHTML">("</tbody></table><br></center></body>");
    send<"PSYSTEMSREFRESH">();
}

void send_options(const ModelParameters &parameters) {
    send<"PSOLUTIONTYPE">(parameters.solution_type);
    send<"PNEGSLN">(parameters.negative_solution_option);
    send<"PICRD">(parameters.icrd_option);
    send<"PINTYP">(parameters.intyp_option);
    send<"PFRACMAXTS">(parameters.maximum_time_step_fraction);
    send<"PMAXDT">(parameters.maximum_time_step);
    send<"PMINDT">(parameters.minimum_time_step);
    send<"PMODELOUTPUTINTERVAL">(parameters.output_interval);
}

} // namespace

void send_parameter_rows(const ModelParameters &parameters) {
    send_module_name(parameters.model_type);
    send_values(parameters);
}

void send_model(ImportModule &module, const ModelParameters &parameters, std::int32_t system_count,
                const SystemNames &systems) {
    module.host_system_count = system_count;
    send_period(module, parameters);
    send_systems(system_count, systems);
    send_options(parameters);
}

} // namespace kova_import
