#include "ui/SettingsWindowFixture.h"

namespace quillbar {
namespace {

using namespace std::chrono_literals;
using namespace platform;
using test::click;

using SettingsHotkeyMarks = SettingsWindowFixture;

TEST_F(SettingsHotkeyMarks, OneHotkeyForTwo_marksWhatComesLaterWhenHotkeysAreRegistered)
{
    auto config = pinning({ "C", "B", "A" });
    config.shortcutHotkeys = { { { "A", { 8, 0x200 } }, { "B", { 8, 0x200 } },
        { "C", { 17, 0x900 } }, { "D", { 8, 0 } } } };
    open(config);
    constexpr auto* lacksModifiers = "No other program receives this key any more.";
    EXPECT_EQ(problem("Hotkey for A"), lacksModifiers);
    EXPECT_EQ(problem("Hotkey for B"), "“A” already uses this combination.");
    EXPECT_EQ(problem("Hotkey for C"), "The quick open hotkey already uses this combination.");
    setHotkey("Hotkey for A", 9, controlKey);
    EXPECT_EQ(problem("Hotkey for A"), "");
    EXPECT_EQ(problem("Hotkey for B"), lacksModifiers);
    setHotkey("Quick open hotkey", 10, 0);
    EXPECT_EQ(problem("Hotkey for C"), "");
}

TEST_F(SettingsHotkeyMarks, RecorderWithoutItsHotkey_isNotMarked)
{
    record.hotkeyObstacles[{ 17, 0x900 }] = HotkeyObstacle::Taken;
    open(pinning({}));
    auto const recorder = find<HotkeyRecorder>("Quick open hotkey");
    EXPECT_TRUE(recorder->image());
    click(recorder);
    EXPECT_EQ(recorder->toolTip(), "Press the new keys, or click again to leave.");
    EXPECT_EQ(recorder->accessibilityDescription(), "Press keys…");
    click(recorder);
    headless::tellHotkeyObstacleObservers();
    EXPECT_FALSE(recorder->image());
    EXPECT_EQ(recorder->attributedTitle()->text, "None");
    EXPECT_EQ(recorder->toolTip(), "keys 2304+17");
}

} // namespace
} // namespace quillbar
