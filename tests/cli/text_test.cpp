#include "cli/suggestions.h"
#include "cli/text.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kova_command {
namespace {

using namespace std::string_view_literals;

struct Case {
    std::string_view bytes;
    std::string_view shown;
};

TEST(Text, IsFitForATerminal) {
    const Case cases[] = {
        {"Upper Pool", "Upper Pool"},
        {"\xC3\xA9", "é"},                              // UTF-8 stays
        {"\xE9t\xE9", "été"},                           // Windows-1252
        {"\x80", "€"},                                  //
        {"\x81", "\\x81"},                              // no character there
        {"\xF8", "ø"},                                  // in a file's own text
        {"a\tb", "a\\tb"},                              //
        {"\x1B[31mred"sv, "\\x1b[31mred"},              // terminals obey these
        {"a\0b"sv, "a\\x00b"},                          //
        {"\x7F", "\\x7f"},                              //
        {"\xC2\x9B", "\\x9b"},                          // control sequence introducer
        {"\xE2\x80\xAE", "\\u202e"},                    // would turn the line around
        {"\xE3\x85\xA4", "\\u3164"},                    // is not seen
        {"\xEF\xB7\x90\xEF\xBF\xBE", "\\ufdd0\\ufffe"}, // no characters
        {"\xF0\x9F\xBF\xBF", "\\U0001ffff"},            //
        {"\xC0\x80", "À€"},                             // overlong: two single bytes
        {"\xED\xA0\x80", "í\xC2\xA0€"},                 // surrogate
        {"\xF4\x90\x80\x80", "ô\\x90€€"},               // beyond Unicode
        {"\xF0\x9F\x90\x9F", "\xF0\x9F\x90\x9F"},       // four bytes
        {"\xE2\x82", "â‚"},                             // cut character
    };
    for (const Case &each : cases)
        EXPECT_EQ(printable(each.bytes), each.shown);
    EXPECT_EQ(printable("20 \xF8 C", Origin::utility), "20 ° C");
}

TEST(Text, KeepsControlCharactersForPrograms) {
    EXPECT_EQ(to_utf8("a\tb\xE9\x1B"), "a\tb\xC3\xA9\x1B");
    EXPECT_EQ(to_utf8("\xF8", Origin::utility), "\xC2\xB0");
}

TEST(Text, KnowsTheWidthOfGlyphs) {
    const auto glyphs = glyphs_of("a\xE6\xB0\xB4\xCC\x81\t\xF0\x9F\x90\x9F");
    ASSERT_EQ(glyphs.size(), 5U);
    EXPECT_EQ(glyphs[0].cells, 1U);
    EXPECT_EQ(glyphs[1].cells, 2U); // an ideograph
    EXPECT_EQ(glyphs[2].cells, 0U); // stands on the one before
    EXPECT_EQ(glyphs[3].cells, 2U); // \t
    EXPECT_EQ(glyphs[4].utf16_units, 2U);
    EXPECT_EQ(glyphs[4].offset, 7U);
}

TEST(Text, LosesTheRestOfACutCharacter) {
    EXPECT_EQ(without_cut_character("ab\xE2\x82"), "ab");
    EXPECT_EQ(without_cut_character("ab\xC3\xA9"), "ab\xC3\xA9");
    EXPECT_EQ(without_cut_character("ab\x80\x80\x80\x80"), "ab\x80\x80\x80\x80");
    EXPECT_EQ(without_cut_character(""), "");
}

TEST(Text, MakesUrisOfPaths) {
    EXPECT_EQ(uri_of_path("a b/c.inp"), "a%20b/c.inp");
    EXPECT_EQ(uri_of_path("/x/\xC3\xA9%#?"), "file:///x/%C3%A9%25%23%3F");
    EXPECT_EQ(uri_of_path("a:b\xFF"), "a%3Ab%FF"); // no scheme, no lost byte
}

TEST(Text, MakesUrisOfPathsOfWindows) {
    const auto uri = [](std::string_view path) { return uri_of_path(path, PathStyle::windows); };
    EXPECT_EQ(uri("C:\\a b\\c.inp"), "file:///C:/a%20b/c.inp");
    EXPECT_EQ(uri("c:/a/\xC3\xA9.inp"), "file:///c:/a/%C3%A9.inp");
    EXPECT_EQ(uri("\\\\server\\share\\c.inp"), "file://server/share/c.inp");
    EXPECT_EQ(uri("..\\c.inp"), "../c.inp");
    EXPECT_EQ(uri("C:c.inp"), "C%3Ac.inp"); // at the current directory of the drive
}

TEST(Suggestions, FindTheWordThatWasMeant) {
    const std::vector<std::string> known = {"--scope", "--json", "--quiet", "--index-names"};
    EXPECT_EQ(nearest("--scop", known), "--scope");
    EXPECT_EQ(nearest("--josn", known), "--json");
    EXPECT_EQ(nearest("--index", known), "--index-names");
    EXPECT_EQ(nearest("--colour", known), std::nullopt);
    EXPECT_EQ(nearest(std::string(100000, 'x'), known), std::nullopt);
}

} // namespace
} // namespace kova_command
