#include "platform/linux/views/WindowPeer.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/system/WindowActivation.h"
#include "platform/linux/views/Accessibility.h"
#include "platform/linux/views/KeyFilter.h"
#include "platform/linux/views/Memory.h"
#include "platform/linux/views/NativeView.h"
#include "platform/linux/views/X11Window.h"

#include <QBitmap>
#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace quillbar::platform {

namespace {

Qt::WindowFlags flagsFor(Window const& window)
{
    // A dialog has no use for buttons that minimise or maximise it.
    Qt::WindowFlags flags = window.kind() == WindowKind::Panel ? Qt::Tool : Qt::Dialog;
    if (window.style() == WindowStyle::Borderless)
        flags |= Qt::FramelessWindowHint;
    else
        flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
            | Qt::WindowCloseButtonHint;
    if (window.level() == WindowLevel::Floating)
        flags |= Qt::WindowStaysOnTopHint;
    if (!window.canBecomeKeyWindow())
        flags |= Qt::WindowDoesNotAcceptFocus;
    return flags;
}

} // namespace

NativeWindow::NativeWindow(Window& window)
    : QWidget(nullptr, flagsFor(window))
    , portable_(&window)
{
    KeyFilter::install();
    installAccessibility();
    setAttribute(Qt::WA_QuitOnClose, false);
    setFixedSize(
        roundedRect({ 0, 0, window.contentSize().width, window.contentSize().height }).size());
    if (window.background() == WindowBackground::Clear && isTranslucencyPossible())
        setAttribute(Qt::WA_TranslucentBackground);
    if (window.kind() == WindowKind::Panel)
        skipTaskbar(*this);
    if (window.style() != WindowStyle::Borderless)
        requestFrameMargins(*this);
}

void NativeWindow::release()
{
    portable_ = nullptr;
    hide();
    connect(this, &QObject::destroyed, qApp, giveBackMemory, Qt::QueuedConnection);
    deleteLater();
}

void NativeWindow::sync()
{
    if (auto const flags = flagsFor(*portable_); flags != windowFlags()) {
        // Changing the flags hides the window; the next lines show it again.
        setWindowFlags(flags);
    }
    setWindowTitle(toQString(portable_->title()));
    // Put elsewhere by the window manager first, it would be seen to jump.
    if (portable_->isVisible() && !isVisible())
        centerOnScreen();
    setVisible(portable_->isVisible());
}

void NativeWindow::centerOnScreen()
{
    auto const* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    // A window that is new on the screen is not put elsewhere when its frame is known at last: that
    // would be seen as a jump.
    bool const hasFrame = portable_->style() != WindowStyle::Borderless;
    auto const margins = hasFrame ? frameMargins(*this) : QMargins();
    auto place = geometry() + margins;
    auto const available = screen->availableGeometry();
    place.moveCenter(available.center());
    // On a screen that is too low the title bar matters more than the end.
    place.moveTop(std::max(place.top(), available.top()));
    if (auto const inside = place - margins; inside != geometry())
        setGeometry(inside);
}

void NativeWindow::bringForward()
{
    isMouseUsed_ = false;
    if (!portable_->canBecomeKeyWindow() || hasOrAwaitsFocus(*windowHandle()))
        raise();
    else
        platform::activateWindow(*windowHandle());
}

void NativeWindow::focus(QWidget& widget)
{
    if (!isMouseUsed_)
        setAttribute(Qt::WA_KeyboardFocusChange);
    widget.setFocus();
}

void NativeWindow::noteMouse()
{
    isMouseUsed_ = true;
    setAttribute(Qt::WA_KeyboardFocusChange, false);
    if (auto* const focused = focusWidget())
        focused->update();
}

void NativeWindow::setGround(QPainterPath const& ground)
{
    if (portable_->background() != WindowBackground::Clear
        || testAttribute(Qt::WA_TranslucentBackground))
        return;
    QBitmap mask(size());
    mask.clear();
    QPainter(&mask).fillPath(ground, Qt::color1);
    setMask(mask);
}

bool NativeWindow::event(QEvent* event)
{
    if (portable_ && event->type() == QEvent::WindowActivate)
        portable_->userChangedKey(true);
    if (portable_ && event->type() == QEvent::WindowDeactivate)
        portable_->userChangedKey(false);
    bool const result = QWidget::event(event);
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate)
        syncKeyboardGrab();
    return result;
}

void NativeWindow::closeEvent(QCloseEvent* event)
{
    // Closing hides the window; Qt must not do more.
    event->ignore();
    if (portable_)
        portable_->userClosed();
}

void NativeWindow::mousePressEvent(QMouseEvent* event)
{
    if (portable_ && portable_->isMovableByBackground() && event->button() == Qt::LeftButton)
        windowHandle()->startSystemMove();
}

// The portable window moves the focus; where Qt wants to, a widget that had it went away.
bool NativeWindow::focusNextPrevChild(bool)
{
    setFocus();
    return true;
}

NativeWindow* nativeWindowOf(QWidget const* widget)
{
    return widget ? dynamic_cast<NativeWindow*>(widget->window()) : nullptr;
}

NativeWindow* createNativeWindow(Window& window)
{
    return new NativeWindow(window);
}

void NativeWindowDeleter::operator()(NativeWindow* native) const
{
    native->release();
}

void syncWindow(Window const& window)
{
    window.native()->sync();
}

void syncFirstResponder(Window const& window)
{
    auto const view = window.firstResponder();
    auto& widget = view && view->native() ? view->native()->widget() : *window.native();
    window.native()->focus(widget);
}

void centerNativeWindow(Window const& window)
{
    window.native()->centerOnScreen();
}

void raiseNativeWindow(Window const& window)
{
    window.native()->bringForward();
}

} // namespace quillbar::platform
