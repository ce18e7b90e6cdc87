#pragma once

#include <string>
#include <string_view>

namespace quillbar::platform {

/// Every function of this header takes and returns UTF-8; a malformed sequence counts as U+FFFD.
[[nodiscard]] bool isValidUtf8(std::string_view text);

/// Without white space and line breaks at both ends.
[[nodiscard]] std::string trimmed(std::string_view text);

/// In upper case, by the rules of the person's language.
[[nodiscard]] std::string upperCased(std::string_view text);

/// The text, or the beginning of one that would take noticeable time to lay out, with an ellipsis.
[[nodiscard]] std::string shortened(std::string_view text);

/// The text for use inside a longer one, shortened. If it has right-to-left letters or direction
/// marks, it is enclosed in U+2068 and U+2069, so that they do not reorder the text around it; any
/// other text is returned unchanged.
[[nodiscard]] std::string isolated(std::string_view whole);

/// Orders by the Unicode scalar values of the canonically equivalent form, case-sensitive.
[[nodiscard]] bool isOrderedBefore(std::string_view left, std::string_view right);

/// The form in which texts are compared when a search ignores case by the rules of the person's
/// language: equal texts have equal forms, whichever way their accents are encoded. Fast for texts
/// that are plain ASCII. Any thread.
[[nodiscard]] std::string searchForm(std::string_view text);

/// Whether a text contains a query, both given in their search forms. A letter without its accent
/// does not match the letter with it.
[[nodiscard]] bool searchFormContains(std::string_view text, std::string_view query);

} // namespace quillbar::platform
