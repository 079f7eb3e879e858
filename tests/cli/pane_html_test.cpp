#include "cli/pane_html.h"
#include "cli/pane_tag.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kova_command {
namespace {

/// Fragments of the utility's own.
std::string html_of(const std::vector<std::string> &fragments) {
    std::vector<PaneFragment> pane;
    for (const std::string &fragment : fragments)
        pane.push_back({fragment, false});
    return pane_html(pane);
}

std::string html_of_name(const std::string &name) { return pane_html({{name, true}}); }

bool is_allowed(std::string_view tag) { return parse_pane_tag(tag).has_value(); }

TEST(PaneTag, KnowsWhatTheUtilityWrites) {
    for (const char *tag :
         {"<body>", "</body>", "<center>", "</Center>", "<tbody>", "<td>", "<li>", "<br>",
          "<big style=\"font-weight: bold; color: Black;\">",
          "<span style=\"font-weight: bold; color: blue;\">",
          "<td style=\"background-color: blue;\">",
          "<tr style=\"font-weight: bold; color: white;\"align=\"center\">",
          "<tr style=\"font-weight: bold;\" align=\"Left\">",
          "<table style=\"text-align: left; width: 436px; height: 192px;\"border=\"1\" "
          "cellpadding=\"2\" cellspacing=\"2\">",
          "<td style=\"width: 331px;\" colspan=\"2\" rowspan=\"1\">"}) {
        const auto parsed = parse_pane_tag(tag);
        ASSERT_TRUE(parsed) << tag;
        EXPECT_EQ(parsed->size, std::string_view(tag).size());
    }
}

TEST(PaneTag, RefusesEverythingElse) {
    for (const char *tag : {"",
                            "<",
                            "<>",
                            "</>",
                            "<b",
                            "< b>",
                            "<b/>",
                            "<!--",
                            "<!DOCTYPE html>",
                            "<?xml?>",
                            "<script>",
                            "</script>",
                            "<SCRIPT>",
                            "<style>",
                            "<img src=\"x\">",
                            "<a href=\"x\">",
                            "<svg>",
                            "<iframe>",
                            "<object>",
                            "<form>",
                            "<input>",
                            "<meta>",
                            "<link>",
                            "<base>",
                            "<title>",
                            "<template>",
                            "<math>",
                            "<tdx>",
                            "<b onclick=\"f()\">",
                            "<td ONCLICK=\"f()\">",
                            "<td id=\"x\">",
                            "<td class=\"x\">",
                            "<td src=\"x\">",
                            "<td background=\"x\">",
                            "<td align>",
                            "<td align=center>",
                            "<td align='center'>",
                            "<td align=\"center>",
                            "<td align =\"left\">",
                            "<td align=\"justify\">",
                            "<td align=\"left\" align=\"left\">",
                            "<td border=\"1\">",
                            "<td colspan=\"0\">",
                            "<td colspan=\"100\">",
                            "<td colspan=\"-1\">",
                            "<td colspan=\"\">",
                            "</b style=\"color: blue;\">",
                            "<b\tstyle=\"color: blue\">",
                            "<b/style=\"color: blue\">"})
        EXPECT_FALSE(is_allowed(tag)) << tag;
}

TEST(PaneTag, RefusesStylesThatAreNotOnTheList) {
    const auto is_allowed_style = [](const std::string &style) {
        return is_allowed("<td style=\"" + style + "\">");
    };
    for (const char *style : {"", "color: blue", "COLOR:Blue;width:1px", "width: 9999px;"})
        EXPECT_TRUE(is_allowed_style(style)) << style;
    for (const char *style : {" ; ",
                              "background: url(x)",
                              "background-color: url(x)",
                              "width: expression(f())",
                              "width: 1",
                              "width: 10000px",
                              "width: -1px",
                              "width: 1em",
                              "width: calc(1px)",
                              "position: fixed",
                              "color: var(--x)",
                              "color: #fff",
                              "color: blue !important",
                              "color",
                              "color:",
                              ":blue",
                              "color: blue} b {color: red",
                              "co\\6cor: blue",
                              "color/**/: blue",
                              "font-weight: 700",
                              "display: none",
                              "behavior: url(x)",
                              "-moz-binding: url(x)",
                              "color: blue; position: fixed",
                              "color: &#98;lue",
                              "content: 'x'",
                              "text-align: justify",
                              "color\n: blue"})
        EXPECT_FALSE(is_allowed_style(style)) << style;
}

TEST(PaneHtml, WritesHtmlOfToday) {
    EXPECT_EQ(html_of({"<center><table border=\"1\"><tbody><tr align=\"center\"><td colspan=\"2\">",
                       "<big>x</big></td></tr></tbody></table><br></center>"}),
              "<div class=\"center\"><table><tbody><tr style=\"text-align:center;\">"
              "<td colspan=\"2\"><span class=\"big\">x</span></td></tr></tbody></table><br></div>");
    EXPECT_EQ(html_of({"<li><span style=\"color: blue;\">", "x</span></li>"}),
              "<ul><li><span class=\"ink-blue\">x</span></li></ul>");
}

TEST(PaneHtml, FragmentsJoinTheirTags) {
    EXPECT_EQ(html_of({"<span", "style=\"font-weight: bold;\">x</span>"}),
              "<span style=\"font-weight:bold;\">x</span>");
    EXPECT_EQ(html_of({"<b style=\"text-align: left; ", "font-weight: bold;\">x</b>"}),
              "<b style=\"text-align:left;font-weight:bold;\">x</b>");
    EXPECT_EQ(html_of({"<ta", "ble>"}), "&lt;table&gt;");
    EXPECT_EQ(html_of({"<scr", "ipt>x"}), "&lt;script&gt;x");
    EXPECT_EQ(html_of({"<", "b>x"}), "&lt;b&gt;x");
    EXPECT_EQ(html_of({"<b", "onclick=\"f()\">x"}), "&lt;bonclick=&quot;f()&quot;&gt;x");
}

TEST(PaneHtml, EscapesWhatIsNotOnTheList) {
    EXPECT_EQ(html_of({"<script>alert(1)</script>"}), "&lt;script&gt;alert(1)&lt;/script&gt;");
    EXPECT_EQ(html_of({"<b onload=\"f()\">x</b>"}), "&lt;b onload=&quot;f()&quot;&gt;x");
    EXPECT_EQ(html_of({"<td style=\"background: url(x)\">"}),
              "&lt;td style=&quot;background: url(x)&quot;&gt;");
    EXPECT_EQ(html_of({"<<b>x</b>>"}), "&lt;<b>x</b>&gt;");
    EXPECT_EQ(html_of({"<td style=\"<b>x</b>"}), "&lt;td style=&quot;<b>x</b>");
}

TEST(PaneHtml, KeepsEntitiesOfTheListOnly) {
    EXPECT_EQ(html_of({"a &amp; b &lt; &gt;&quot;&nbsp;"}), "a &amp; b &lt; &gt;&quot;&nbsp;");
    EXPECT_EQ(html_of({"&copy; &#60; &AMP; & &amp"}),
              "&amp;copy; &amp;#60; &amp;AMP; &amp; &amp;amp");
    EXPECT_EQ(html_of({"&am", "p;"}), "&amp;");
}

TEST(PaneHtml, TextsFromTheFileAreText) {
    EXPECT_EQ(html_of_name("<b>x</b>"), "<bdi>&lt;b&gt;x&lt;/b&gt;</bdi>");
    EXPECT_EQ(html_of_name("a &amp; \"b\" 'c'"),
              "<bdi>a &amp;amp; &quot;b&quot; &#39;c&#39;</bdi>");
    // A name ends the tag that it stands in.
    EXPECT_EQ(pane_html({{"<td align=\"", false}, {"left\"><b>", true}, {"\">", false}}),
              "&lt;td align=&quot;<bdi>left&quot;&gt;&lt;b&gt;</bdi>&quot;&gt;");
}

TEST(PaneHtml, ShowsStrangeBytes) {
    EXPECT_EQ(html_of_name(std::string("a\0b\x1B[31m\x7F", 9)), "<bdi>a\\x00b\\x1b[31m\\x7f</bdi>");
    EXPECT_EQ(html_of({std::string("a\0<b>", 5)}), "a\\x00<b></b>");
    EXPECT_EQ(html_of({std::string("<b\0>", 4)}), "&lt;b\\x00&gt;");
    EXPECT_EQ(html_of_name("\xE9 \xC3\xA9 \xC3"), "<bdi>\xC3\xA9 \xC3\xA9 \xC3\x83</bdi>");
    EXPECT_EQ(html_of({"20 \xF8"}), "20 \xC2\xB0");
    EXPECT_EQ(html_of_name("\xF8"), "<bdi>\xC3\xB8</bdi>");
    EXPECT_EQ(html_of_name("\xE2\x80\xAE<b>"), "<bdi>\\u202e&lt;b&gt;</bdi>");
    EXPECT_EQ(html_of({"\xE2\x80", "\xAE"}), "\\u202e");
}

TEST(PaneHtml, Balances) {
    EXPECT_EQ(html_of({"</td></tr></tbody></table></center></div></body></html>x"}),
              "&lt;/div&gt;&lt;/html&gt;x");
    EXPECT_EQ(html_of({"<center><table><tbody><tr><td><big>x"}),
              "<div class=\"center\"><table><tbody><tr><td><span class=\"big\">x</span></td></tr>"
              "</tbody></table></div>");
    EXPECT_EQ(html_of({"<b><span>x</b>y</span>"}), "<b><span>x</span></b>y");
    EXPECT_EQ(html_of({"<tr><td>x</td></tr>"}), "x");
    EXPECT_EQ(html_of({"<table><tr><td>a<td>b<tr><td>c</table>d"}),
              "<table><tbody><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></tbody></table>d");
    EXPECT_EQ(html_of({"<table><b>x"}), "<table><tbody><tr><td><b>x</b></td></tr></tbody></table>");
    EXPECT_EQ(html_of({"<table> <tbody> <tr> <td>x</td> </tr>"}),
              "<table><tbody><tr><td>x</td></tr></tbody></table>");
    EXPECT_EQ(html_of({"<b><table><tr><td></b>x</table>"}),
              "<b></b><table><tbody><tr><td>x</td></tr></tbody></table>");
    EXPECT_EQ(html_of({"<li>a<li>b", "<body>", "</li>c"}), "<ul><li>a</li><li>b</li></ul>c");
}

TEST(PaneHtml, DepthIsLimited) {
    std::vector<std::string> fragments(10000, "<center><b>");
    const std::string html = html_of(fragments);
    EXPECT_LT(html.size(), 10000U);
    EXPECT_EQ(html_of({"<b>x"}), "<b>x</b>");
}

TEST(PaneHtml, ColoursThatCannotBeReadAreReplaced) {
    EXPECT_EQ(html_of({"<span style=\"color: white;\">x"}),
              "<span class=\"ink-white\"><span class=\"legible\">x</span></span>");
    EXPECT_EQ(html_of({"<span style=\"background-color: blue;\">x"}),
              "<span class=\"ground-blue\"><span class=\"legible\">x</span></span>");
    EXPECT_EQ(html_of({"<b style=\"color: white;\"><span style=\"background-color: blue;\">x"}),
              "<b class=\"ink-white\"><span class=\"ground-blue\">x</span></b>");
}

} // namespace
} // namespace kova_command
