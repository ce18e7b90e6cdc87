#include "platform/SystemHotkeys.h"
#include "platform/headless/Headless.h"
#include "platform/headless/Person.h"
#include "platform/headless/Windows.h"
#include "platform/view/ScrollView.h"
#include "ui/SettingsWindowController.h"

#include <gtest/gtest.h>

namespace quillbar {
namespace {

using namespace std::chrono_literals;
using namespace platform;
using headless::choose;
using headless::click;
using headless::findAll;
using headless::findOnly;
using headless::press;

using Names = std::vector<std::string>;

class SettingsWindow : public testing::Test {
protected:
    ~SettingsWindow() override
    {
        controller.reset();
        headless::reset();
    }

    void open(Config config, Names const& listed = { "A", "B", "C", "D" })
    {
        std::string listing;
        for (auto const& name : listed)
            listing += name + "\n";
        headless::scriptChild({ QUILLBAR_SHORTCUTS_TOOL, "list" }, { .output = listing });
        controller = makeController<SettingsWindowController>(
            std::move(config), [this](Config const& record) { saved.push_back(record); });
        controller->window().addWillCloseObserver([this] { controller.reset(); });
        controller->showWindow();
    }

    static Config pinning(Names pinned)
    {
        Config config;
        config.pinned = std::move(pinned);
        return config;
    }

    [[nodiscard]] Window& window() const { return controller->window(); }
    template <typename Kind = Button> [[nodiscard]] auto find(std::string_view text) const
    {
        return headless::find<Kind>(window(), text);
    }
    [[nodiscard]] auto table() const { return findOnly<TableView>(window()); }

    [[nodiscard]] Names pinned() const
    {
        Names names;
        for (auto const& label : findAll<Label>(*table()))
            names.push_back(label->text());
        return names;
    }
    [[nodiscard]] Names available() const
    {
        Names names;
        for (auto const& scrollView : findAll<ScrollView>(window())) {
            if (scrollView->documentView()->kind() != ViewKind::View)
                continue;
            for (auto const& checkbox : findAll<Button>(*scrollView->documentView()))
                names.push_back(checkbox->title());
        }
        return names;
    }
    [[nodiscard]] auto removeButton(std::size_t row) const
    {
        return headless::find<Button>(*table()->viewAtRow(row), "Remove");
    }
    /// Why the recorder is marked; empty when it is not.
    [[nodiscard]] std::string problem(std::string_view name) const
    {
        auto const recorder = find<HotkeyRecorder>(name);
        auto const& toolTip = recorder->toolTip();
        return recorder->image() ? toolTip.substr(toolTip.find('\n') + 1) : std::string();
    }
    void record(std::string_view recorder, std::uint32_t keyCode, KeyModifiers modifiers) const
    {
        EXPECT_TRUE(click(find<HotkeyRecorder>(recorder)));
        EXPECT_TRUE(press(keyCode, modifiers));
    }
    Config save()
    {
        EXPECT_TRUE(click(find("Save")));
        headless::advance(1200ms);
        return saved.empty() ? Config() : saved.back();
    }

