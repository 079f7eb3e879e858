#pragma once

#include "control/fixed_text.h"
#include "control/number_text.h"
#include "control/record_layout.h"
#include "control/record_stream.h"
#include "control/short_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace kova_import {

/// One item of a read statement: where its value goes, and what a person calls it.
template <class T>
struct Field {
    const char *name;
    T *target;
};

template <class T>
[[nodiscard]] constexpr Field<T> field(const char *name, T &target) {
    return {name, &target};
}

/// The integers that an item may be.
struct Bounds {
    std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
    std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    const char *expected = ""; ///< "at most 12 functions"
};

/// An integer item with bounds. They hold for the item that a record leaves out, too.
struct BoundedField {
    const char *name = "";
    std::int32_t *target = nullptr;
    Bounds bounds;
};

[[nodiscard]] constexpr BoundedField bounded_field(const char *name, std::int32_t &target,
                                                   Bounds bounds) {
    return {name, &target, bounds};
}

/// A text item that nobody needs: headings and titles.
struct UnusedText {};

inline constexpr UnusedText unused_text;

/// One member of a section's row that a record fills. Lists of these are data: `fields_of` aims one
/// at a row.
template <class Row, class T>
struct Member {
    const char *name;
    T Row::*pointer;
};

template <class Row, class T>
[[nodiscard]] constexpr Member<Row, T> member(const char *name, T Row::*pointer) {
    return {name, pointer};
}

/// The items that fill `row` through a tuple of its members.
template <class Row, class... T>
[[nodiscard]] constexpr std::tuple<Field<T>...>
fields_of(Row &row, const std::tuple<Member<Row, T>...> &list) {
    return std::apply(
        [&row](const auto &...each) { return std::tuple{field(each.name, row.*each.pointer)...}; },
        list);
}

/// Why a read failed.
enum class ReadFailureKind : std::uint8_t {
    none,
    bad_value,      ///< a field or value cannot be converted
    out_of_range,   ///< a value is larger or smaller than what can be dealt with
    end_of_file,    ///< the file ends before the read is complete
    open_delimiter, ///< the file ends inside a quoted text
    system_error,   ///< the system could not read the file
    not_open,       ///< there is no open import file
    wide_text,      ///< the file is in UTF-16 or UTF-32
};

/// A failed read: what a person needs in order to find and mend it.
struct ReadFailure {
    ReadFailureKind kind = ReadFailureKind::none;
    const char *statement = "";        ///< what was being read
    std::int64_t statement_number = 0; ///< value of the line counter
    FilePlace place;                   ///< of the field, value or end of the file
    std::int64_t width = 0;            ///< bytes of the field or value
    const char *field = "";
    const char *expected = "";
    const char *advice = "";
    ShortText<120> found;     ///< what stood there, cut
    ShortText<400> line_text; ///< the line around it, cut
    std::int64_t line_text_column = 1;

    /// Whether it is the end of the file, and no value, that stands at the place.
    [[nodiscard]] bool is_at_end() const { return width == 0; }
};

/// A record that has been read: what it is, and the line on which it ends.
struct RecordPlace {
    const char *statement = "";
    std::int64_t line = 0;
};

/// Performs the read statements of all sections: fixed-column records, free-form lists, captions.
///
/// Each statement counts itself before it reads. The first failure sticks: later statements do
/// nothing and change nothing. Ask `ok()` before anything leaves the section, and at its end.
class RecordReader {
  public:
    /// The counter that a host sees is kept up to date in `exported_counter`.
    explicit constexpr RecordReader(std::int32_t &exported_counter)
        : exported_counter_(&exported_counter) {}

    [[nodiscard]] RecordStream &stream() { return stream_; }

    /// Gets every item that a record leaves out: empty values, values behind a slash, numbers
    /// behind the end of a short line.
    using LeftOut = void (*)(void *context, const char *field, FilePlace place);
    constexpr void on_left_out(LeftOut left_out, void *context) {
        left_out_ = left_out;
        left_out_context_ = context;
    }

    /// Whether the last text of the last record was longer than the field it went into.
    [[nodiscard]] bool text_was_cut() const { return text_was_cut_; }

    /// The record that was read last.
    [[nodiscard]] RecordPlace last_record() const { return {statement_, last_line_}; }

    /// Sets the counter; the first statement of a section is counted as one more than `first`.
    void start_counting(std::int64_t first = 1);

    /// Forgets an earlier section's failure.
    void start_section() { failure_ = ReadFailure{}; }

    [[nodiscard]] bool ok() const { return failure_.kind == ReadFailureKind::none; }
    [[nodiscard]] const ReadFailure &failure() const { return failure_; }

