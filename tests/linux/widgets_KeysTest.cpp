#include "linux/widgets_Fixture.h"
#include "platform/linux/widgets/KeyFilter.h"
#include "platform/view/TextField.h"

namespace quillbar::platform {
namespace {

class Keys : public ViewsFixture {
protected:
    Keys() { window->makeFirstResponder(field); }

    std::shared_ptr<TextField> field = add(std::make_shared<TextField>(), { 10, 10, 200, 30 });
};

TEST_F(Keys, ControlThatWasOffForAWhile_keepsTheFocus)
{
    field->setEnabled(false);
    EXPECT_FALSE(widgetOf(*field).hasFocus());
    field->setEnabled(true);
    EXPECT_TRUE(widgetOf(*field).hasFocus());
}

TEST_F(Keys, RecordingMonitor_takesTheMainMenusShortcutsToo)
{
    auto const offersShortcut = [&] {
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_S, Qt::ControlModifier);
        event.ignore();
        QApplication::sendEvent(&widgetOf(*field), &event);
        return !event.isAccepted();
    };
    EXPECT_TRUE(offersShortcut());
    auto const recorder = addKeyDownMonitor(
        [](KeyEvent const&) { return KeyEventResult::Consume; }, KeyMonitorReach::GrabKeyboard);
    EXPECT_FALSE(offersShortcut());
}

// A held Tab, recorded as a hotkey, must not move the focus on when recording is over.
TEST_F(Keys, RepeatsOfARecordedKey_goNowhere)
{
    auto const other = add(std::make_shared<TextField>(), { 10, 50, 200, 30 });
    constexpr quint32 tabScanCode = 15 + 8;
    auto const sendTab = [&](QEvent::Type type, bool isRepeat, quint64 time) {
        QKeyEvent event(type, Qt::Key_Tab, Qt::NoModifier, tabScanCode, 0, 0, {}, isRepeat);
        event.setTimestamp(time);
        auto* const grabber = QWidget::keyboardGrabber();
        QApplication::sendEvent(grabber ? grabber : QApplication::focusWidget(), &event);
    };
    auto const pressTab = [&](bool isRepeat) { sendTab(QEvent::KeyPress, isRepeat, 1); };
    auto recorder = addKeyDownMonitor(
        [](KeyEvent const&) { return KeyEventResult::Consume; }, KeyMonitorReach::GrabKeyboard);
    pressTab(false);
    recorder.reset();
    pressTab(true);
    // Under load Qt takes a repeat for these two.
    sendTab(QEvent::KeyRelease, false, 2);
    sendTab(QEvent::KeyPress, false, 2);
    EXPECT_EQ(window->firstResponder(), field);
    pressTab(false);
    EXPECT_EQ(window->firstResponder(), other);
    pressTab(true);
    EXPECT_EQ(window->firstResponder(), field);
}

TEST(KeyTranslation, RecordsPlacesAndDropsModifierKeys)
{
    struct Case {
        int key;
        unsigned scanCode;
        Qt::KeyboardModifiers modifiers;
        std::optional<KeyEvent> recorded;
        std::optional<KeyEvent> inWindows;
    };
    Case const cases[] {
        // What the layout writes on a key does not matter.
        { Qt::Key_Percent, 6 + 8, Qt::ShiftModifier, KeyEvent { 23, shiftKey },
            KeyEvent { 23, shiftKey } },
        { Qt::Key_Meta, 56 + 8, Qt::ShiftModifier, std::nullopt, std::nullopt },
        { Qt::Key_CapsLock, 58 + 8, Qt::NoModifier, std::nullopt, std::nullopt },
        // CapsLock made an Escape key.
        { Qt::Key_Escape, 58 + 8, Qt::NoModifier, KeyEvent { 57, 0 }, KeyEvent { key::escape, 0 } },
    };
    for (auto const& [key, scanCode, modifiers, recorded, inWindows] : cases) {
        QKeyEvent const event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
        EXPECT_EQ(translateKey(event, KeyMeaning::Place), recorded) << key;
        EXPECT_EQ(translateKey(event, KeyMeaning::Layout), inWindows) << key;
    }
}

} // namespace
} // namespace quillbar::platform
