#pragma once

// A second reader of records, to compare the library's with: the whole file as lines in memory, one
// character after the other, and numbers by the C library. Plain and slow, and nothing in it is
// shared with the library but the way in which statements are written down.

#include "fuzz/fuzz_support.h"

#include "control/record_reader.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kova_fuzz {

class PlainReader {
  public:
    /// `file` must outlive the reader and be no text in UTF-16 or UTF-32.
    explicit PlainReader(std::string_view file) : lines_(file) {}

    [[nodiscard]] bool ok() const { return kind_ == kova_import::ReadFailureKind::none; }
    [[nodiscard]] kova_import::ReadFailureKind failure_kind() const { return kind_; }
    [[nodiscard]] kova_import::FilePlace failure_place() const { return failure_place_; }
    [[nodiscard]] std::int64_t line_counter() const { return line_counter_; }
    /// Whether the file has another line; it is the next one.
    [[nodiscard]] bool has_line() const { return has_line(line_); }
    [[nodiscard]] std::int64_t line() const { return line_; }

    template <kova_import::Literal layout, class... T>
    void fixed(const char * /*statement*/, kova_import::Field<T>... fields) {
        if (begin_statement())
            read_fixed(layout.view(), {item(fields)...});
    }

    template <class... Item>
    void list(const char * /*statement*/, Item... items) {
        if (begin_statement())
            read_list({item(items)...});
    }

    template <std::size_t n>
    void integers(const char * /*statement*/, const char * /*name*/, std::int32_t count,
                  std::array<std::int32_t, n> &kept) {
        if (begin_statement())
            read_integers(count, kept.data(), n);
    }

    template <kova_import::Literal layout, std::size_t n>
    void unguarded_fixed(const char * /*statement*/, kova_import::FixedText<n> &text) {
        if (!begin_statement())
            return;
        if (has_line())
            read_fixed(layout.view(), {item(kova_import::field("", text))});
        else
            text.fill(' ');
    }

    template <std::size_t n>
    bool unguarded_list(const char * /*statement*/, kova_import::FixedText<n> &text) {
        return !begin_statement() || read_title(item(kova_import::field("", text)));
    }

    template <class Read>
    void for_each_record(std::int32_t count, Read read) {
        for (std::int32_t i = 0; i < count && ok(); ++i)
            read(i + 1);
    }

  private:
    /// Where a value goes: one of the three, or nowhere.
    struct Item {
        std::int32_t *integer = nullptr;
        float *real = nullptr;
        char *text = nullptr;
        std::size_t width = 0;
        kova_import::Bounds bounds;
    };

    static Item item(kova_import::Field<std::int32_t> field) { return {.integer = field.target}; }
    static Item item(kova_import::Field<float> field) { return {.real = field.target}; }
    template <std::size_t n>
    static Item item(kova_import::Field<kova_import::FixedText<n>> field) {
        return {.text = field.target->data(), .width = n};
    }
    static Item item(kova_import::BoundedField field) {
        return {.integer = field.target, .bounds = field.bounds};
    }
    static Item item(kova_import::UnusedText /*field*/) { return {}; }

    /// A value of a list, and how many items it still stands for.
    struct Value {
        std::string text;
        bool is_quoted = false;
        bool is_empty = false;
        std::int64_t times = 0;
        kova_import::FilePlace place;
    };

    enum class Next : std::uint8_t { value, slash, failed };

    bool begin_statement();
    [[nodiscard]] bool has_line(std::int64_t number) const;
    [[nodiscard]] std::string_view line_text(std::int64_t number) const;

    void read_fixed(std::string_view layout, const std::vector<Item> &items);
    void read_list(const std::vector<Item> &items);
    void read_integers(std::int64_t count, std::int32_t *kept, std::int64_t size);
    bool read_title(const Item &item);

    void start_list();
    void next_line();
    void end_list() { line_ += 1; }
    Next next_value();
    Next take_value();
    Next take_quoted();
    bool take_repeat_count();
    bool convert(const Item &item);

    [[nodiscard]] bool at_line_end() const { return column_ >= text_.size(); }
    [[nodiscard]] char character() const { return text_[column_]; }
    [[nodiscard]] bool at_separator() const;
    [[nodiscard]] kova_import::FilePlace place() const {
        return {line_, static_cast<std::int64_t>(column_) + 1};
    }

    void fail(kova_import::ReadFailureKind kind, kova_import::FilePlace place);
    void fail_at_end() { fail(kova_import::ReadFailureKind::end_of_file, lines_.end_place()); }

    TextLines lines_;
    std::int64_t line_ = 1;
    std::int64_t line_counter_ = 1;
    kova_import::ReadFailureKind kind_ = kova_import::ReadFailureKind::none;
    kova_import::FilePlace failure_place_;

    // Of the list that is being read
    std::string_view text_; ///< of the line
    std::size_t column_ = 0;
    bool may_take_comma_ = false; ///< the comma that ends the value before
    bool is_first_value_ = true;
    Value value_;
};

} // namespace kova_fuzz