    /// Number of read statements begun, plus one.
    [[nodiscard]] std::int64_t line_counter() const { return line_counter_; }

    /// The same as far as 32 bits go: what hosts are told.
    [[nodiscard]] std::int32_t saturated_line_counter() const;

    /// What is being read, or was read last.
    [[nodiscard]] const char *statement() const { return statement_; }

    /// Reads one record by a fixed-column layout, as in `fixed<"(I5,5X,A40)">("segment name",
    /// ...)`. Numbers go into 32-bit integers and reals, texts into a `FixedText` of the field's
    /// width.
    template <Literal layout, class... T>
    void fixed(const char *statement, Field<T>... fields) {
        if (begin_statement(statement))
            fixed_record<layout>(fields...);
    }

    template <Literal layout, class... T>
    void fixed(const char *statement, const std::tuple<Field<T>...> &fields) {
        std::apply([&](auto... each) { fixed<layout>(statement, each...); }, fields);
    }

    /// Reads a free-form list of values into 32-bit integers, reals and `FixedText`s, over as many
    /// lines as it takes. Items that the record leaves out keep what they hold. Without items it
    /// goes over one line.
    template <class... Item>
    void list(const char *statement, Item... items) {
        if (begin_statement(statement))
            list_record(items...);
    }

    template <class... T>
    void list(const char *statement, const std::tuple<Field<T>...> &fields) {
        std::apply([&](auto... each) { list(statement, each...); }, fields);
    }

    /// Reads a free-form list of `count` integers, of which the first ones go into `kept` and the
    /// rest are checked and dropped. A count of none goes over one line.
    template <std::size_t n>
    void integers(const char *statement, const char *name, std::int32_t count,
                  std::array<std::int32_t, n> &kept) {
        if (begin_statement(statement))
            integer_list(name, count, kept.data(), n);
    }

    /// Reads one line by a layout of a single text field, without an error branch: at the end of
    /// the file the text is blank and the section goes on.
    template <Literal layout, std::size_t n>
    void unguarded_fixed(const char *statement, FixedText<n> &text) {
        if (!begin_statement(statement))
            return;
        fixed_record<layout>(field(statement, text));
        if (!ok()) {
            // a text is never bad: the end of the file is the reason, or an error of the system,
            // which the next record meets
            failure_ = ReadFailure{};
            text.fill(' ');
        }
    }

    /// Reads a free-form text without an error branch: whatever stands there, the section goes on.
    /// Says whether it could be read, or the file has none any more; a text that cannot be read
    /// counts as one line.
    template <std::size_t n>
    bool unguarded_list(const char *statement, FixedText<n> &text) {
        return !begin_statement(statement) || unguarded_text_list(text.data(), n);
    }

    /// Reads `count` records: calls `read(i)` for i = 1 .. count, until a read fails. A negative
    /// count is none.
    template <class Read>
    void for_each_record(std::int32_t count, Read read) {
        for (std::int64_t i = 1; i <= count && ok(); ++i)
            read(static_cast<std::int32_t>(i));
    }

  private:
    // A value of a free-form record as it stands in the file. Values can be of any length; what is
    // kept of them is bounded.
    struct Value {
        static constexpr std::size_t kept_text = 512;

        StreamMark mark;
        std::int64_t width = 0;
        char delimiter = '\0'; ///< of a quoted text
        bool only_digits = true;
        NumberText number;
        std::array<char, kept_text> text{};
        std::size_t text_length = 0;

        void start(StreamMark at);
        void push(char character);
        void push_text(char character);
        [[nodiscard]] bool may_be_repeat_count() const { return only_digits && width > 0; }
        [[nodiscard]] std::string_view kept() const { return {text.data(), text_length}; }
    };

    enum class ItemState : std::uint8_t { fresh, repeated, absent, failed };

    [[nodiscard]] bool begin_statement(const char *statement);

    template <Literal layout, class... T>
    void fixed_record(Field<T>... fields) {
        static constexpr const auto &columns = record_layout<layout>;
        static_assert(columns.width < RecordStream::longest_view);
        static_assert(columns.fields.size() == sizeof...(T), "as many items as fields");
        if (stream_.at_end_of_file()) {
            fail_at_end();
            return;
        }
        const std::string_view line = stream_.peek_line(columns.width);
        [&]<std::size_t... i>(std::index_sequence<i...>) {
            static_assert((fits<T>(columns.fields[i]) && ...), "an item does not fit its field");
            static_cast<void>((fixed_field(line, columns.fields[i], fields) && ...));
        }
        (std::index_sequence_for<T...>{});
        if (!ok())
            return;
        if (stream_.line_is_cut()) {
            fail_at_end();
            return;
        }
        end_fixed_record(columns.fields.back(), line.size());
    }

