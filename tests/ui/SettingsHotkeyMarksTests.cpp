#include "ui/SettingsWindowFixture.h"

namespace quillbar {
namespace {

using namespace std::chrono_literals;
using namespace platform;
using headless::click;

using SettingsHotkeyMarks = SettingsWindowFixture;

TEST_F(SettingsHotkeyMarks, HotkeyThatCannotWork_isMarkedWithTheReason)
{
    using enum HotkeyObstacle;
    for (auto const& [obstacle, reason] : std::map<HotkeyObstacle, std::string> {
             { Taken, "Another program already uses this combination." },
             { NoSuchKey, "Your keyboard has no such key." },
             { CommandKeyTaken,
                 "Another program holds the Super key and may keep this combination.\n"
                 "Use the menu instead." },
             { NoService, "This session offers no global hotkeys.\nUse the menu instead." },
             { Declined, "You declined this combination when the desktop asked." },
         }) {
        headless::setHotkeyObstacle({ 17, 0x900 }, obstacle);
        open(pinning({}));
        EXPECT_EQ(problem("Quick open hotkey"), reason);
    }
}

TEST_F(SettingsHotkeyMarks, HotkeyTheRecorderShows_isNamedForEyesAndEars)
{
    headless::setHotkeyObstacle({ 7, controlKey }, HotkeyObstacle::NoService);
    auto config = pinning({ "A", "B", "C" });
    config.shortcutHotkeys = { { { "A", { 7, controlKey } }, { "B", { 8, controlKey } } } };
    open(config);
    auto const recorder = find<HotkeyRecorder>("Hotkey for A");
    EXPECT_EQ(recorder->toolTip(),
        "keys 4096+7\nThis session offers no global hotkeys.\nUse the menu instead.");
    EXPECT_EQ(recorder->accessibilityDescription(),
        "⌃·7, keys 4096+7. This session offers no global hotkeys. Use the menu instead.");
    EXPECT_EQ(find<HotkeyRecorder>("Hotkey for B")->toolTip(), "keys 4096+8");
    EXPECT_EQ(find<HotkeyRecorder>("Hotkey for C")->toolTip(), "");
    EXPECT_EQ(find<HotkeyRecorder>("Hotkey for C")->accessibilityDescription(), "None");
}

TEST_F(SettingsHotkeyMarks, OneHotkeyForTwo_marksWhatComesLaterWhenHotkeysAreRegistered)
{
    auto config = pinning({ "C", "B", "A" });
    config.shortcutHotkeys
        = { { { "A", { 8, 0 } }, { "B", { 8, 0 } }, { "C", { 17, 0x900 } }, { "D", { 8, 0 } } } };
    open(config);
    EXPECT_EQ(problem("Hotkey for A"), "");
    EXPECT_EQ(problem("Hotkey for B"), "“A” already uses this combination.");
    EXPECT_EQ(problem("Hotkey for C"), "The quick open hotkey already uses this combination.");
    record("Hotkey for A", 9, 0);
    EXPECT_EQ(problem("Hotkey for B"), "");
    record("Quick open hotkey", 10, 0);
    EXPECT_EQ(problem("Hotkey for C"), "");
}

TEST_F(SettingsHotkeyMarks, KeyThatNoShortcutCanHave_isMarked)
{
    open(pinning({ "A" }));
    record("Hotkey for A", 0, commandKey);
    EXPECT_EQ(problem("Hotkey for A"), "This key cannot start a shortcut.");
    record("Quick open hotkey", 0, commandKey);
    EXPECT_EQ(problem("Quick open hotkey"), "");
}

TEST_F(SettingsHotkeyMarks, Marks_followWhatTheSystemSays)
{
    open(pinning({ "A" }));
    auto const expectProblem
        = [this](bool isProblem) { EXPECT_EQ(!problem("Quick open hotkey").empty(), isProblem); };
    KeyCombination const quickOpen { 17, 0x900 };
    headless::setHotkeyObstacle(quickOpen, HotkeyObstacle::Taken);
    expectProblem(false);
    headless::tellHotkeyObstacleObservers();
    expectProblem(true);

    headless::setHotkeyObstacle(quickOpen, std::nullopt);
    window().userChangedKey(false);
    expectProblem(true);
    window().userChangedKey(true);
    expectProblem(false);

    headless::setHotkeyObstacle(quickOpen, HotkeyObstacle::Taken);
    save();
    expectProblem(true);
    headless::setHotkeyObstacle(quickOpen, std::nullopt);
    click(find("B"));
    expectProblem(false);
    headless::setHotkeyObstacle(quickOpen, HotkeyObstacle::Taken);
    click(removeButton(0));
    expectProblem(true);
}

TEST_F(SettingsHotkeyMarks, RecorderWithoutItsHotkey_isNotMarked)
{
    headless::setHotkeyObstacle({ 17, 0x900 }, HotkeyObstacle::Taken);
    open(pinning({}));
    auto const recorder = find<HotkeyRecorder>("Quick open hotkey");
    EXPECT_TRUE(recorder->image());
    click(recorder);
    EXPECT_EQ(recorder->toolTip() + recorder->accessibilityDescription(), "Press keys…");
    click(recorder);
    headless::tellHotkeyObstacleObservers();
    EXPECT_FALSE(recorder->image());
    EXPECT_EQ(recorder->toolTip() + recorder->accessibilityDescription(), "None");
}

} // namespace
} // namespace quillbar
