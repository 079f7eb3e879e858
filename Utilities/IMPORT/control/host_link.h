#pragma once

// The typed way to the host: `send<"PSEGNAME">(index, name)` does not compile with a keyword,
// number or kind of arguments that the command table does not have.

#include "control/fixed_text.h"
#include "control/host_commands.h"
#include "control/literal.h"
#include "control/send_buffers.h"
#include "host_calls.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace kova_import {

/// An integer that the host writes: the answer to a question.
struct Answer {
    std::int32_t &value;
};

/// A text that the host writes.
template <std::size_t n>
struct Result {
    FixedText<n> &text;
};

template <std::size_t n>
Result(FixedText<n> &) -> Result<n>;

/// A send buffer. It is not copied: what the host writes there stays.
struct AsItStands {
    SendBuffer &buffer;
};

namespace host_link {

// How each C++ type travels: the address that the host gets, the length behind the arguments (texts
// only), and the kinds of argument that it may stand for. Numbers and texts are copied into the
// traits object, since the host may write through the address.

template <class T>
struct Passed;

template <>
struct Passed<std::int32_t> {
    static constexpr std::size_t length = 0;
    static constexpr bool fits(const Argument &argument) {
        return argument.kind == ArgumentKind::integer;
    }
    explicit Passed(std::int32_t value) : copy(value) {}
    void *address() { return &copy; }
    std::int32_t copy;
};

template <>
struct Passed<float> {
    static constexpr std::size_t length = 0;
    static constexpr bool fits(const Argument &argument) {
        return argument.kind == ArgumentKind::real;
    }
    explicit Passed(float value) : copy(value) {}
    void *address() { return &copy; }
    float copy;
};

// A literal's size already counts its NUL.
template <std::size_t n>
struct Passed<char[n]> {
    static constexpr std::size_t length = n;
    static constexpr bool fits(const Argument &argument) {
        return argument.kind == ArgumentKind::literal || argument.kind == ArgumentKind::fragment;
    }
    explicit Passed(const char (&text)[n]) { std::copy_n(text, n, copy.data()); }
    void *address() { return copy.data(); }
    std::array<char, n> copy;
};

template <std::size_t n>
struct Passed<FixedText<n>> {
    static constexpr std::size_t length = n;
    static constexpr bool fits(const Argument &argument) {
        return (argument.kind == ArgumentKind::field && argument.width == n) ||
               (argument.kind == ArgumentKind::fragment && is_report_width(n));
    }
    explicit Passed(const FixedText<n> &text) : copy(text) {}
    void *address() { return copy.data(); }
    FixedText<n> copy;
};

template <std::size_t n>
struct Passed<TerminatedText<n>> {
    static constexpr std::size_t length = n + 1;
    static constexpr bool fits(const Argument &argument) {
        return (argument.kind == ArgumentKind::terminated_field && argument.width == n + 1) ||
               argument.kind == ArgumentKind::fragment;
    }
    explicit Passed(const TerminatedText<n> &text) {
        std::copy_n(text.text.data(), n, copy.data());
        copy[n] = '\0';
    }
    void *address() { return copy.data(); }
    std::array<char, n + 1> copy;
};

template <>
struct Passed<Answer> {
    static constexpr std::size_t length = 0;
    static constexpr bool fits(const Argument &argument) {
        return argument.kind == ArgumentKind::answer;
    }
    explicit Passed(const Answer &answer) : target(&answer.value) {}
    void *address() { return target; }
    std::int32_t *target;
};

template <std::size_t n>
struct Passed<Result<n>> {
    static constexpr std::size_t length = n;
    static constexpr bool fits(const Argument &argument) {
        return argument.kind == ArgumentKind::result &&
               (argument.width == n || (argument.width == 0 && is_report_width(n)));
    }
    explicit Passed(const Result<n> &result) : target(result.text.data()) {}
    void *address() { return target; }
    char *target;
};

template <>
struct Passed<AsItStands> {
    static constexpr std::size_t length = 0;
    static constexpr bool fits(const Argument &argument) {
        return argument.kind == ArgumentKind::send_buffer;
    }
    explicit Passed(const AsItStands &whole) : target(whole.buffer.data()) {}
    void *address() { return target; }
    float *target;
};

/// The lengths behind the arguments: those of the texts in their order, then zeros.
template <std::size_t keyword_length, class... T>
consteval auto text_lengths() {
    std::array<std::size_t, sizeof...(T) + 1> lengths{keyword_length};
    std::size_t count = 1;
    ((Passed<T>::length != 0 ? lengths[count++] = Passed<T>::length : 0), ...);
    return lengths;
}

inline constexpr auto entry_points =
    std::tuple{&host_call_0, &host_call_1, &host_call_2, &host_call_3, &host_call_4, &host_call_5};

template <class... T>
consteval bool arguments_fit(const HostCommand &command) {
    std::size_t i = 0;
    return (Passed<T>::fits(command.arguments[i++]) && ...);
}

} // namespace host_link

/// Sends one host command. The host may act on it, and write the answer or result, before this
/// returns.
template <Literal keyword, class... T>
void send(const T &...arguments) {
    constexpr const HostCommand *command = find_host_command(keyword.view());
    static_assert(command != nullptr, "no such host command");
    static_assert(command->argument_count() == sizeof...(T), "wrong number of arguments");
    static_assert(host_link::arguments_fit<T...>(*command), "an argument is of the wrong kind");

    std::array<char, sizeof(keyword.characters)> name{};
    std::copy_n(keyword.characters, name.size(), name.data());
    std::tuple<host_link::Passed<T>...> passed{host_link::Passed<T>(arguments)...};
    constexpr auto lengths = host_link::text_lengths<sizeof(keyword.characters), T...>();
    [&]<std::size_t... argument, std::size_t... length>(std::index_sequence<argument...>,
                                                        std::index_sequence<length...>) {
        std::get<sizeof...(T)>(host_link::entry_points)(
            name.data(), std::get<argument>(passed).address()..., lengths[length]...);
    }
    (std::index_sequence_for<T...>{}, std::make_index_sequence<sizeof...(T) + 1>{});
}

/// One command per row of a table, with the numbers that say which row it is and one of its
/// members.
template <Literal keyword, auto pointer>
struct RowCommand {
    template <class Row, class... Number>
    static void send_row(const Row &row, Number... numbers) {
        send<keyword>(numbers..., row.*pointer);
    }
};

/// A list of row commands: the order in which a row's members reach the host, as data.
template <class... Command>
struct RowCommands {
    template <class Row, class... Number>
    static void send_row(const Row &row, Number... numbers) {
        (Command::send_row(row, numbers...), ...);
    }

    template <class... Other>
    consteval RowCommands<Command..., Other...> operator+(RowCommands<Other...> /*behind*/) const {
        return {};
    }
};

} // namespace kova_import
