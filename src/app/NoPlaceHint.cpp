#include "app/NoPlaceHint.h"

#include "app/Uuid.h"
#include "model/Config.h"
#include "model/PrivateFile.h"
#include "platform/Folders.h"
#include "platform/MainQueue.h"
#include "platform/Notifications.h"
#include "platform/view/Alert.h"
#include "ui/HotkeyRecorder.h"

#include <system_error>

namespace quillbar {

namespace {

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

std::string explanation(std::optional<Hotkey> const& paletteHotkey)
{
    std::string text = "This desktop shows no tray icons. ";
    if (paletteHotkey)
        text += "Press " + labelOf(*paletteHotkey) + " to jump to any shortcut, or start ";
    else
        text += "Start ";
    return text + "Quillbar again to open its settings.";
}

} // namespace

void tellOnceThatThereIsNoPlace(std::optional<Hotkey> const& paletteHotkey)
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
