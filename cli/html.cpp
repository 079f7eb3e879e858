#include "cli/html.h"

namespace kova_command {

std::string html_of(std::string_view text) {
    std::string html;
    html.reserve(text.size());
    for (const char character : text) {
        switch (character) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\'':
            html += "&#39;";
            break;
        default:
            html += character;
        }
    }
    return html;
}

std::string html_of_bytes(std::string_view bytes, Origin origin) {
    return element("bdi", html_of(printable(bytes, origin)));
}

std::string element(std::string_view tag, std::string_view content) {
    std::string html;
    html.reserve(2 * tag.size() + content.size() + 5);
    html += '<';
    html += tag;
    html += '>';
    html += content;
    html += "</";
    html += tag.substr(0, tag.find(' '));
    html += '>';
    return html;
}

} // namespace kova_command
