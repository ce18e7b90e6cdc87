#include "ui/SettingsWindowFixture.h"

namespace quillbar {
namespace {

using namespace std::chrono_literals;
using namespace platform;
using headless::click;

using SettingsHotkeyMarks = SettingsWindowFixture;

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

TEST_F(SettingsHotkeyMarks, Marks_areAskedForAnew)
{
    open(pinning({ "A" }));
    KeyCombination const quickOpen { 17, 0x900 };
    window().userChangedKey(false);
    std::function<void()> const causes[] = { [] { headless::tellHotkeyObstacleObservers(); },
        [this] { window().userChangedKey(true); }, [this] { save(); }, [this] { click(find("B")); },
        [this] { click(removeButton(0)); } };
    std::optional<HotkeyObstacle> obstacle;
    for (auto const& cause : causes) {
        obstacle = obstacle ? std::nullopt : std::optional(HotkeyObstacle::Taken);
        headless::setHotkeyObstacle(quickOpen, obstacle);
        cause();
        EXPECT_EQ(problem("Quick open hotkey").empty(), !obstacle);
    }
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
