#include "platform/HotkeyObstacles.h"

namespace quillbar::platform {

std::vector<std::optional<HotkeyObstacle>> hotkeyObstacles(
    std::vector<KeyCombination> const& combinations)
{
    return std::vector<std::optional<HotkeyObstacle>>(combinations.size());
}

std::string hotkeyObstacleText(HotkeyObstacle /*obstacle*/)
{
    return {};
}

std::vector<std::string> hotkeyNames(std::vector<KeyCombination> const& combinations)
{
    return std::vector<std::string>(combinations.size());
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): backends that observe keep it.
Token observeHotkeyObstacles(std::function<void()> /*onChange*/)
{
    return {};
}

} // namespace quillbar::platform
