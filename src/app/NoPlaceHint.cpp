#include "app/NoPlaceHint.h"

#include "app/Uuid.h"
#include "model/Config.h"
#include "model/PrivateFile.h"
#include "platform/Folders.h"
#include "platform/MainQueue.h"
#include "platform/Notifications.h"
#include "platform/SystemHotkeys.h"
#include "platform/view/Alert.h"
#include "ui/HotkeyRecorder.h"

#include <system_error>

namespace quillbar {

namespace {

using platform::HotkeyObstacle;
using platform::NotificationAuthorization;

/// Whether this is the first time; notes that it has been. Where nothing can be noted, every time
/// is.
bool isFirstTime()
{
    auto const state = platform::stateFolder();
    if (state.empty())
        return true;
    auto const folder = state / "Quillbar";
    auto const mark = folder / "no-tray-hint";
    std::error_code error;
    if (std::filesystem::exists(mark, error))
        return false;
    createPrivateFolder(folder);
    writePrivateFile(mark, "");
    return true;
}

// The default one as the other texts write it.
std::string labelOf(Hotkey const& hotkey)
{
    return hotkey == Config().menuHotkeyEff()
        ? "⌥⌘T"
        : HotkeyRecorder::label(hotkey.keyCode, hotkey.modifiers);
}

std::optional<HotkeyObstacle> obstacleOf(Hotkey const& hotkey)
{
    return platform::hotkeyObstacles(
        { { static_cast<std::uint32_t>(hotkey.keyCode), hotkey.modifiers } })
        .front();
}

std::string explanation(Hotkey const& paletteHotkey)
{
    std::string const again
        = "Quillbar again to open its settings; Ctrl+Q in its windows quits it.";
    std::string const text = "This desktop shows no tray icons. ";
    auto const label = labelOf(paletteHotkey);
    auto const obstacle = obstacleOf(paletteHotkey);
    if (!obstacle)
        return text + "Press " + label + " to jump to any shortcut, or start " + again;
    auto const* const verb
        = obstacle == HotkeyObstacle::CommandKeyTaken ? " may not work" : " does not work";
    return text + "Start " + again + " " + label + verb + " here. " + platform::hotkeyAlternative();
}

} // namespace

void tellOnceThatThereIsNoPlace(Hotkey const& paletteHotkey)
{
    if (!isFirstTime())
        return;
    platform::queryNotificationAuthorization(
        [title = std::string("Quillbar is running"), text = explanation(paletteHotkey)](
            NotificationAuthorization authorization) {
            if (authorization == NotificationAuthorization::Authorized
                || authorization == NotificationAuthorization::Provisional) {
                platform::postNotification({ .identifier = randomUuid(),
                    .title = title,
                    .body = text,
                    .sound = platform::NotificationSound::None,
                    .life = platform::NotificationLife::Kept });
                return;
            }
            platform::post([title, text] {
                static_cast<void>(platform::runModal({ .style = platform::AlertStyle::Informational,
                    .messageText = title,
                    .informativeText = text,
                    .buttons = { "OK" },
                    .accessory = std::nullopt }));
            });
        });
}

} // namespace quillbar
