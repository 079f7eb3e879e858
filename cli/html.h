#pragma once

// Text as HTML. Everything that is not markup of a page's own goes through here.

#include "cli/text.h"

#include <string>
#include <string_view>

namespace kova_command {

/// `text`, which is fit for people already, as the content of an element or of a quoted attribute.
[[nodiscard]] std::string html_of(std::string_view text);

/// Bytes made fit for people and escaped, kept apart from the direction of the text around them.
[[nodiscard]] std::string html_of_bytes(std::string_view bytes, Origin origin = Origin::file);

/// An element: `tag` is its name, with attributes if there are any; `content` is HTML.
[[nodiscard]] std::string element(std::string_view tag, std::string_view content);

} // namespace kova_command
