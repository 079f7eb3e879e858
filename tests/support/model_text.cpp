#include "tests/support/model_text.h"

#include <stdexcept>

namespace kova_test {

namespace {

std::string right_justified(const std::string &text, std::size_t width) {
    return std::string(width - text.size(), ' ') + text;
}

std::string right_justified(int number, std::size_t width) {
    return right_justified(std::to_string(number), width);
}

std::string blanks(std::size_t count) { return std::string(count, ' '); }

const Records period_records = {
    {"start of the simulation", "1 2 2003 4 5 6"},
    {"hydrodynamic skip date", "7 8 2009 10 11 12"},
    {"simulation length", "365.5"},
};

const Records option_records = {
    {"option behind the system count", "5"},
    {"solution type", "1"},
    {"negative-solution option", "2"},
    {"ICRD option", "3"},
    {"INTYP option", "4"},
    {"option behind INTYP", "9"},
    {"fraction of the maximum time step", "0.75"},
    {"time-step limits", "0.125 0.5"},
};

const Records segment_setting_records = {
    {"segment count", "2"},
    {"bed-volume option", "1"},
    {"bed time step", "0.25"},
    {"volume factors", "2 0.5"},
    {"caption of the segment names", "Names of the segments"},
};

const Records flow_field_records = {
    {"flow-field count", "2"},
    {"caption of the flow field", "Surface water"},
    {"hydrodynamic file", "river flows.hyd"},
    {"function count of the flow field", "2"},
    {"description of the flow function", "Headwater, gauge 7"},
    {"pair count of the flow function", "2"},
    {"flow pair", "0 1 1.0"},
    {"flow pair", "1 2 0.75"},
    {"description of the flow function", "Tributary"},
    {"pair count of the flow function", "1"},
    {"flow pair", "0 2 1.0"},
    {"caption of the flow field", "Pore water"},
    {"function count of the flow field", "0"},
};

const Records flow_series_records = {
    {"flow-field count", "2"},
    {"caption of the flow field", "Surface water"},
    {"function count of the flow field", "2"},
    {"factors of the field", "1.5 86400"},
    {"caption of the flow function", "Headwater"},
    {"breakpoint count of the flow function", "2"},
    {"breakpoint of the flow function", "10.5 0"},
    {"breakpoint of the flow function", "12 30.25"},
    {"caption of the flow function", "Tributary"},
    {"breakpoint count of the flow function", "1"},
    {"breakpoint of the flow function", "0.5 0"},
    {"caption of the flow field", "Pore water"},
    {"function count of the flow field", "0"},
};

const Records exchange_records = {
    {"exchange-field count", "2"},
    {"heading of the exchange field", "'Surface water'"},
    {"function count of the exchange field", "1"},
    {"factors of the field", "2 0.25"},
    {"description of the exchange function", "Mixing at the confluence"},
    {"pair count of the exchange function", "1"},
    {"exchange pair", "1 2 25.5 100"},
    {"breakpoint count of the exchange function", "2"},
    {"breakpoint of the exchange function", "3.5 0"},
    {"breakpoint of the exchange function", "4.5 30"},
    {"heading of the exchange field", "'Pore water'"},
    {"function count of the exchange field", "0"},
};

/// Of two systems.
const Records boundary_records = {
    {"heading of the boundaries", "Ammonia"},
    {"boundary count", "2"},
    {"factors of the boundaries", "     1.250      1.00"},
    {"boundary segment", "1"},
    {"breakpoint count of the boundary", "2"},
    {"breakpoint of the boundary", "0.1 0"},
    {"breakpoint of the boundary", "0.2 30"},
    {"boundary segment", "2"},
    {"breakpoint count of the boundary", "1"},
    {"breakpoint of the boundary", "0.3 0"},
    {"heading of the boundaries", "Nitrate"},
    {"boundary count", "0"},
};

const Records load_setting_records = {
    {"load option", "1"},
    {"non-point-source file", "storm water.nps"},
};

/// Of two systems.
const Records load_records = {
    {"heading of the loads", "Ammonia"},
    {"load count", "1"},
    {"factors of the loads", "0.5 1"},
    {"load segment", "2"},
    {"breakpoint count of the load", "2"},
    {"breakpoint of the load", "7.5 0"},
    {"breakpoint of the load", "8.5 30"},
    {"heading of the loads", "Nitrate"},
    {"load count", "1"},
    {"factors of the loads", "0.25 1"},
    {"load segment", "1"},
    {"breakpoint count of the load", "1"},
    {"breakpoint of the load", "9.5 0"},
};

const Records legacy_time_function_records = {
    {"time-function count", "2"},
    {"number of the time function", "1"},
    {"name of the time function", "'Water temperature'"},
    {"breakpoint count of the time function", "2"},
    {"breakpoint of the time function", "0 4.5"},
    {"breakpoint of the time function", "30.5 12.25"},
    {"number of the time function", "11"},
    {"name of the time function", "Velocity"},
    {"breakpoint count of the time function", "1"},
    {"breakpoint of the time function", "0 3"},
};

const Records legacy_segment_parameter_records = {
    {"segment count", "2"},
    {"segment-parameter count", "2"},
    {"segment parameter", "2 1.5"},
    {"segment parameter", "14 0.5"},
    {"segment of the parameter values", "1"},
    {"value of the segment parameter", "2 20.5"},
    {"value of the segment parameter", "14 100.5"},
    {"segment of the parameter values", "2"},
    {"value of the segment parameter", "2 21.5"},
    {"value of the segment parameter", "14 7"},
};

const Records legacy_constant_records = {
    {"constant count", "2"},
    {"constant", "70 0.5"},
    {"constant", "1 3"},
};

const Records legacy_initial_condition_records = {
    {"system count", "2"},
    {"segment count", "2"},
    {"caption of the system", "Ammonia"},
    {"flow field of the system", "3"},
    {"density of the system", "1.5"},
    {"maximum concentration of the system", "1000.5"},
    {"caption of the initial conditions", "Segments"},
    {"initial condition", "1 0.125 0.75"},
    {"initial condition", "2 0.25 1.0"},
    {"caption of the system", "Nitrate"},
    {"flow field of the system", "2"},
    {"density of the system", "1"},
    {"maximum concentration of the system", "100"},
    {"caption of the initial conditions", "Segments"},
    {"initial condition", "1 2.5 1.0"},
    {"initial condition", "2 3.5 1"},
};

const Records current_time_function_records = {
    {"heading of the section", "'Time functions'"},
    {"time-function count", "2"},
    {"number of the time function", "4"},
    {"breakpoint count of the time function", "2"},
    {"breakpoint of the time function", "0 4.5"},
    {"breakpoint of the time function", "30.5 12.25"},
    {"number of the time function", "13"},
    {"breakpoint count of the time function", "1"},
    {"breakpoint of the time function", "0 3"},
};

const Records current_segment_parameter_records = {
    {"heading of the section", "Parameters"},
    {"segment count", "2"},
    {"segment-parameter count", "2"},
    {"heading of the parameter list", "'Number, class and scale factor'"},
    {"segment parameter", listed_parameter(2, 1, "1.5")},
    {"segment parameter", listed_parameter(14, 3, "0.5")},
    {"heading of the parameter values", "Values"},
    {"segment of the parameter values", "1"},
    {"value of the segment parameter", parameter_value(2, 1, "20.5")},
    {"value of the segment parameter", parameter_value(14, 3, "100")},
    {"segment of the parameter values", "2"},
    {"value of the segment parameter", parameter_value(2, 1, "21.5")},
    {"value of the segment parameter", parameter_value(14, 3, "7.25")},
};

const Records current_constant_records = {
    {"heading of the section", "Constants"},
    {"constant count", "2"},
    {"constant", constant(27, 1, "0.5")},
    {"constant", constant(64, 2, "40")},
};

// Hosts do not get the maximum concentrations, so that there is something to tell of others than 0.
const Records current_initial_condition_records = {
    {"heading of the section", "'Initial conditions'"},
    {"system count", "2"},
    {"segment count", "2"},
    {"caption of the system", "Ammonia"},
    {"flow field of the system", "3"},
    {"density of the system", "1.5"},
    {"maximum concentration of the system", "0"},
    {"caption of the initial conditions", "Segments"},
    {"initial condition", "1 0.125 0.75"},
    {"initial condition", "2 0.25 1.0"},
    {"caption of the system", "Dissolved Oxygen"},
    {"flow field of the system", "2"},
    {"density of the system", "1"},
    {"maximum concentration of the system", "0.0"},
    {"caption of the initial conditions", "Segments"},
    {"initial condition", "1 2.5 1.0"},
    {"initial condition", "2 3.5 1"},
};

void append(Records &records, const Records &more) {
    records.insert(records.end(), more.begin(), more.end());
}

} // namespace

Records legacy_opening() {
    Records records = {{"header", "   11      2"}};
    append(records, period_records);
    append(records, {{"system count", "3"}});
    append(records, option_records);
    append(records, {
                        {"output-interval count", "2"},
                        {"output interval", "0 1.5"},
                        {"output interval", "10 0.25"},
                        {"bypass flags", "0 0 1"},
                        {"count of the first skipped block", "1"},
                        {"record of the first skipped block", "what nobody reads"},
                        {"count of the second skipped block", "2"},
                        {"record of the second skipped block", "1 2 3"},
                        {"record of the second skipped block", ""},
                    });
    append(records, segment_setting_records);
    append(records, {
                        {"segment name", "1 'Upper Pool'"},
                        {"segment name", "2 Mouth"},
                        {"caption of the segment geometry", "Geometry"},
                        {"segment geometry", "1 2 3 10 11 12 13 14 15 16 17 18 19"},
                        {"segment geometry", "2 0 1 20 21 22 23 24 25 26 27 28 29"},
                    });
    return records;
}

Records legacy_records() {
    Records records = legacy_opening();
    append(records, {{"flow option", "3"}});
    append(records, flow_field_records);
    append(records, flow_series_records);
    append(records, exchange_records);
    append(records, {{"system count", "3"}});
    append(records, boundary_records);
    append(records,
           {{"heading of the boundaries", "Dissolved organic nitrogen"}, {"boundary count", "0"}});
    append(records, load_setting_records);
    append(records, {{"system count", "3"}});
    append(records, load_records);
    append(records,
           {{"heading of the loads", "'Dissolved organic nitrogen'"}, {"load count", "0"}});
    append(records, legacy_time_function_records);
    append(records, legacy_segment_parameter_records);
    append(records, legacy_constant_records);
    append(records, legacy_initial_condition_records);
    return records;
}

Records current_opening() {
    Records records = {{"header", "   11      3"}, {"title", "'A river'"}};
    append(records, period_records);
    append(records, {{"system count", "2"}});
    append(records, option_records);
    append(records, {
                        {"output interval", "0.25"},
                        {"system name", "NH-34     Ammonia"},
                        {"system name", "DISOX     Dissolved Oxygen"},
                        {"heading of the section", "Segments"},
                    });
    append(records, segment_setting_records);
    append(
        records,
        {
            {"segment name", "    1     Upper Pool"},
            {"segment name", "    2     Mouth"},
            {"caption of the segment geometry", "Geometry"},
            {"segment geometry",
             geometry_line({1, 2, 3, 3}, {"10.", "11.", "12.", "13.", "14.", "15.", "16.", "17.",
                                          "18.", "19.", "20.", "21.", "22.", "23.", "24.", "25."})},
            {"segment geometry",
             geometry_line({2, 0, 1, 4}, {"30.", "31.", "32.", "33.", "34.", "35.", "36.", "37.",
                                          "38.", "39.", "40.", "41.", "42.", "43.", "44.", "45."})},
        });
    return records;
}

Records current_records() {
    Records records = current_opening();
    append(records, {{"first heading", "'Flow paths'"}, {"second heading", "Fields"}});
    append(records, flow_field_records);
    append(records, {{"heading of the section", "Series"}});
    append(records, flow_series_records);
    append(records, {{"heading of the section", "'Dispersive exchange'"}});
    append(records, exchange_records);
    append(records, {{"heading of the section", "Boundaries"}, {"system count", "2"}});
    append(records, boundary_records);
    append(records, {{"heading of the section", "Loads"}});
    append(records, load_setting_records);
    append(records, {{"system count", "2"}});
    append(records, load_records);
    append(records, current_time_function_records);
    append(records, current_segment_parameter_records);
    append(records, current_constant_records);
    append(records, current_initial_condition_records);
    return records;
}

std::size_t position_of(const Records &records, std::string_view name, std::size_t occurrence) {
    for (std::size_t i = 0; i < records.size(); ++i)
        if (records[i].name == name && occurrence-- == 0)
            return i;
    throw std::out_of_range("no record " + std::string(name));
}

std::size_t line_of(const Records &records, std::string_view name, std::size_t occurrence) {
    return position_of(records, name, occurrence) + 1;
}

Records with(Records records, std::string_view name, std::string_view text,
             std::size_t occurrence) {
    records[position_of(records, name, occurrence)].text = text;
    return records;
}

Records with_section(const Records &records, std::string_view first, std::size_t occurrence,
                     std::string_view next, std::size_t next_occurrence, const Records &section) {
    const auto from = static_cast<std::ptrdiff_t>(position_of(records, first, occurrence));
    const auto to = static_cast<std::ptrdiff_t>(position_of(records, next, next_occurrence));
    Records changed(records.begin(), records.begin() + from);
    changed.insert(changed.end(), section.begin(), section.end());
    changed.insert(changed.end(), records.begin() + to, records.end());
    return changed;
}

std::string text_of(const Records &records) {
    std::string text;
    for (const Record &record : records)
        text += record.text + "\n";
    return text;
}

std::string geometry_line(const std::vector<int> &integers, const std::vector<std::string> &reals) {
    std::string line;
    for (const int integer : integers)
        line += right_justified(integer, 5);
    for (const std::string &real : reals)
        line += right_justified(real, 15);
    return line;
}

std::string listed_parameter(int number, int class_index, const std::string &scale) {
    return "listed " + right_justified(number, 5) + ", of class " +
           right_justified(class_index, 3) + blanks(8) + right_justified(scale, 10);
}

std::string parameter_value(int number, int class_index, const std::string &value) {
    return "a value of " + right_justified(number, 5) + blanks(16) +
           right_justified(class_index, 3) + blanks(19) + right_justified(value, 10);
}

std::string constant(int number, int column, const std::string &value) {
    return "number " + right_justified(number, 5) + ", in column" + right_justified(column, 5) +
           blanks(18) + right_justified(value, 10);
}

} // namespace kova_test
