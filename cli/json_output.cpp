#include "cli/json_output.h"

#include "cli/model_json.h"
#include "cli/summary.h"
#include "cli/text.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace kova_command {

namespace {

constexpr int schema = 1;

Json text_or_null(const std::string &text, Origin origin) {
    return text.empty() ? Json() : Json(to_utf8(text, origin));
}

Json number_or_null(std::int64_t number) { return number == 0 ? Json() : Json(number); }

Json json_of(const Notice &notice) {
    Json json;
    json["kind"] = notice.description().id;
    json["section"] = number_or_null(notice.section);
    json["section_name"] = text_or_null(notice.section_name, Origin::utility);
    json["statement"] = text_or_null(notice.statement, Origin::utility);
    json["statement_number"] = number_or_null(notice.statement_number);
    json["line"] = number_or_null(notice.line);
    json["column"] = number_or_null(notice.column);
    json["width"] = notice.line > 0 ? Json(notice.width) : Json();
    json["field"] = text_or_null(notice.field, Origin::utility);
    json["number"] = number_or_null(notice.number);
    json["name"] = text_or_null(notice.name, notice.origin_of_name());
    json["found"] = text_or_null(notice.found, Origin::file);
    json["expected"] = text_or_null(notice.expected, Origin::utility);
    json["reason"] = text_or_null(notice.reason, Origin::utility);
    json["advice"] = text_or_null(notice.advice, Origin::utility);
    json["line_text"] = text_or_null(notice.line_text, Origin::file);
    json["line_text_column"] = number_or_null(notice.line_text_column);
    return json;
}

Json notices_of(const ImportOutcome &outcome, Level level) {
    Json list = Json::array();
    for (const Notice &notice : outcome.notices)
        if (notice.level() == level)
            list.push_back(json_of(notice));
    return list;
}

Json counts_of(const ImportOutcome &outcome) {
    Json counts = Json::object();
    for (std::size_t row = 0; row < notice_kind_count; ++row)
        if (outcome.notice_counts[row] > 0)
            counts[std::string(notice_kinds()[row].id)] = outcome.notice_counts[row];
    return counts;
}

Json sections_of(const ImportOutcome &outcome) {
    Json list = Json::array();
    for (const SectionOutcome &section : outcome.sections) {
        Json json;
        json["name"] = section.name;
        json["status"] = id_of(section.status);
        Json brought = Json::object();
        Json remarks = Json::object();
        for (const Fact &fact : section.facts)
            (fact.is_remark() ? remarks : brought)[std::string(fact.id)] = fact.count;
        json["brought"] = std::move(brought);
        json["remarks"] = std::move(remarks);
        list.push_back(std::move(json));
    }
    return list;
}

Json model_of(const ImportOutcome &outcome) {
    if (!outcome.header_read)
        return {};
    Json json;
    json["type"] = outcome.model_type;
    json["kind"] = model_kind(outcome.model_type);
    return json;
}

Json format_of(const ImportOutcome &outcome) {
    if (!outcome.header_read)
        return {};
    constexpr std::int32_t first_current_version = 3;
    Json json;
    json["file_version"] = outcome.file_version;
    json["family"] = outcome.file_version >= first_current_version ? "current" : "legacy";
    return json;
}

Json period_of(const ImportOutcome &outcome) {
    if (!outcome.settings_read)
        return {};
    const std::optional<std::string> start = start_text(outcome.settings);
    Json json;
    json["start"] = start ? Json(*start) : Json();
    json["days"] = number_json(outcome.settings.simulation_length);
    json["text"] = period_text(outcome.settings);
    return json;
}

Json systems_of(const ImportOutcome &outcome) {
    if (!outcome.settings_read)
        return {};
    Json names = Json::array();
    for (const std::string &name : outcome.systems)
        names.push_back(to_utf8(name));
    Json json;
    json["imported"] = outcome.systems.size();
    json["in_file"] = outcome.systems_in_file;
    json["names"] = std::move(names);
    return json;
}

Json summary_of(const ImportOutcome &outcome) {
    Json json;
    json["model"] = model_of(outcome);
    json["format"] = format_of(outcome);
    json["period"] = period_of(outcome);
    json["systems"] = systems_of(outcome);
    json["segments"] = outcome.segments_read ? Json(outcome.segment_count) : Json();
    json["options"] = {{"scope", outcome.transport_only ? "transport" : "all"},
                       {"index_names", outcome.index_segment_names}};
    json["sections"] = sections_of(outcome);
    json["notice_counts"] = counts_of(outcome);
    json["host_commands"] = outcome.command_count;
    return json;
}

Json json_of(const ImportOutcome &outcome) {
    Json json;
    json["file"] = to_utf8(outcome.path);
    json["uri"] = uri_of_path(outcome.path);
    json["result"] = id_of(outcome.verdict);
    json["whole"] = is_whole(outcome);
    json["summary"] = summary_of(outcome);
    json["errors"] = notices_of(outcome, Level::error);
    json["warnings"] = notices_of(outcome, Level::warning);
    json["notices"] = notices_of(outcome, Level::note);
    json["notices_not_listed"] = dropped_notice_count(outcome);
    Json internal = Json::array();
    for (const std::string &error : outcome.internal_errors)
        internal.push_back(to_utf8(error));
    json["internal_errors"] = std::move(internal);
    return json;
}

Json head() {
    Json json;
    json["schema"] = schema;
    json["tool"] = {{"name", "kova-import"}, {"version", KOVA_COMMAND_VERSION}};
    return json;
}

std::string document_of(const Json &json) {
    constexpr int indent = 2;
    return without_controls(json.dump(indent)) + '\n';
}

} // namespace

std::string without_controls(const std::string &json) {
    // What is left are DEL and U+0080 .. U+009F, which only texts can hold.
    std::string text;
    text.reserve(json.size());
    for (std::size_t i = 0; i < json.size(); ++i) {
        const auto byte = static_cast<unsigned char>(json[i]);
        const auto next = static_cast<unsigned char>(i + 1 < json.size() ? json[i + 1] : 0);
        const bool is_two_bytes = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        if (byte != 0x7F && !is_two_bytes) {
            text += json[i];
            continue;
        }
        const unsigned value = is_two_bytes ? next : byte;
        text += "\\u00";
        text += "0123456789abcdef"[value >> 4U];
        text += "0123456789abcdef"[value & 0xFU];
        i += is_two_bytes ? 1 : 0;
    }
    return text;
}

std::string import_json(const ImportOutcome &outcome, const kova_host::Model *model) {
    Json json = head();
    json["exit_status"] = exit_status_of(outcome.verdict);
    json.update(json_of(outcome));
    if (model != nullptr)
        json["data"] = data_json(outcome, *model);
    return document_of(json);
}

std::string check_json(const std::vector<ImportOutcome> &outcomes, int exit_status) {
    Json files = Json::array();
    for (const ImportOutcome &outcome : outcomes)
        files.push_back(json_of(outcome));
    const auto whole = std::count_if(outcomes.begin(), outcomes.end(), is_whole);
    std::int64_t notices = 0;
    for (const ImportOutcome &outcome : outcomes)
        notices += notice_count(outcome);
    Json json = head();
    json["exit_status"] = exit_status;
    json["files"] = std::move(files);
    json["total"] = {{"files", outcomes.size()},
                     {"whole", whole},
                     {"not_whole", static_cast<std::int64_t>(outcomes.size()) - whole},
                     {"notices", notices}};
    return document_of(json);
}

} // namespace kova_command
