#include "cli/sarif_output.h"

#include "cli/diagnostics.h"
#include "cli/json_writer.h"
#include "cli/text.h"

#include <algorithm>
#include <optional>

namespace kova_command {

namespace {

Json rules() {
    Json list = Json::array();
    for (const NoticeKind &kind : notice_kinds())
        list.push_back({{"id", kind.id},
                        {"shortDescription", {{"text", kind.sentence}}},
                        {"defaultConfiguration", {{"level", name_of(kind.level)}}}});
    return list;
}

/// The columns of a place in UTF-16 units, from 1; the second is behind its end.
struct Columns {
    std::size_t start = 1;
    std::size_t end = 1;
};

/// None when the notice does not have the line from its beginning, so that bytes cannot be told
/// from characters.
std::optional<Columns> columns_of(const Notice &notice) {
    if (notice.column <= 0 || notice.line_text_column > 1)
        return std::nullopt;
    Columns columns;
    const auto first = static_cast<std::size_t>(notice.column - 1);
    const std::size_t end =
        first + static_cast<std::size_t>(std::max<std::int64_t>(0, notice.width));
    for (const Glyph &glyph : glyphs_of(notice.line_text)) {
        if (glyph.offset + glyph.size <= first)
            columns.start += glyph.utf16_units;
        if (glyph.offset < end)
            columns.end += glyph.utf16_units;
    }
    columns.end = std::max(columns.start, columns.end);
    return columns;
}

Json location_of(const ImportOutcome &outcome, const Notice *notice) {
    Json physical = {{"artifactLocation", {{"uri", uri_of_path(outcome.path)}}}};
    if (notice != nullptr && notice->line > 0) {
        Json region = {{"startLine", notice->line}};
        if (const std::optional<Columns> columns = columns_of(*notice)) {
            region["startColumn"] = columns->start;
            region["endColumn"] = columns->end;
        }
        physical["region"] = std::move(region);
    }
    return {{"physicalLocation", std::move(physical)}};
}

std::string message_of(const Notice &notice) {
    std::string message = heading_of(notice);
    if (const std::string finding = finding_of(notice); !finding.empty())
        message += "; " + finding;
    if (!notice.advice.empty())
        message += ". " + printable(notice.advice, Origin::utility);
    return message;
}

Json result_of(const ImportOutcome &outcome, const Notice &notice) {
    const std::size_t row = kind_row(notice.kind);
    Json properties = Json::object();
    if (notice.column > 0) {
        properties["byteColumn"] = notice.column;
        properties["byteWidth"] = notice.width;
    }
    if (!notice.section_name.empty())
        properties["section"] = to_utf8(notice.section_name, Origin::utility);
    if (notice.number > 0)
        properties["number"] = notice.number;
    if (!notice.name.empty())
        properties["name"] = to_utf8(notice.name, notice.origin_of_name());
    Json result = {{"ruleId", notice.description().id},
                   {"ruleIndex", row},
                   {"level", name_of(notice.level())},
                   {"message", {{"text", message_of(notice)}}},
                   {"locations", Json::array({location_of(outcome, &notice)})}};
    if (!properties.empty())
        result["properties"] = std::move(properties);
    return result;
}

Json notifications_of(const std::vector<ImportOutcome> &outcomes) {
    Json list = Json::array();
    const auto add = [&](const ImportOutcome &outcome, const char *level, const std::string &text) {
        list.push_back({{"level", level},
                        {"message", {{"text", text}}},
                        {"locations", Json::array({location_of(outcome, nullptr)})}});
    };
    for (const ImportOutcome &outcome : outcomes) {
        for (const std::string &error : outcome.internal_errors)
            add(outcome, "error", printable(error));
        if (const std::int64_t dropped = dropped_notice_count(outcome); dropped > 0)
            add(outcome, "warning",
                counted(dropped, "more notice is", "more notices are") +
                    " counted, but not listed");
    }
    return list;
}

} // namespace

void check_sarif(const TextSink &sink, const std::vector<ImportOutcome> &outcomes,
                 int exit_status) {
    const Json driver = {
        {"name", "kova-import"}, {"version", KOVA_COMMAND_VERSION}, {"rules", rules()}};
    const bool successful = std::all_of(outcomes.begin(), outcomes.end(), [](const auto &outcome) {
        return outcome.internal_errors.empty();
    });
    const Json invocation = {{"executionSuccessful", successful},
                             {"exitCode", exit_status},
                             {"toolExecutionNotifications", notifications_of(outcomes)}};
    JsonWriter out(sink);
    out.open_object();
    out.member("$schema", "https://json.schemastore.org/sarif-2.1.0.json");
    out.member("version", "2.1.0");
    out.key("runs");
    out.open_list();
    out.open_object();
    Json tool;
    tool["driver"] = driver;
    out.member("tool", tool);
    out.member("invocations", Json::array({invocation}));
    out.member("columnKind", "utf16CodeUnits");
    out.key("results");
    out.open_list();
    for (const ImportOutcome &outcome : outcomes)
        for (const Notice &notice : outcome.notices)
            out.value(result_of(outcome, notice));
    out.close(); // the results
    out.close(); // the run
    out.close(); // the runs
    out.close(); // the log
    out.finish();
}

} // namespace kova_command
