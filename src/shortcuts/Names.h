#pragma once

#include <string>
#include <string_view>

namespace quillbar::shortcuts {

/// Whether a listing can carry the name: UTF-8 without line breaks and control characters, from 1
/// to 255 bytes long.
[[nodiscard]] bool isListable(std::string_view name);

/// The file name without the extension of a script, if it has one.
[[nodiscard]] std::string_view withoutScriptExtension(std::string_view fileName);

/// How many bytes have to be changed, added or removed to make one text of the other; `limit` when
/// that many or more.
[[nodiscard]] std::size_t editDistance(
    std::string_view left, std::string_view right, std::size_t limit);

/// The text with each byte escaped that a terminal could take for part of an escape sequence.
[[nodiscard]] std::string printable(std::string_view text);

/// The text as one word of a shell command, for remedies that people copy.
[[nodiscard]] std::string shellQuoted(std::string const& text);

} // namespace quillbar::shortcuts
