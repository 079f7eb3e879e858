#pragma once

// What the import utility tells beside the commands: failed reads, and data that do not come across
// or come across changed.

#include "cli/shared_text.h"
#include "cli/text.h"
#include "import_export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>

namespace kova_command {

/// How much a notice weighs.
enum class Level : std::uint8_t {
    note,    ///< a datum comes across, but not as the file has it
    warning, ///< something of the file does not come across, or only in part
    error,   ///< the import stops
};

/// "note", "warning" or "error".
[[nodiscard]] std::string_view name_of(Level level);

/// A kind of notice, and what people call it.
struct NoticeKind {
    std::int32_t number = 0; ///< enum import_export_notice_kind
    std::string_view id;     ///< for programs
    Level level = Level::warning;
    std::string_view sentence; ///< what it means
    std::string_view singular; ///< "text cut"
    std::string_view plural;   ///< "texts cut"
};

inline constexpr std::size_t notice_kind_count = 13;
/// All kinds; the last stands for those of a later library that this command does not know.
[[nodiscard]] const std::array<NoticeKind, notice_kind_count> &notice_kinds();

/// How many notices of each kind there are, by row of `notice_kinds`.
using NoticeCounts = std::array<std::int64_t, notice_kind_count>;

/// Row of a kind in `notice_kinds`.
[[nodiscard]] std::size_t kind_row(std::int32_t number);

/// A notice as the library gives it; see import_export_notice. Text from the file is kept as its
/// bytes. The file can make a notice of every few bytes, so that a notice has to be small.
struct Notice {
    std::int32_t kind = 0;
    std::int32_t section = 0;
    SharedText section_name;
    SharedText statement;
    std::int64_t statement_number = 0;
    std::int64_t line = 0;
    std::int64_t column = 0;
    std::int64_t width = 0;
    SharedText field;
    SharedText expected;
    SharedText found;
    SharedText reason;
    SharedText advice;
    SharedText line_text;
    std::int64_t line_text_column = 0;
    std::int64_t number = 0;
    SharedText name; ///< what the number is called

    [[nodiscard]] const NoticeKind &description() const { return notice_kinds()[kind_row(kind)]; }
    [[nodiscard]] Level level() const { return description().level; }
    /// Who wrote the name: time functions are named in the file, all else by the utility.
    [[nodiscard]] Origin origin_of_name() const;
    /// Whether the field says more than the statement.
    [[nodiscard]] bool has_field() const { return !field.empty() && field != statement; }
};

/// Notices in the order of their arrival; they stay where they are.
using NoticeList = std::deque<Notice>;

/// A notice of the library as one of ours. A library that knows fewer members leaves the others
/// empty.
[[nodiscard]] Notice copy_of(const import_export_notice &notice);

} // namespace kova_command
