#include "platform/linux/widgets/WindowPeer.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/input/UserAction.h"
#include "platform/linux/widgets/ApplicationIcon.h"
#include "platform/linux/widgets/KeyFilter.h"
#include "platform/linux/widgets/Memory.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/x11/WindowActivation.h"
#include "platform/linux/x11/X11Window.h"

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
    , portable(&window)
    , scroller_(new OverlayScroller(*this, [this](double offset) { scrollTo(offset); }))
{
    installKeyFilter();
    installAccessibility();
    setAttribute(Qt::WA_QuitOnClose, false);
    if (window.background() == WindowBackground::Clear && isTranslucencyPossible())
        setAttribute(Qt::WA_TranslucentBackground);
    if (window.kind() == WindowKind::Panel)
        skipTaskbar(*this);
    if (window.style() != WindowStyle::Borderless) {
        setWindowIcon(applicationIcon());
        requestFrameMargins(*this);
    }
}

void NativeWindow::focus(QWidget& widget)
{
    if (!isMouseUsed)
        setAttribute(Qt::WA_KeyboardFocusChange);
    widget.setFocus();
    if (&widget == this)
        return;
    constexpr int focusRing = 4;
    int const top = widget.mapTo(this, QPoint()).y() + offset_ - focusRing;
    int const bottom = top + widget.height() + 2 * focusRing;
    scrollTo(std::min(std::max(offset_, bottom - height()), top));
}

void NativeWindow::noteMouse()
{
    isMouseUsed = true;
    setAttribute(Qt::WA_KeyboardFocusChange, false);
    if (auto* const focused = focusWidget())
        focused->update();
}

void NativeWindow::setOutline(QPainterPath const& outline)
{
    if (portable->background() != WindowBackground::Clear)
        return;
    double const ratio = devicePixelRatioF();
    QBitmap mask((outline.boundingRect().size() * ratio).toSize());
    mask.clear();
    QPainter painter(&mask);
    painter.scale(ratio, ratio);
    painter.fillPath(outline, Qt::color1);
    // The pixels that are painted in part.
    if (testAttribute(Qt::WA_TranslucentBackground))
        painter.strokePath(outline, QPen(Qt::color1, 1.4 / ratio));
    painter.end();
    setShape(*this, QRegion(mask));
}

void NativeWindow::setHeightLimit(int limit)
{
    auto const content = roundedRect(portable->contentView().frame()).size();
    setFixedSize(content.boundedTo({ content.width(), limit }));
    scrollTo(offset_);
}

void NativeWindow::scrollTo(double offset)
{
    if (!portable || !portable->contentView().native())
        return;
    auto& content = portable->contentView().native()->widget();
    int const maximum = std::max(0, content.height() - height());
    offset_ = std::clamp(static_cast<int>(offset), 0, maximum);
    content.move(0, -offset_);
    scroller_->setRange(rect(), offset_, maximum);
}

bool NativeWindow::event(QEvent* event)
{
    if (portable && event->type() == QEvent::WindowActivate)
        portable->userChangedKey(true);
    if (portable && event->type() == QEvent::WindowDeactivate)
        portable->userChangedKey(false);
    bool const result = QWidget::event(event);
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate)
        syncKeyboardGrab();
    return result;
}

void NativeWindow::closeEvent(QCloseEvent* event)
{
    // The portable window decides what closing does.
    event->ignore();
    if (portable)
        portable->userClosed();
}

void NativeWindow::mousePressEvent(QMouseEvent* event)
{
    if (portable && portable->isMovableByBackground() && event->button() == Qt::LeftButton)
        windowHandle()->startSystemMove();
}

void NativeWindow::wheelEvent(QWheelEvent* event)
{
    scrollTo(offset_ + scrollDistance(*event));
}

// The portable window answers to Tab. Qt calls this when the widget with the focus was hidden.
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
    native->portable = nullptr;
    native->hide();
    QObject::connect(native, &QObject::destroyed, qApp, trimMemory, Qt::QueuedConnection);
    native->deleteLater();
}

void syncWindow(Window const& window)
{
    auto& native = *window.native();
    if (auto const flags = flagsFor(window); flags != native.windowFlags()) {
        // Changing the flags hides the window; the next lines show it again.
        native.setWindowFlags(flags);
    }
    native.setWindowTitle(toQString(window.title()));
    if (!window.isVisible())
        return native.hide();
    // Qt takes a window for shown that another client unmapped, and would not show it. One that was
    // just shown is unmapped until the window manager comes to it, which may be between hiding it
    // and showing it: to show a mapped window does nothing, and the window manager, which is told
    // of the hiding, takes it away.
    auto& justShown = lastUserAction().shownWindow;
    if (auto const* const handle = native.windowHandle();
        native.isVisible() && handle != justShown && isUnmapped(*handle))
        native.hide();
    if (native.isVisible())
        return;
    // Moved only after it is shown, it would be seen to jump.
    centerNativeWindow(window);
    native.show();
    justShown = native.windowHandle();
}

void syncFirstResponder(Window const& window)
{
    auto const view = window.firstResponder();
    auto& widget = view && view->native() ? view->native()->widget() : *window.native();
    window.native()->focus(widget);
}

void centerNativeWindow(Window const& window)
{
    auto& native = *window.native();
    auto const* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    // A window that is new on the screen is not put elsewhere when its frame is known at last: that
    // would be seen as a jump.
    bool const hasFrame = window.style() != WindowStyle::Borderless;
    auto const margins = hasFrame ? frameMargins(native) : QMargins();
    auto const available = screen->availableGeometry();
    native.setHeightLimit(available.marginsRemoved(margins).height());
    auto place = native.geometry() + margins;
    place.moveCenter(available.center());
    if (auto const inside = place - margins; inside != native.geometry())
        native.setGeometry(inside);
}

void raiseNativeWindow(Window const& window)
{
    auto& native = *window.native();
    native.isMouseUsed = false;
    // QWidget::isActiveWindow() may be true for a moment after another client took the focus.
    bool const isActivated = lastUserAction().activatedWindow == native.windowHandle();
    if (!window.canBecomeKeyWindow() || isActivated)
        native.raise();
    else
        platform::activateWindow(*native.windowHandle());
}

} // namespace quillbar::platform
