#include "linux/views_Fixture.h"
#include "platform/linux/views/KeyTranslation.h"
#include "platform/view/TextField.h"

namespace quillbar::platform {
namespace {

class Keys : public ViewsFixture {
protected:
    Keys() { window->makeFirstResponder(field); }

    std::shared_ptr<TextField> field = add(std::make_shared<TextField>(), { 10, 10, 200, 30 });
};

TEST_F(Keys, FocusByMouse_isKnownToTheWindow)
{
    auto const other = add(std::make_shared<TextField>(), { 10, 50, 200, 30 });
    QTest::mouseClick(&widgetOf(*other), Qt::LeftButton);
    EXPECT_EQ(window->firstResponder(), other);
}

TEST_F(Keys, ControlThatWasOffForAWhile_keepsTheFocus)
{
    field->setEnabled(false);
    EXPECT_FALSE(widgetOf(*field).hasFocus());
    field->setEnabled(true);
    EXPECT_TRUE(widgetOf(*field).hasFocus());
}

TEST_F(Keys, RecordingMonitor_holdsTheKeyboardAndTakesShortcuts)
{
    auto const offersShortcut = [&] {
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_S, Qt::ControlModifier);
        event.ignore();
        QApplication::sendEvent(&widgetOf(*field), &event);
        return !event.isAccepted();
    };
    EXPECT_TRUE(offersShortcut());
    auto recorder = addKeyDownMonitor(
        [](KeyEvent const&) { return KeyEventResult::Consume; }, KeyMonitorReach::GrabKeyboard);
    EXPECT_EQ(QWidget::keyboardGrabber(), widgetOf(*field).window());
    EXPECT_FALSE(offersShortcut());
    recorder.reset();
    EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
    recorder = addKeyDownMonitor(
        [](KeyEvent const&) { return KeyEventResult::Consume; }, KeyMonitorReach::GrabKeyboard);
    window->orderOut();
    settle();
    EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
}

TEST(KeyTranslation, GoesByTheScanCodeAndDropsModifierKeys)
{
    struct Case {
        int key;
        unsigned scanCode;
        Qt::KeyboardModifiers modifiers;
        std::optional<KeyEvent> expected;
    };
    Case const cases[] {
        // What the layout writes on the key does not matter.
        { Qt::Key_Z, 21 + 8, Qt::NoModifier, KeyEvent { 16, 0 } },
        { Qt::Key_Percent, 6 + 8, Qt::ShiftModifier, KeyEvent { 23, shiftKey } },
        { Qt::Key_T, 20 + 8, Qt::MetaModifier | Qt::AltModifier,
            KeyEvent { 17, commandKey | optionKey } },
        { Qt::Key_Enter, 96 + 8, Qt::KeypadModifier, KeyEvent { key::keypadEnter, 0 } },
        { Qt::Key_Meta, 56 + 8, Qt::ShiftModifier, std::nullopt },
        { Qt::Key_CapsLock, 58 + 8, Qt::NoModifier, std::nullopt },
        { Qt::Key_Escape, 0, Qt::ControlModifier, KeyEvent { key::escape, controlKey } },
        { Qt::Key_unknown, 0, Qt::NoModifier, std::nullopt },
    };
    for (auto const& [key, scanCode, modifiers, expected] : cases) {
        QKeyEvent const event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
        EXPECT_EQ(translateKey(event), expected) << key;
    }
}

} // namespace
} // namespace quillbar::platform
