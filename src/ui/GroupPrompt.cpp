#include "ui/GroupPrompt.h"

#include "platform/Text.h"
#include "platform/view/Alert.h"
#include "ui/PinnedCellView.h"

namespace quillbar {

std::optional<std::string> askForGroup(std::string const& shortcut, std::string const& current)
{
    platform::Alert alert;
    alert.messageText = "New group";
    alert.informativeText
        = "Name a section for “" + platform::isolated(shortcut) + "” in the menu bar.";
    alert.buttons = { "OK", "Cancel" };
    alert.accessory = platform::AlertField {
        .text = PinnedCellView::isPresetGroup(current) ? std::string() : current,
        .placeholder = "e.g. Games, Evening, Tools",
    };
    auto const answer = platform::runModal(alert);
    return answer.button == 0 ? std::optional(platform::trimmed(answer.text)) : std::nullopt;
}

} // namespace quillbar
