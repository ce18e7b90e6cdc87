#pragma once

#include "model/Config.h"
#include "platform/view/Alert.h"

#include <string>
#include <vector>

namespace quillbar {

/// The pinned names that are not among the existing ones, in pinned order, with their duplicates.
[[nodiscard]] std::vector<std::string> missingPins(
    std::vector<std::string> const& pinned, std::vector<std::string> const& existing);

/// Asks whether to remove the missing names; the first button removes.
[[nodiscard]] platform::Alert stalePinsAlert(std::vector<std::string> const& missing);

/// Takes the names out of the pins, wherever they stand. What else the record holds on them stays;
/// it is only ever looked up by pinned names.
void removePins(Config& config, std::vector<std::string> const& names);

} // namespace quillbar
