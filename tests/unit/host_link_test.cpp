#include "control/host_link.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace kova_import {
namespace {

using host_link::Passed;

constexpr Argument of_kind(ArgumentKind kind, std::uint16_t width = 0) { return {kind, width, ""}; }

// A text that does not fit its argument must not compile, so this is decided when it is compiled.
TEST(HostLink, ATextFitsArgumentsOfItsKindAndWidth) {
    using Field = Passed<FixedText<30>>;
    static_assert(Field::fits(of_kind(ArgumentKind::field, 30)));
    static_assert(!Field::fits(of_kind(ArgumentKind::field, 31)));
    static_assert(!Field::fits(of_kind(ArgumentKind::terminated_field, 30)));
    static_assert(!Field::fits(of_kind(ArgumentKind::fragment)));

    using Terminated = Passed<TerminatedText<30>>;
    static_assert(Terminated::fits(of_kind(ArgumentKind::terminated_field, 31)));
    static_assert(!Terminated::fits(of_kind(ArgumentKind::terminated_field, 30)));
    static_assert(!Terminated::fits(of_kind(ArgumentKind::field, 31)));
    static_assert(Terminated::fits(of_kind(ArgumentKind::fragment)));

    using Quoted = Passed<char[31]>;
    static_assert(Quoted::fits(of_kind(ArgumentKind::literal)));
    static_assert(Quoted::fits(of_kind(ArgumentKind::fragment)));
    static_assert(!Quoted::fits(of_kind(ArgumentKind::field, 31)));
}

} // namespace
} // namespace kova_import
