#include "cli/pane_html.h"

#include "cli/html.h"
#include "cli/pane_tag.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string_view>

namespace kova_command {

namespace {

using Element = PaneElement;

/// An element of the page that is open.
struct OpenElement {
    Element element = Element::span;
    PaneInk ink = PaneInk::plain;
    PaneGround ground = PaneGround::plain;
};

/// Deeper nesting is no pane of the utility's.
constexpr std::size_t greatest_depth = 60;

std::string_view name_of(Element element) {
    switch (element) {
    case Element::center:
        return "div";
    case Element::table:
        return "table";
    case Element::tbody:
        return "tbody";
    case Element::tr:
        return "tr";
    case Element::td:
        return "td";
    case Element::th:
        return "th";
    case Element::list:
        return "ul";
    case Element::li:
        return "li";
    case Element::b:
        return "b";
    case Element::br:
        return "br";
    case Element::body:
    case Element::span:
    case Element::big:
        break;
    }
    return "span";
}

std::string_view class_of(PaneInk ink) {
    constexpr std::array<std::string_view, 6> names = {"",         "ink-black", "ink-white",
                                                       "ink-blue", "ink-red",   "ink-green"};
    return names[static_cast<std::size_t>(ink)];
}

/// Whether a text can be read: white belongs on blue, and nothing else does.
bool is_readable(const OpenElement &place) {
    return (place.ink == PaneInk::white) == (place.ground == PaneGround::blue);
}

std::string start_tag(const PaneTag &tag) {
    std::vector<std::string_view> classes;
    if (tag.element == Element::center)
        classes.emplace_back("center");
    if (tag.element == Element::big)
        classes.emplace_back("big");
    if (tag.ink)
        classes.push_back(class_of(*tag.ink));
    if (tag.ground == PaneGround::blue)
        classes.emplace_back("ground-blue");
    std::string html = '<' + std::string(name_of(tag.element));
    for (std::size_t i = 0; i < classes.size(); ++i)
        html += (i == 0 ? " class=\"" : " ") + std::string(classes[i]);
    html += classes.empty() ? "" : "\"";
    if (tag.element == Element::td || tag.element == Element::th) {
        if (tag.column_span > 1)
            html += " colspan=\"" + std::to_string(tag.column_span) + '"';
        if (tag.row_span > 1)
            html += " rowspan=\"" + std::to_string(tag.row_span) + '"';
    }
    if (!tag.style.empty())
        html += " style=\"" + html_of(tag.style) + '"';
    return html + '>';
}

/// Writes tags and texts in order, and keeps what it writes balanced and properly nested.
class PaneWriter {
  public:
    void write_tag(const PaneTag &tag) {
        if (tag.closes)
            close(tag.element);
        else
            open(tag);
    }
    /// `content` is HTML.
    void write_text(const std::string &content, bool is_blank) {
        if (is_blank && !takes_text())
            return;
        make_room_for_text();
        const bool readable = open_.empty() || is_readable(open_.back());
        html_ += readable ? content : element("span class=\"legible\"", content);
    }
    std::string finish() {
        close_down_to(0);
        return std::move(html_);
    }

  private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    [[nodiscard]] bool top_is(std::initializer_list<Element> elements) const {
        return !open_.empty() &&
               std::find(elements.begin(), elements.end(), open_.back().element) != elements.end();
    }
    [[nodiscard]] bool takes_text() const {
        return !top_is({Element::table, Element::tbody, Element::tr, Element::list});
    }

    /// The innermost open element that is one of `wanted`; none beyond one of `limits`.
    [[nodiscard]] std::size_t find(std::initializer_list<Element> wanted,
                                   std::initializer_list<Element> limits) const {
        const auto is_one_of = [](std::initializer_list<Element> elements, Element one) {
            return std::find(elements.begin(), elements.end(), one) != elements.end();
        };
        for (std::size_t i = open_.size(); i-- > 0;) {
            if (is_one_of(wanted, open_[i].element))
                return i;
            if (is_one_of(limits, open_[i].element))
                return none;
        }
        return none;
    }

    void close_down_to(std::size_t depth) {
        for (; open_.size() > depth; open_.pop_back()) {
            html_ += "</";
            html_ += name_of(open_.back().element);
            html_ += '>';
        }
    }

    void push(const PaneTag &tag) {
        OpenElement element;
        if (!open_.empty())
            element = open_.back();
        element.element = tag.element;
        element.ink = tag.ink.value_or(element.ink);
        element.ground = tag.ground.value_or(element.ground);
        html_ += start_tag(tag);
        open_.push_back(element);
    }
    void push(Element element) {
        PaneTag tag;
        tag.element = element;
        push(tag);
    }

    /// Opens what a part of a table has to stand in.
    void make_room_in_table(Element part) {
        const auto open_missing = [this](Element outer, Element missing) {
            if (top_is({outer}))
                push(missing);
        };
        if (part != Element::tbody)
            open_missing(Element::table, Element::tbody);
        if (part != Element::tbody && part != Element::tr)
            open_missing(Element::tbody, Element::tr);
    }

