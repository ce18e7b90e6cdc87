#pragma once

#include <string>
#include <string_view>

namespace quillbar::platform {

/// The form in which texts are compared when a search ignores case by the rules of the person's
/// language: equal texts have equal forms, whichever way their accents are encoded. UTF-8; fast
/// for texts that are plain ASCII. Any thread.
[[nodiscard]] std::string searchForm(std::string_view text);

/// Whether a text contains a query, both given in their search forms. A letter without its accent
/// does not match the letter with it.
[[nodiscard]] bool searchFormContains(std::string_view text, std::string_view query);

} // namespace quillbar::platform
