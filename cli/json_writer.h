#pragma once

#include "cli/output.h"

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kova_command {

/// Members in the order in which people read them.
using Json = nlohmann::ordered_json;

/// A single-precision number with the digits that people write for it; null when it is not finite.
[[nodiscard]] Json number_json(float number);

/// Writes a JSON document piece by piece, since one about a small file can be large. Any terminal
/// can show it.
class JsonWriter {
  public:
    explicit JsonWriter(TextSink sink) : sink_(std::move(sink)) {}

    /// The name of the member whose value comes next.
    void key(std::string_view name);
    void value(const Json &value);
    /// The value as `number_json` has it; long lists are mostly made of one number.
    void number(float value);
    void member(std::string_view name, const Json &value);

    void open_object() { open('{', '}'); }
    void open_list() { open('[', ']'); }
    /// Ends the object or list that was opened last.
    void close();

    /// All of `list`, each entry as `write_entry(entry)` writes it.
    template <class List, class WriteEntry>
    void list(const List &list, WriteEntry write_entry) {
        open_list();
        for (const auto &entry : list)
            write_entry(entry);
        close();
    }

    /// Ends the document.
    void finish();

  private:
    struct Level {
        char closing = '\0';
        bool is_empty = true;
    };

    void open(char opening, char closing);
    void start_value();
    void start_line();
    void put(std::string_view text);

    TextSink sink_;
    std::string buffer_;
    std::vector<Level> levels_;
    bool has_key_ = false;
    std::optional<std::uint32_t> last_number_; ///< its bits
    std::string last_number_text_;
};

} // namespace kova_command
