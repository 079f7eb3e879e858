#include "cli/json_writer.h"

#include "cli/text.h"

#include <bit>
#include <cmath>
#include <utility>

namespace kova_command {

namespace {

constexpr std::size_t buffer_size = std::size_t{64} * 1024;
constexpr std::size_t indent = 2;

std::string text_of(const Json &json) { return with_json_escapes(json.dump(indent)); }

} // namespace

Json number_json(float number) {
    return std::isfinite(number) ? Json(std::stod(decimal(number))) : Json();
}

void JsonWriter::key(std::string_view name) {
    start_value();
    put(text_of(name));
    put(": ");
    has_key_ = true;
}

void JsonWriter::value(const Json &value) {
    start_value();
    const std::string text = text_of(value);
    const std::string_view rest = text;
    // No text in JSON has a line break of its own.
    std::size_t line = 0;
    for (std::size_t end = 0; (end = rest.find('\n', line)) != std::string_view::npos;
         line = end + 1) {
        put(rest.substr(line, end - line));
        start_line();
    }
    put(rest.substr(line));
}

void JsonWriter::number(float value) {
    if (const auto bits = std::bit_cast<std::uint32_t>(value); last_number_ != bits) {
        last_number_ = bits;
        last_number_text_ = text_of(number_json(value));
    }
    start_value();
    put(last_number_text_);
}

void JsonWriter::member(std::string_view name, const Json &value) {
    key(name);
    this->value(value);
}

void JsonWriter::close() {
    const Level level = levels_.back();
    levels_.pop_back();
    if (!level.is_empty)
        start_line();
    put({&level.closing, 1});
}

void JsonWriter::finish() {
    put("\n");
    sink_(std::exchange(buffer_, {}));
}

void JsonWriter::open(char opening, char closing) {
    start_value();
    put({&opening, 1});
    levels_.push_back({closing, true});
}

void JsonWriter::start_value() {
    if (has_key_) {
        has_key_ = false;
        return;
    }
    if (levels_.empty())
        return;
    if (!std::exchange(levels_.back().is_empty, false))
        put(",");
    start_line();
}

void JsonWriter::start_line() {
    buffer_ += '\n';
    buffer_.append(indent * levels_.size(), ' ');
}

void JsonWriter::put(std::string_view text) {
    if (buffer_.size() >= buffer_size)
        sink_(std::exchange(buffer_, {}));
    buffer_ += text;
}

} // namespace kova_command