    template <class T>
    static consteval bool fits(const LayoutField &column) {
        if constexpr (std::is_same_v<T, std::int32_t>)
            return column.kind == FieldKind::integer;
        else if constexpr (std::is_same_v<T, float>)
            return column.kind == FieldKind::real;
        else
            return column.kind == FieldKind::text && column.width == T::width;
    }

    [[nodiscard]] bool fixed_field(std::string_view line, const LayoutField &column,
                                   Field<std::int32_t> item);
    [[nodiscard]] bool fixed_field(std::string_view line, const LayoutField &column,
                                   Field<float> item);
    template <std::size_t n>
    [[nodiscard]] static bool fixed_field(std::string_view line, const LayoutField &column,
                                          Field<FixedText<n>> item) {
        item.target->assign(text_in(line, column));
        return true;
    }
    /// What of a field the line has; short lines lack some.
    [[nodiscard]] static std::string_view text_in(std::string_view line,
                                                  const LayoutField &column) {
        return line.substr(std::min(line.size(), column.offset), column.width);
    }

    template <class... Item>
    void list_record(Item... items) {
        if (begin_list())
            static_cast<void>((list_item(items) && ...));
        end_list();
    }

    [[nodiscard]] bool list_item(Field<std::int32_t> item);
    [[nodiscard]] bool list_item(Field<float> item);
    [[nodiscard]] bool list_item(BoundedField item);
    [[nodiscard]] bool list_item(UnusedText item);
    template <class T>
    [[nodiscard]] bool number_item(Field<T> item);
    template <class T>
    [[nodiscard]] bool take_plain_item(T &target);
    template <class T>
    [[nodiscard]] bool take_plain_value(const char *first, T &target);
    template <std::size_t n>
    [[nodiscard]] bool list_item(Field<FixedText<n>> item) {
        const ItemState state = list_text(item.target->data(), n);
        return state == ItemState::absent ? leave_out(item.name) : state != ItemState::failed;
    }
    [[nodiscard]] bool convert_value(Field<std::int32_t> item);
    [[nodiscard]] bool convert_value(Field<float> item);
    [[nodiscard]] ItemState list_text(char *target, std::size_t width);

    void integer_list(const char *name, std::int32_t count, std::int32_t *kept, std::size_t size);
    [[nodiscard]] bool unguarded_text_list(char *target, std::size_t width);

    void end_fixed_record(const LayoutField &last_field, std::size_t length);
    void leave_out_missing(std::string_view line, const LayoutField &column, const char *name);

    [[nodiscard]] bool begin_list();
    void end_list();
    [[nodiscard]] ItemState begin_item();
    [[nodiscard]] ItemState begin_first_item();
    [[nodiscard]] ItemState begin_next_item();
    [[nodiscard]] ItemState begin_in_next_line(bool comma_seen);
    [[nodiscard]] ItemState end_list_at_slash();
    [[nodiscard]] ItemState take_value();
    [[nodiscard]] bool take_repeat_count();
    [[nodiscard]] ItemState take_delimited(char delimiter);
    int skip_blanks();

    [[nodiscard]] bool fail_value(const char *name, const char *expected);
    [[nodiscard]] bool fail_number(const char *name, const char *expected);
    [[nodiscard]] bool fail_field(std::string_view line, const LayoutField &column,
                                  const char *name, const char *expected);
    ItemState fail_at_end();
    void fail(ReadFailureKind kind, FilePlace place, std::int64_t width, std::string_view found);
    void show_line(FilePlace place);

    bool leave_out(const char *name);
    [[nodiscard]] std::int64_t width_of_nothing();
    [[nodiscard]] bool is_within(const BoundedField &item, FilePlace place, std::int64_t width,
                                 std::string_view found);

    RecordStream stream_;
    std::int32_t *exported_counter_;
    LeftOut left_out_ = nullptr;
    void *left_out_context_ = nullptr;
    std::int64_t line_counter_ = 1;
    const char *statement_ = "";
    ReadFailure failure_;

    // The state of the free-form list being read.
    bool first_item_ = true;
    bool complete_ = false;          ///< a slash has ended the list
    std::int64_t repeats_left_ = 0;  ///< items that the last value still stands for
    bool repeats_are_empty_ = false; ///< and it is r* without a value
    std::int64_t first_line_ = 1;    ///< of the statement
    std::int64_t last_line_ = 0;
    bool text_was_cut_ = false;
    Value value_;
};

} // namespace kova_import
