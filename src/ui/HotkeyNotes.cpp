#include "ui/HotkeyNotes.h"

#include "platform/HotkeyObstacles.h"
#include "platform/KeyModifiers.h"
#include "platform/Text.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace quillbar {

using platform::KeyCombination;

namespace {

/// A key with one of these is a command, whatever has the keyboard; any other is typed.
constexpr platform::KeyModifiers modifiersOfCommands
    = platform::commandKey | platform::optionKey | platform::controlKey;

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
            if (!note.problem.empty())
                continue;
            if (obstacles[index])
                note.problem = platform::hotkeyObstacleText(*obstacles[index]);
            else if ((combinations_[index].modifiers & modifiersOfCommands) == 0)
                note.problem = "No other program receives this key any more.";
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
