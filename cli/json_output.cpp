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

Json text_or_null(const SharedText &text, Origin origin) {
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

void write_notices(JsonWriter &out, std::string_view name, const ImportOutcome &outcome,
                   Level level) {
    out.key(name);
    out.list(outcome.notices, [&](const Notice &notice) {
        if (notice.level() == level)
            out.value(json_of(notice));
    });
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

void write_systems(JsonWriter &out, const ImportOutcome &outcome) {
    out.key("systems");
    if (!outcome.settings_read) {
        out.value({});
        return;
    }
    out.open_object();
    out.member("imported", outcome.systems.size());
    out.member("in_file", outcome.systems_in_file);
    out.key("names");
    out.list(outcome.systems, [&](std::string_view name) { out.value(to_utf8(name)); });
    out.close();
}

void write_summary(JsonWriter &out, const ImportOutcome &outcome) {
    out.key("summary");
    out.open_object();
    out.member("model", model_of(outcome));
    out.member("format", format_of(outcome));
    out.member("period", period_of(outcome));
    write_systems(out, outcome);
    out.member("segments", outcome.segments_read ? Json(outcome.segment_count) : Json());
    out.member("options", {{"scope", outcome.transport_only ? "transport" : "all"},
                           {"index_names", outcome.index_segment_names}});
    out.member("sections", sections_of(outcome));
    out.member("notice_counts", counts_of(outcome));
    out.member("host_commands", outcome.command_count);
    out.close();
}

/// The members of an outcome.
void write_outcome(JsonWriter &out, const ImportOutcome &outcome) {
    out.member("file", to_utf8(outcome.path));
    out.member("uri", uri_of_path(outcome.path));
    out.member("result", id_of(outcome.verdict));
    out.member("whole", is_whole(outcome));
    write_summary(out, outcome);
    write_notices(out, "errors", outcome, Level::error);
    write_notices(out, "warnings", outcome, Level::warning);
    write_notices(out, "notices", outcome, Level::note);
    out.member("notices_not_listed", dropped_notice_count(outcome));
    out.key("internal_errors");
    out.list(outcome.internal_errors, [&](const std::string &error) { out.value(to_utf8(error)); });
}

void write_head(JsonWriter &out) {
    out.member("schema", schema);
    out.member("tool", {{"name", "kova-import"}, {"version", KOVA_COMMAND_VERSION}});
}

} // namespace

void import_json(const TextSink &sink, const ImportOutcome &outcome,
                 const kova_host::Model *model) {
    JsonWriter out(sink);
    out.open_object();
    write_head(out);
    out.member("exit_status", exit_status_of(outcome.verdict));
    write_outcome(out, outcome);
    if (model != nullptr) {
        out.key("data");
        write_data(out, outcome, *model);
    }
    out.close();
    out.finish();
}

void check_json(const TextSink &sink, const std::vector<ImportOutcome> &outcomes, int exit_status) {
    JsonWriter out(sink);
    out.open_object();
    write_head(out);
    out.member("exit_status", exit_status);
    out.key("files");
    out.list(outcomes, [&](const ImportOutcome &outcome) {
        out.open_object();
        write_outcome(out, outcome);
        out.close();
    });
    const auto whole = std::count_if(outcomes.begin(), outcomes.end(), is_whole);
    std::int64_t notices = 0;
    for (const ImportOutcome &outcome : outcomes)
        notices += notice_count(outcome);
    out.member("total", {{"files", outcomes.size()},
                         {"whole", whole},
                         {"not_whole", static_cast<std::int64_t>(outcomes.size()) - whole},
                         {"notices", notices}});
    out.close();
    out.finish();
}

} // namespace kova_command
