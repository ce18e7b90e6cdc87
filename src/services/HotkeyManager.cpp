#include "services/HotkeyManager.h"

#include "platform/Fatal.h"
#include "platform/HotkeyObstacles.h"
#include "platform/SystemHotkeys.h"

#include <limits>
#include <utility>

namespace quillbar {

namespace {

/// "QUIL"
constexpr std::uint32_t signature = 0x5155494C;

} // namespace

void HotkeyManager::install()
{
    if (std::exchange(installed_, true))
        return;
    platform::installHotkeyHandler([](std::uint32_t id) { hotkeyManager().trigger(id); });
    obstacleObservation_ = platform::observeHotkeyObstacles([this] { retryRefused(); });
}

std::uint32_t HotkeyManager::registerHotkey(std::function<void()> action, std::uint32_t keyCode,
    std::uint32_t modifiers, std::string const& title)
{
    install();
    if (nextID_ == std::numeric_limits<std::uint32_t>::max())
        platform::fatalError("the ids of hotkeys are used up");
    auto const id = nextID_++;
    Request request { std::move(action), keyCode, modifiers, title };
    if (claim(id, request))
        return id;
    refused_.emplace(id, std::move(request));
    return 0;
}

bool HotkeyManager::claim(std::uint32_t id, Request const& request)
{
    auto reference = platform::registerSystemHotkey(
        request.keyCode, request.modifiers, signature, id, request.title);
    if (!reference)
        return false;
    refs_.emplace(id, std::move(reference));
    actions_.emplace(id, request.action);
    return true;
}

void HotkeyManager::unregister(std::uint32_t id)
{
    if (refs_.erase(id) > 0)
        actions_.erase(id);
}

void HotkeyManager::unregisterAll()
{
    while (!refs_.empty())
        unregister(refs_.begin()->first);
    refused_.clear();
}

void HotkeyManager::retryRefused()
{
    std::erase_if(refused_, [this](auto const& entry) { return claim(entry.first, entry.second); });
}

void HotkeyManager::trigger(std::uint32_t id)
{
    auto const found = actions_.find(id);
    if (found == actions_.end())
        return;
    // The action may replace every registration, its own too.
    auto const action = found->second;
    action();
}

HotkeyManager& hotkeyManager()
{
    // Never destroyed: giving hotkeys back needs the backend, which may be gone before this.
    static auto& manager = *new HotkeyManager;
    return manager;
}

} // namespace quillbar
