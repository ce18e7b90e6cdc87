#include "platform/linux/views/KeyFilter.h"

#include "platform/linux/UserAction.h"
#include "platform/linux/views/KeyTranslation.h"
#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/WindowPeer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>

#include <utility>

namespace quillbar::platform {

namespace {

void focusChanged(QWidget* /*old*/, QWidget* now)
{
    auto* const window = nativeWindowOf(now);
    auto* const native = now ? nativeViewOf(now) : nullptr;
    if (window && window->portable() && native && native->portable)
        window->portable()->userFocused(native->portable->shared_from_this());
}

// Where a press arrives first; it is filtered there and not again on its way up. Under Wayland a
// new window is typed into a moment before Qt takes it for the active one.
bool isKeyTarget(QObject const& watched)
{
    if (!watched.isWidgetType())
        return false;
    if (auto const* const grabber = QWidget::keyboardGrabber())
        return &watched == grabber;
    auto const* const window = static_cast<QWidget const&>(watched).window();
    auto const* const focused = window->focusWidget();
    return &watched == (focused ? focused : window);
}

// True when the widget got the event as it is meant instead.
bool deliverWithoutHotkeyModifiers(QObject& watched, QEvent& event)
{
    bool const isKey = event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
    // Only what a person did tells which keys are down.
    if (!isKey || lastUserAction().heldModifiers == 0 || !event.spontaneous()
        || !isKeyTarget(watched))
        return false;
    auto const meant = withoutHotkeyModifiers(static_cast<QKeyEvent&>(event));
    if (!meant)
        return false;
    QCoreApplication::sendEvent(&watched, meant.get());
    return true;
}

bool isCloseCommand(QKeyEvent const& event)
{
    return event.key() == Qt::Key_Escape
        || (event.key() == Qt::Key_W && event.modifiers() == Qt::ControlModifier);
}

// A key that is held down does these things once.
bool isRepeatedCommand(QKeyEvent const& event)
{
    return event.isAutoRepeat()
        && (isCloseCommand(event) || event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter);
}

} // namespace

void KeyFilter::install()
{
    static QPointer<KeyFilter> installed;
    if (!installed)
        installed = new KeyFilter(qApp);
}

KeyFilter::KeyFilter(QObject* application)
    : QObject(application)
{
    application->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, focusChanged);
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && isKeyboardGrabWanted()) {
        event->accept();
        return true;
    }
    if (deliverWithoutHotkeyModifiers(*watched, *event) || hasClosedPopUp(*event))
        return true;
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        if (auto* const window = nativeWindowOf(static_cast<QWidget*>(watched)))
            window->noteMouse();
    }
    if (event->type() != QEvent::KeyPress || QApplication::activePopupWidget()
        || !isKeyTarget(*watched))
        return false;
    return keyPressed(static_cast<QWidget&>(*watched), static_cast<QKeyEvent&>(*event));
}

// A pop-up that a key closes goes before the press itself arrives, which under Wayland the window
// then gets: Escape would close that as well.
bool KeyFilter::hasClosedPopUp(QEvent const& event)
{
    bool const isPopUpOpen = QApplication::activePopupWidget() != nullptr;
    if (event.type() == QEvent::ShortcutOverride && isPopUpOpen)
        popUpKeyTime_ = static_cast<QKeyEvent const&>(event).timestamp();
    if (event.type() != QEvent::KeyPress)
        return false;
    auto const time = std::exchange(popUpKeyTime_, std::nullopt);
    return !isPopUpOpen && time == static_cast<QKeyEvent const&>(event).timestamp();
}

bool KeyFilter::keyPressed(QWidget& target, QKeyEvent const& event)
{
    QPointer<NativeWindow> const window = nativeWindowOf(&target);
    bool const isRecording = isKeyboardGrabWanted();
    auto const pressed = translateKey(event, isRecording ? KeyMeaning::Place : KeyMeaning::Layout);
    if (!window || !window->portable() || !pressed)
        return false;
    if (!event.isAutoRepeat())
        recordedScanCode_ = isRecording ? event.nativeScanCode() : 0;
    else if (isRecording || event.nativeScanCode() == recordedScanCode_)
        return true;
    if (isRepeatedCommand(event))
        return true;
    window->setAttribute(Qt::WA_KeyboardFocusChange);
    if (runKeyDownMonitors(*pressed) == KeyEventResult::Consume)
        return true;
    if (!window || !window->portable())
        return true;
    if (window->portable()->userPressedKey(*pressed) == KeyEventResult::Consume)
        return true;
    if (!window || !window->portable() || !isCloseCommand(event)
        || window->portable()->style() != WindowStyle::TitledClosable)
        return false;
    window->portable()->userClosed();
    return true;
}

void syncKeyboardGrab()
{
    auto* const holder = QWidget::keyboardGrabber();
    auto* const active = nativeWindowOf(QApplication::activeWindow());
    QWidget* const wanted = isKeyboardGrabWanted() ? active : nullptr;
    if (holder == wanted)
        return;
    if (holder && nativeWindowOf(holder) == holder)
        holder->releaseKeyboard();
    if (wanted)
        wanted->grabKeyboard();
}

} // namespace quillbar::platform
