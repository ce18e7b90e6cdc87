#include "platform/SystemHotkeys.h"

#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/input/HotkeyBackend.h"
#include "platform/linux/input/ModifierTable.h"
#include "platform/linux/portal/PortalHotkeys.h"
#include "platform/linux/x11/X11Hotkeys.h"

#include <QGuiApplication>

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <utility>

namespace quillbar::platform {

namespace {

class NoHotkeys final : public HotkeyBackend {
public:
    Token claim(std::uint32_t, KeyModifiers, std::uint32_t, std::string const&) override
    {
        return {};
    }
    std::vector<std::optional<HotkeyObstacle>> obstacles(
        std::vector<KeyCombination> const& combinations) override
    {
        return { combinations.size(), HotkeyObstacle::NoService };
    }
};

std::function<void(std::uint32_t)>& pressHandler()
{
    static std::function<void(std::uint32_t)> handler;
    return handler;
}

void firePressed(std::uint32_t id)
{
    // A copy: the handler may be replaced while it runs.
    if (auto const handler = pressHandler())
        handler(id);
}

using Observers = std::map<std::uint64_t, std::function<void()>>;

Observers& obstacleObservers()
{
    // Never destroyed: tokens may outlive every static object.
    static auto& observers = *new Observers;
    return observers;
}

void tellObstacleObservers()
{
    // A copy: an observer may end itself or others.
    for (auto const& [number, observer] : Observers { obstacleObservers() }) {
        if (obstacleObservers().count(number) > 0)
            observer();
    }
}

std::shared_ptr<HotkeyBackend> makeBackend()
{
    // XWayland accepts grabs too, but they work in some windows only and nobody could tell why.
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        if (auto x11 = X11Hotkeys::connect(firePressed))
            return x11;
        return std::make_shared<NoHotkeys>();
    }
    return std::make_shared<PortalHotkeys>(firePressed);
}

HotkeyBackend& backend()
{
    static std::shared_ptr<HotkeyBackend> const chosen = [] {
        auto made = makeBackend();
        made->onObstaclesChange = tellObstacleObservers;
        return made;
    }();
    return *chosen;
}

} // namespace

void installHotkeyHandler(std::function<void(std::uint32_t id)> onPressed)
{
    pressHandler() = std::move(onPressed);
}

Token registerSystemHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
    std::uint32_t /*signature*/, std::uint32_t id, std::string const& title)
{
    return backend().claim(keyCode, modifiers, id, title);
}

std::vector<std::optional<HotkeyObstacle>> hotkeyObstacles(
    std::vector<KeyCombination> const& combinations)
{
    return backend().obstacles(combinations);
}

std::vector<std::string> hotkeyNames(std::vector<KeyCombination> const& combinations)
{
    std::vector<std::uint32_t> keyCodes;
    std::transform(combinations.begin(), combinations.end(), std::back_inserter(keyCodes),
        [](KeyCombination const& combination) { return combination.keyCode; });
    auto names = backend().keyNames(keyCodes);
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (!names[index].empty())
            names[index].insert(0, modifierText(combinations[index].modifiers, &ModifierRow::name));
    }
    return names;
}

std::string hotkeyObstacleText(HotkeyObstacle obstacle)
{
    auto const alternative
        = std::string(
              "\nBind this command in your desktop's settings instead:\ngapplication action ")
        + applicationId + " palette";
    switch (obstacle) {
    case HotkeyObstacle::Taken:
        return "Another program already uses this combination.";
    case HotkeyObstacle::NoSuchKey:
        return "Your keyboard has no such key.";
    case HotkeyObstacle::CommandKeyTaken:
        return "Another program holds the Super key and may keep this combination." + alternative;
    case HotkeyObstacle::NoService:
        return "This session offers no global hotkeys." + alternative;
    case HotkeyObstacle::Declined:
        return "You declined this combination when the desktop asked.";
    }
    return {};
}

Token observeHotkeyObstacles(std::function<void()> onChange)
{
    static std::uint64_t nextNumber = 0;
    auto const number = nextNumber++;
    obstacleObservers().emplace(number, std::move(onChange));
    return Token { [number] { obstacleObservers().erase(number); } };
}

} // namespace quillbar::platform
