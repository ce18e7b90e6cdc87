#include "app/StatusItemUnavailable.h"

#include "app/Uuid.h"
#include "model/Config.h"
#include "model/PrivateFile.h"
#include "platform/Folders.h"
#include "platform/HotkeyObstacles.h"
#include "platform/MainQueue.h"
#include "platform/Notifications.h"
#include "platform/view/Alert.h"
#include "ui/HotkeyRecorder.h"

#include <system_error>

namespace quillbar {

namespace {

using platform::NotificationAuthorization;

/// Whether this is the first call of this run and all earlier ones: leaves a file in the state
/// folder. Always true where the system names no such folder.
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

/// How the palette is reached, or why its hotkey may not work.
std::string hotkeySentence(Hotkey const& hotkey)
{
    platform::KeyCombination const combination { hotkey.systemKeyCode(), hotkey.modifiers };
    auto name = platform::hotkeyNames({ combination }).front();
    if (name.empty())
        name = HotkeyRecorder::label(hotkey.keyCode, hotkey.modifiers);
    auto const obstacle = platform::hotkeyObstacles({ combination }).front();
    return obstacle ? name + ": " + platform::hotkeyObstacleText(*obstacle)
                    : "Press " + name + " to jump to any shortcut.";
}

} // namespace

void explainUnavailableStatusItem(std::string const& explanation, Hotkey const& paletteHotkey)
{
    if (!isFirstTime())
        return;
    platform::queryNotificationAuthorization(
        [title = std::string("Quillbar is running"),
            text = explanation + " " + hotkeySentence(paletteHotkey)](
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