    std::shared_ptr<SettingsWindowController> controller;
    std::vector<Config> saved;
};

TEST_F(SettingsWindow, Pin_showsAndHandsOverAtOnceWithPendingEdits)
{
    open(pinning({ "B" }));
    record("Hotkey for B", 17, commandKey);
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

TEST_F(SettingsWindow, Unpin_showsAndHandsOverAtOnceWithoutTheHotkey)
{
    auto config = pinning({ "D", "B" });
    config.shortcutHotkeys = { { { "D", { 17, 0x900 } } } };
    open(config);
    EXPECT_TRUE(click(removeButton(0)));
    EXPECT_EQ(pinned(), (Names { "B" }));
    EXPECT_EQ(available(), (Names { "A", "C", "D" }));
    ASSERT_EQ(saved.size(), 1u);
    EXPECT_EQ(saved[0].pinned, (Names { "B" }));

    click(find("D"));
    EXPECT_EQ(find<HotkeyRecorder>("Hotkey for D")->visibleText(), "None");
    EXPECT_TRUE(saved[1].shortcutHotkeys->empty());
}

TEST_F(SettingsWindow, Save_handsOverEveryEdit)
{
    auto config = pinning({ "A", "B" });
    config.launchAtLoginShortcuts = { { { "B", true } } };
    open(config);
    record("Quick open hotkey", 49, optionKey);
    record("Hotkey for A", 53, 0);
    click(find("Login for A"));
    click(find("Login for B"));
    choose(find<PopUpButton>("Section for B"), "Work");
    choose(find<PopUpButton>("Menu bar icon"), "Moon & Stars");
    EXPECT_TRUE(saved.empty());

    auto expected = config;
    expected.iconSymbol = "moon.stars.fill";
    expected.launchAtLogin = true;
    expected.menuHotkey = Hotkey { 49, optionKey };
    expected.shortcutHotkeys = { { { "A", { 53, 0 } } } };
    expected.launchAtLoginShortcuts = { { { "A", true }, { "B", false } } };
    expected.groupOf = { { { "B", "Work" } } };
    EXPECT_EQ(save(), expected);
    EXPECT_EQ(saved.size(), 1u);
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
    EXPECT_EQ(headless::activationCount(), 2);
}

TEST_F(SettingsWindow, ClosedWhileItShowsSaved_livesUntilTheFeedbackEnds)
{
    open(pinning({}));
    std::weak_ptr<SettingsWindowController> const weak = controller;
    click(find("Save"));
    click(find("Close"));
    EXPECT_EQ(controller, nullptr);
    EXPECT_FALSE(weak.expired());
    headless::advance(1200ms);
    EXPECT_TRUE(weak.expired());
}

TEST_F(SettingsWindow, Close_discardsAndActivates)
{
    open(pinning({ "A" }));
    record("Hotkey for A", 17, 0);
    EXPECT_TRUE(click(find("Close")));
    EXPECT_EQ(controller, nullptr);
    EXPECT_TRUE(saved.empty());
    EXPECT_TRUE(headless::windows().empty());
    EXPECT_EQ(headless::activationCount(), 1);
}

TEST_F(SettingsWindow, Drag_reordersAndWaitsForSave)
{
    open(pinning({ "A", "B", "C" }));
    EXPECT_TRUE(headless::drag(table(), 0, 3));
    EXPECT_EQ(pinned(), (Names { "B", "C", "A" }));
    EXPECT_TRUE(saved.empty());
    EXPECT_EQ(save().pinned, (Names { "B", "C", "A" }));

    click(removeButton(1));
    EXPECT_EQ(pinned(), (Names { "B", "A" }));
}

TEST_F(SettingsWindow, Edits_followTheirShortcutThroughAReorder)
{
    open(pinning({ "A", "B" }));
    record("Hotkey for A", 1, 0);
    headless::drag(table(), 0, 2);
    click(find("Login for A"));
    EXPECT_EQ(find<HotkeyRecorder>("Hotkey for B")->visibleText(), "None");
    auto const record = save();
    EXPECT_EQ(record.shortcutHotkeys, (std::map<std::string, Hotkey> { { "A", { 1, 0 } } }));
    EXPECT_EQ(record.launchAtLoginShortcuts, (std::map<std::string, bool> { { "A", true } }));
}

TEST_F(SettingsWindow, SecondClickOnARecorder_leavesTheStoredHotkey)
{
    auto config = pinning({ "A" });
    config.shortcutHotkeys = { { { "A", { 17, 0x900 } } } };
    open(config);
    auto const recorder = find<HotkeyRecorder>("Hotkey for A");
    EXPECT_EQ(recorder->visibleText(), "⌘⌥·17");
    click(recorder);
    click(recorder);
    EXPECT_EQ(recorder->visibleText(), "None");
    EXPECT_EQ(save().shortcutHotkeys->at("A"), (Hotkey { 17, 0x900 }));
}

TEST_F(SettingsWindow, CustomSection_comesFromThePrompt)
{
    struct {
        char const* before;
        AlertAnswer answer;
        char const* asked;
        char const* shown;
    } const cases[] = {
        { "Work", { .button = 0, .text = " Games\n" }, "", "Games" },
        { "Games", { .button = 0, .text = "Evening" }, "Games", "Evening" },
        { "Games", { .button = 1, .text = "Evening" }, "Games", "Games" },
        { "Work", { .button = 1, .text = "" }, "", "Work" },
        { "Games", { .button = 0, .text = "  " }, "Games", "None" },
    };
    for (auto const& [before, answer, asked, shown] : cases) {
        auto config = pinning({ "A" });
        config.groupOf = { { { "A", before } } };
        open(config);
        headless::queueAlertAnswer(answer);
        EXPECT_TRUE(choose(find<PopUpButton>("Section for A"), "Custom…"));
        EXPECT_EQ(headless::shownAlerts().back().accessory->text, asked);
        EXPECT_EQ(find<PopUpButton>("Section for A")->visibleText(), shown);
    }
    EXPECT_EQ(
        headless::shownAlerts().front().informativeText, "Name a section for “A” in the menu bar.");
    EXPECT_TRUE(save().groupOf->empty());
}

TEST_F(SettingsWindow, CustomIcon_isSavedWhicheverButtonClosesThePromptUnlessBlank)
{
    open(pinning({}));
    auto const popUp = find<PopUpButton>("Menu bar icon");
    choose(popUp, "Bell");
    headless::queueAlertAnswer({ .button = 0, .text = " " });
    EXPECT_TRUE(choose(popUp, "Custom Icon…"));
    EXPECT_EQ(popUp->visibleText(), "Heart");
    headless::queueAlertAnswer({ .button = 1, .text = " eyeglasses " });
    choose(popUp, "Custom Icon…");
    EXPECT_EQ(popUp->visibleText(), "Custom");
    EXPECT_EQ(save().iconSymbol, "eyeglasses");
}

TEST_F(SettingsWindow, FocusAvailableList_takesItsFirstShortcut)
{
    open(pinning({ "A" }));
    controller->focusAvailableList();
    EXPECT_EQ(window().firstResponder(), find("B"));
    open(pinning({ "A" }), { "A" });
    controller->focusAvailableList();
    EXPECT_EQ(window().firstResponder(), nullptr);
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

TEST_F(SettingsWindow, HotkeyThatCannotWork_isMarkedWithTheReason)
{
    using enum HotkeyObstacle;
    for (auto const& [obstacle, reason] : std::map<HotkeyObstacle, std::string> {
             { Taken, "Another program already uses this combination." },
             { NoSuchKey, "Your keyboard has no such key." },
             { CommandKeyTaken,
                 "Another program holds the Super key and may keep this combination." },
             { NoService, "This session offers no global hotkeys.\nUse the menu instead." },
             { Declined, "You declined this combination when the desktop asked." },
         }) {
        headless::setHotkeyObstacle({ 17, 0x900 }, obstacle);
        open(pinning({}));
        EXPECT_EQ(problem("Quick open hotkey"), reason);
    }
}

TEST_F(SettingsWindow, HotkeyTheRecorderShows_isNamedForEyesAndEars)
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

TEST_F(SettingsWindow, OneHotkeyForTwo_marksWhatComesLaterWhenHotkeysAreRegistered)
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

TEST_F(SettingsWindow, KeyThatNoShortcutCanHave_isMarked)
{
    open(pinning({ "A" }));
    record("Hotkey for A", 0, commandKey);
    EXPECT_EQ(problem("Hotkey for A"), "This key cannot start a shortcut.");
    record("Quick open hotkey", 0, commandKey);
    EXPECT_EQ(problem("Quick open hotkey"), "");
}

TEST_F(SettingsWindow, Marks_followWhatTheSystemSays)
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

TEST_F(SettingsWindow, RecorderWithoutItsHotkey_isNotMarked)
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

TEST_F(SettingsWindow, Controls_doNothingOnceTheControllerIsGone)
{
    open(pinning({ "A" }));
    auto const keptWindow = std::static_pointer_cast<Window>(window().shared_from_this());
    auto const keptTable = table();
    auto const checkbox = find("B");
    auto const remove = removeButton(0);
    controller.reset();
    checkbox->userClicked();
    remove->userClicked();
    EXPECT_FALSE(keptTable->userDropped("A", 0));
    keptTable->reloadData();
    EXPECT_EQ(keptTable->numberOfRows(), 0u);
    EXPECT_TRUE(saved.empty());
}

} // namespace
} // namespace quillbar
