#include "platform/linux/views/KeyFilter.h"

#include "platform/linux/HeldModifiers.h"
#include "platform/linux/views/HotkeyModifiers.h"
#include "platform/linux/views/KeyTranslation.h"
#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/WindowPeer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>

namespace quillbar::platform {

namespace {

void focusChanged(QWidget* /*old*/, QWidget* now)
{
    auto* const window = nativeWindowOf(now);
    auto* const native = now ? nativeViewOf(now) : nullptr;
    if (window && window->portable() && native && native->portable)
        window->portable()->userFocused(native->portable->shared_from_this());
}

// Where a press arrives first; it is filtered there and not again on its way up.
QWidget* keyTarget()
{
    if (auto* const grabber = QWidget::keyboardGrabber())
        return grabber;
    auto* const focused = QApplication::focusWidget();
    return focused ? focused : QApplication::activeWindow();
}

// True when the widget got the event as it is meant instead.
bool deliverWithoutHotkeyModifiers(QObject& watched, QEvent& event)
{
    bool const isKey = event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
    // Only what a person did tells which keys are down.
    if (!isKey || heldModifiers() == 0 || !event.spontaneous() || &watched != keyTarget())
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
    if (deliverWithoutHotkeyModifiers(*watched, *event))
        return true;
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        if (auto* const window = nativeWindowOf(static_cast<QWidget*>(watched)))
            window->noteMouse();
    }
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()
        || QApplication::activePopupWidget() || watched != keyTarget())
        return false;
    return keyPressed(static_cast<QWidget&>(*watched), static_cast<QKeyEvent&>(*event));
}

bool KeyFilter::keyPressed(QWidget& target, QKeyEvent const& event)
{
    QPointer<NativeWindow> const window = nativeWindowOf(&target);
    auto const pressed = translateKey(event);
    if (!window || !window->portable() || !pressed)
        return false;
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
