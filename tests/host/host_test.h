#pragma once

// Sends host commands to a connected reference host as the utility does, through the entry points.

#include "host/reference_host.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace host_test {

/// A text of the given characters, without a NUL unless they have one.
struct Text {
    std::string bytes;
};

using SendBuffer = std::vector<float>;
using Null = std::nullptr_t;
using Value = std::variant<std::int32_t, float, Text, SendBuffer *, Null>;

/// A literal: the characters and their NUL.
inline Text literal(std::string_view characters) {
    Text text{std::string(characters)};
    text.bytes += '\0';
    return text;
}

/// A field: the characters, padded with blanks.
inline Text field(std::string_view characters, std::size_t width) {
    Text text{std::string(characters)};
    text.bytes.resize(width, ' ');
    return text;
}

/// A field whose last character is a NUL.
inline Text terminated_field(std::string_view characters, std::size_t width) {
    Text text = field(characters, width);
    text.bytes.back() = '\0';
    return text;
}

/// The reference and, for a text, the length of an argument.
inline void *reference(Value &value) {
    if (auto *text = std::get_if<Text>(&value))
        return text->bytes.data();
    if (auto *buffer = std::get_if<SendBuffer *>(&value))
        return (*buffer)->data();
    if (auto *integer = std::get_if<std::int32_t>(&value))
        return integer;
    return std::get_if<float>(&value);
}

/// Calls an entry point with lengths as they are given, honest or not.
inline void call(std::size_t entry, char *keyword, const std::array<void *, 5> &a,
                 const std::array<std::size_t, 6> &l) {
    switch (entry) {
    case 0:
        return host_call_0(keyword, l[0]);
    case 1:
        return host_call_1(keyword, a[0], l[0], l[1]);
    case 2:
        return host_call_2(keyword, a[0], a[1], l[0], l[1], l[2]);
    case 3:
        return host_call_3(keyword, a[0], a[1], a[2], l[0], l[1], l[2], l[3]);
    case 4:
        return host_call_4(keyword, a[0], a[1], a[2], a[3], l[0], l[1], l[2], l[3], l[4]);
    default:
        return host_call_5(keyword, a[0], a[1], a[2], a[3], a[4], l[0], l[1], l[2], l[3], l[4],
                           l[5]);
    }
}

/// Sends a command and gives the arguments back as the host left them.
inline std::vector<Value> send_keyword(Text keyword, std::vector<Value> values) {
    std::array<void *, 5> arguments{};
    std::array<std::size_t, 6> lengths{keyword.bytes.size()};
    std::size_t texts = 1;
    for (std::size_t index = 0; index < values.size(); ++index) {
        arguments[index] = reference(values[index]);
        if (const auto *text = std::get_if<Text>(&values[index]))
            lengths[texts++] = text->bytes.size();
    }
    call(values.size(), keyword.bytes.data(), arguments, lengths);
    return values;
}

template <class... Values>
std::vector<Value> send(std::string_view keyword, Values... values) {
    return send_keyword(literal(keyword), std::vector<Value>{Value(std::move(values))...});
}

/// A connected host with its log in memory.
class HostTest : public ::testing::Test {
    std::string log_; // outlives the host, which sends the rest of its log at the end

  protected:
    HostTest() {
        host.log_to([this](std::string_view piece) { log_ += piece; });
    }

    /// What has been logged since the last call.
    std::string log() {
        host.flush_log();
        return std::exchange(log_, {});
    }

    /// The sentences of all violations, one a line.
    std::string violations() const {
        std::string text;
        for (const auto &violation : host.violations())
            text += violation.sentence + "\n";
        return text;
    }

    kova_host::ReferenceHost host;

  private:
    kova_host::Connection connection_ = host.connect();
};

} // namespace host_test
