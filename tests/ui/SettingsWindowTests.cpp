#include "ui/SettingsWindowFixture.h"

namespace quillbar {
namespace {

using namespace std::chrono_literals;
using namespace platform;
using test::click;
using test::press;

using SettingsWindow = SettingsWindowFixture;

TEST_F(SettingsWindow, Pin_showsAndHandsOverAtOnceWithPendingEdits)
{
    open(pinning({ "B" }));
    setHotkey("Hotkey for B", 17, commandKey);
    click(find("Start Quillbar at login"));
    EXPECT_TRUE(saved.empty());

    EXPECT_TRUE(click(find("C")));
    EXPECT_EQ(pinned(), (Names { "B", "C" }));
    EXPECT_EQ(available(), (Names { "A", "D" }));
    ASSERT_EQ(saved.size(), 1u);
    EXPECT_EQ(saved[0].pinned, (Names { "B", "C" }));
    EXPECT_EQ(saved[0].shortcutHotkeys->at("B"), (Hotkey { 17, commandKey }));
    EXPECT_EQ(saved[0].launchAtLogin, false);
    EXPECT_TRUE(find("Save")->isEnabled());
}

TEST_F(SettingsWindow, SavedFeedback_lastsAndKeepsSaveFromRepeating)
{
    open(pinning({}));
    EXPECT_TRUE(press(key::returnKey));
    auto const button = find("Saved ✓");
    ASSERT_TRUE(button);
    EXPECT_FALSE(click(button));
    EXPECT_FALSE(press(key::returnKey));
    headless::advance(1199ms);
    EXPECT_EQ(button->title(), "Saved ✓");
    headless::advance(1ms);
    EXPECT_EQ(button->title(), "Save");
    EXPECT_TRUE(press(key::keypadEnter));
    EXPECT_EQ(saved.size(), 2u);
    EXPECT_EQ(callCount("activateIgnoringOtherApps"), 2);
}

TEST_F(SettingsWindow, Edits_followTheirShortcutThroughAReorder)
{
    open(pinning({ "A", "B" }));
    setHotkey("Hotkey for A", 1, 0);
    test::drag(table(), 0, 2);
    click(find("Login for A"));
    EXPECT_EQ(find<HotkeyRecorder>("Hotkey for B")->visibleText(), "None");
    auto const config = save();
    EXPECT_EQ(config.shortcutHotkeys, (std::map<std::string, Hotkey> { { "A", { 1, 0 } } }));
    EXPECT_EQ(config.launchAtLoginShortcuts, (std::map<std::string, bool> { { "A", true } }));
}

TEST_F(SettingsWindow, ReusedRow_endsTheRecordingOfItsFormerShortcut)
{
    open(pinning({ "A", "B" }));
    auto const recorder = find<HotkeyRecorder>("Hotkey for A");
    click(recorder);
    test::drag(table(), 0, 2);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_FALSE(platform::isKeyboardGrabWanted());
}

TEST_F(SettingsWindow, VeryManyShortcuts_appearOverSeveralTurnsOnceEach)
{
    Names names;
    for (int number = 10000; number < 17000; ++number)
        names.push_back(std::to_string(number));
    open(pinning({}), names);
    EXPECT_LT(available().size(), names.size());
    // The list is filled anew while it is still being filled.
    window().makeFirstResponder(find(names.front()));
    EXPECT_TRUE(press(key::space));
    EXPECT_EQ(window().firstResponder(), find(names[1]));
    headless::advance(0ms);
    names.erase(names.begin());
    EXPECT_EQ(available(), names);
}

TEST_F(SettingsWindow, PinningByKeyboard_goesOnWithTheNextShortcut)
{
    open(pinning({}));
    window().makeFirstResponder(find("B"));
    EXPECT_TRUE(press(key::space));
    EXPECT_EQ(window().firstResponder(), find("C"));
    window().makeFirstResponder(find("D"));
    EXPECT_TRUE(press(key::space));
    EXPECT_EQ(window().firstResponder(), find("C"));
    EXPECT_TRUE(press(key::space));
    EXPECT_TRUE(press(key::space));
    EXPECT_EQ(available(), Names {});
    EXPECT_EQ(window().firstResponder(), find<HotkeyRecorder>("Hotkey for A"));
}

TEST_F(SettingsWindow, UnpinningByKeyboard_staysInTheRow)
{
    open(pinning({ "A", "B", "C" }));
    window().makeFirstResponder(removeButton(1));
    EXPECT_TRUE(press(key::space));
    EXPECT_EQ(window().firstResponder(), removeButton(1));
    EXPECT_TRUE(press(key::space));
    EXPECT_EQ(window().firstResponder(), removeButton(0));
    EXPECT_TRUE(press(key::space));
    EXPECT_EQ(window().firstResponder(), find("A"));
}

TEST_F(SettingsWindow, Arrows_goFromRowToRowAndMoveThatOneOfEqualNames)
{
    open(pinning({ "A", "B", "A" }));
    window().makeFirstResponder(removeButton(1));
    for (auto const& [key, modifiers, row] : { std::tuple(key::downArrow, KeyModifiers(0), 2U),
             { key::downArrow, 0, 2U }, { key::upArrow, optionKey, 1U } }) {
        EXPECT_TRUE(press(key, modifiers));
        EXPECT_EQ(window().firstResponder(), removeButton(row));
    }
    EXPECT_EQ(pinned(), (Names { "A", "A", "B" }));
}

} // namespace
} // namespace quillbar
