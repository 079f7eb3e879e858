#pragma once

#include <string>
#include <string_view>

namespace kova_command {

/// A text that many notices have alike. It is kept once for all of them, until the program ends.
class SharedText {
  public:
    SharedText();
    SharedText(std::string_view text);   // NOLINT(google-explicit-constructor)
    SharedText(const std::string &text); // NOLINT(google-explicit-constructor)
    SharedText(const char *text);        // NOLINT(google-explicit-constructor)

    operator std::string_view() const { // NOLINT(google-explicit-constructor): it is a text
        return *text_;
    }
    [[nodiscard]] bool empty() const { return text_->empty(); }
    [[nodiscard]] std::size_t size() const { return text_->size(); }

    /// Texts that are alike are one.
    friend bool operator==(const SharedText &, const SharedText &) = default;

  private:
    const std::string *text_;
};

} // namespace kova_command