    void make_room_for_text() {
        if (top_is({Element::list}))
            close_down_to(open_.size() - 1);
        if (!takes_text()) {
            make_room_in_table(Element::td);
            push(Element::td);
        }
    }

    /// A block: what is open only for the words of a line ends before it.
    void make_room_for_block() {
        while (top_is({Element::span, Element::big, Element::b}))
            close_down_to(open_.size() - 1);
        make_room_for_text();
    }

    void open_part_of_table(const PaneTag &tag) {
        // The innermost element that can hold the part.
        std::size_t holder = none;
        if (tag.element == Element::tbody)
            holder = find({Element::table}, {});
        else if (tag.element == Element::tr)
            holder = find({Element::tbody, Element::table}, {});
        else
            holder = find({Element::tr, Element::tbody, Element::table}, {});
        if (holder == none)
            return;
        close_down_to(holder + 1);
        make_room_in_table(tag.element);
        push(tag);
    }

    void open_list_item(const PaneTag &tag) {
        const std::size_t list = find({Element::list}, {Element::td, Element::th, Element::table});
        if (list != none) {
            close_down_to(list + 1);
        } else {
            make_room_for_block();
            push(Element::list);
        }
        push(tag);
    }

    void open(const PaneTag &tag) {
        if (open_.size() >= greatest_depth)
            return;
        switch (tag.element) {
        case Element::body: // a page has one
        case Element::list:
            break;
        case Element::tbody:
        case Element::tr:
        case Element::td:
        case Element::th:
            open_part_of_table(tag);
            break;
        case Element::li:
            open_list_item(tag);
            break;
        case Element::center:
        case Element::table:
            make_room_for_block();
            push(tag);
            break;
        case Element::br:
            make_room_for_text();
            html_ += "<br>";
            break;
        case Element::span:
        case Element::big:
        case Element::b:
            make_room_for_text();
            push(tag);
            break;
        }
    }

    void close(Element element) {
        std::size_t found = none;
        if (element == Element::table)
            found = find({Element::table}, {});
        else if (element == Element::tbody || element == Element::tr || element == Element::td ||
                 element == Element::th)
            found = find({element}, {Element::table});
        else
            found = find({element}, {Element::td, Element::th, Element::table});
        if (found != none)
            close_down_to(found);
    }

    std::string html_;
    std::vector<OpenElement> open_;
};

/// Characters of the entity at the start of `html` that may stay as it is; 0 when there is none.
std::size_t entity_size(std::string_view html) {
    for (const std::string_view entity : {"&amp;", "&lt;", "&gt;", "&quot;", "&nbsp;"})
        if (html.starts_with(entity))
            return entity.size();
    return 0;
}

/// A text of the utility's own, without tags.
void write_words(PaneWriter &writer, std::string_view words) {
    std::string bytes;
    for (const char character : words) {
        const bool repeats_blank = character == ' ' && !bytes.empty() && bytes.back() == ' ';
        if (character != fragment_boundary && !repeats_blank)
            bytes += character;
    }
    if (bytes.empty())
        return;
    std::string html;
    const std::string_view rest = bytes;
    for (std::size_t i = 0; i < rest.size();) {
        if (const std::size_t entity = entity_size(rest.substr(i)); entity > 0) {
            html += rest.substr(i, entity);
            i += entity;
            continue;
        }
        const std::size_t end = std::min(rest.find('&', i + 1), rest.size());
        html += html_of(printable(rest.substr(i, end - i), Origin::utility));
        i = end;
    }
    writer.write_text(html, bytes == " ");
}

/// Fragments of the utility's own, with boundaries between them.
void write_markup(PaneWriter &writer, std::string_view markup) {
    std::size_t words = 0;
    for (std::size_t i = 0; i < markup.size();) {
        const std::optional<PaneTag> tag =
            markup[i] == '<' ? parse_pane_tag(markup.substr(i)) : std::nullopt;
        if (!tag) {
            ++i;
            continue;
        }
        write_words(writer, markup.substr(words, i - words));
        writer.write_tag(*tag);
        i += tag->size;
        words = i;
    }
    write_words(writer, markup.substr(words));
}

/// A fragment without what would be taken for a boundary.
std::string without_boundaries(const std::string &text) {
    std::string result;
    for (const char character : text)
        if (character == fragment_boundary)
            result += "\\x00";
        else
            result += character;
    return result;
}

} // namespace

std::string pane_html(const std::vector<PaneFragment> &fragments) {
    PaneWriter writer;
    std::string markup;
    for (const PaneFragment &fragment : fragments) {
        if (!fragment.from_file) {
            markup += without_boundaries(fragment.text) + fragment_boundary;
            continue;
        }
        write_markup(writer, markup);
        markup.clear();
        if (!fragment.text.empty())
            writer.write_text(html_of_bytes(fragment.text), false);
    }
    write_markup(writer, markup);
    return writer.finish();
}

} // namespace kova_command
