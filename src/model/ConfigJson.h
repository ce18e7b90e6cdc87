#pragma once

#include "model/Config.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillbar {

/// The record that the JSON text holds, as it stands there; nothing when the text is no JSON, a
/// required key is missing or a value has the wrong type. Unknown keys are ignored, and of equal
/// keys the last one holds. Any bytes may be passed.
[[nodiscard]] std::optional<Config> decodeConfig(std::string_view text);

/// The record as compact JSON. Bytes that are no UTF-8 are written as U+FFFD.
[[nodiscard]] std::string encodeConfig(Config const& config);

/// Turns the legacy switch for all shortcuts into one flag per pinned shortcut.
void migrateAutoRun(Config& config);

} // namespace quillbar
