#pragma once

// The questions that the utility asks, and where their answers come from.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kova_host {

inline constexpr std::int32_t first_button = 0;
inline constexpr std::int32_t second_button = 1;

/// A question that was asked, with what became of it.
struct Dialog {
    std::string title;
    std::string question;
    std::string first_button;
    std::string second_button;
    std::int32_t answer_on_arrival = 0;
    std::int32_t answer = 0; ///< what the host left in the argument
    bool answered = false;   ///< false: the answer was left as it arrived
};

/// An answer, or none: then the argument stays as it arrived.
using DialogAnswer = std::optional<std::int32_t>;

/// No question is answered.
struct Unanswered {};

/// Answers by the question's title; other questions stay unanswered. As they stand here the whole
/// file is imported and segment names get their number.
struct DialogSettings {
    DialogAnswer verbose = second_button;            ///< "Set Verbose Option:"
    DialogAnswer scope = second_button;              ///< "Import Options": transport only, or all
    DialogAnswer index_segment_names = first_button; ///< "Index Segment Names"
    DialogAnswer continue_import = first_button;     ///< "Continue"
};

/// Answers in the order of the questions; questions behind the last stay unanswered.
struct DialogScript {
    std::vector<DialogAnswer> answers;
};

/// Asks somebody else, for example a person at a terminal. The dialog has its texts and
/// `answer_on_arrival`.
using DialogFunction = std::function<DialogAnswer(const Dialog &)>;

using DialogSource = std::variant<DialogSettings, DialogScript, DialogFunction, Unanswered>;

} // namespace kova_host
