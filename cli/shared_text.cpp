#include "cli/shared_text.h"

#include <functional>
#include <set>

namespace kova_command {

namespace {

const std::string *kept(std::string_view text) {
    static std::set<std::string, std::less<>> texts;
    auto place = texts.lower_bound(text);
    if (place == texts.end() || *place != text)
        place = texts.emplace_hint(place, text);
    return &*place;
}

} // namespace

SharedText::SharedText() {
    static const std::string *const empty = kept({});
    text_ = empty;
}

SharedText::SharedText(std::string_view text) : text_(kept(text)) {}

SharedText::SharedText(const std::string &text) : text_(kept(text)) {}

SharedText::SharedText(const char *text) : text_(kept(text)) {}

} // namespace kova_command
