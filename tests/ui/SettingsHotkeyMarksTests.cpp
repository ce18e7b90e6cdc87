#include "ui/SettingsWindowFixture.h"

namespace quillbar {
namespace {

using namespace std::chrono_literals;
using namespace platform;
using test::click;

using SettingsHotkeyMarks = SettingsWindowFixture;

TEST_F(SettingsHotkeyMarks, HotkeyTheRecorderShows_isNamedForEyesAndEars)
{
    record.hotkeyObstacles[{ 7, controlKey }] = HotkeyObstacle::NoService;
    auto config = pinning({ "A", "B", "C" });
    config.shortcutHotkeys = { { { "A", { 7, controlKey } }, { "B", { 8, controlKey } } } };
    open(config);
    auto const recorder = find<HotkeyRecorder>("Hotkey for A");
    EXPECT_EQ(recorder->toolTip(), "keys 4096+7\nIt does not work.\nUse the menu instead.");
    EXPECT_EQ(recorder->accessibilityDescription(),
        "⌃·7, keys 4096+7. It does not work. Use the menu instead.");
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
    setHotkey("Hotkey for A", 9, 0);
    EXPECT_EQ(problem("Hotkey for B"), "");
    setHotkey("Quick open hotkey", 10, 0);
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
    bool isTaken = false;
    for (auto const& cause : causes) {
        isTaken = !isTaken;
        record.hotkeyObstacles.clear();
        if (isTaken)
            record.hotkeyObstacles[quickOpen] = HotkeyObstacle::Taken;
        cause();
        EXPECT_EQ(problem("Quick open hotkey").empty(), !isTaken);
    }
}

TEST_F(SettingsHotkeyMarks, RecorderWithoutItsHotkey_isNotMarked)
{
    record.hotkeyObstacles[{ 17, 0x900 }] = HotkeyObstacle::Taken;
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
