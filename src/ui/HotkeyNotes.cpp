#include "ui/HotkeyNotes.h"

#include "platform/SystemHotkeys.h"
#include "platform/Text.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace quillbar {

using platform::HotkeyObstacle;
using platform::KeyCombination;

namespace {

std::string withAlternative(std::string const& sentence)
{
    auto const alternative = platform::hotkeyAlternative();
    return alternative.empty() ? sentence : sentence + "\n" + alternative;
}

std::string sentence(HotkeyObstacle obstacle)
{
    switch (obstacle) {
    case HotkeyObstacle::Taken:
        return "Another program already uses this combination.";
    case HotkeyObstacle::NoSuchKey:
        return "Your keyboard has no such key.";
    case HotkeyObstacle::CommandKeyTaken:
        return withAlternative(
            "Another program holds the Super key and may keep this combination.");
    case HotkeyObstacle::NoService:
        return withAlternative("This session offers no global hotkeys.");
    case HotkeyObstacle::Declined:
        return "You declined this combination when the desktop asked.";
    }
    return {};
}

/// Collects hotkeys in the order in which they are registered: of two that are equal the first
/// works.
class ObstacleQuery {
public:
    void add(Hotkey const& hotkey, std::string owner, HotkeyNote& note)
    {
        KeyCombination const combination { hotkey.systemKeyCode(), hotkey.modifiers };
        combinations_.push_back(combination);
        notes_.push_back(&note);
        auto const [first, isFirst] = owners_.emplace(combination, std::move(owner));
        if (!isFirst)
            note.problem = first->second + " already uses this combination.";
    }

    void askTheSystem() const
    {
        auto const obstacles = platform::hotkeyObstacles(combinations_);
        auto names = platform::hotkeyNames(combinations_);
        for (std::size_t index = 0; index < notes_.size(); ++index) {
            auto& note = *notes_[index];
            note.keys = std::move(names[index]);
            if (note.problem.empty() && obstacles[index])
                note.problem = sentence(*obstacles[index]);
        }
    }

private:
    std::map<KeyCombination, std::string> owners_;
    std::vector<KeyCombination> combinations_;
    std::vector<HotkeyNote*> notes_;
};

} // namespace

HotkeyNotes hotkeyNotes(SettingsModel const& model)
{
    HotkeyNotes notes;
    ObstacleQuery query;
    query.add(model.menuHotkeyEff(), "The quick open hotkey", notes.quickOpen);
    for (auto const& [name, hotkey] : model.pinnedHotkeys()) {
        auto& note = notes.shortcuts[name];
        if (hotkey.isValid())
            query.add(hotkey, "“" + platform::isolated(name) + "”", note);
        else
            note.problem = "This key cannot start a shortcut.";
    }
    query.askTheSystem();
    return notes;
}

} // namespace quillbar
