#include "platform/linux/x11/WindowActivation.h"

#include "platform/Application.h"
#include "platform/linux/input/UserAction.h"
#include "platform/linux/x11/WindowManagerWatch.h"
#include "platform/linux/x11/X11Connection.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace quillbar::platform {

namespace {

// Qt would send the time of the last event in its own windows. For a hotkey or the tray that is too
// old: window managers that guard against stolen focus would leave the window in the background.
void sendActivation(xcb_connection_t* connection, QWindow& window)
{
    static auto const activeWindow = x11Atom(connection, "_NET_ACTIVE_WINDOW");
    // The source indication of EWMH: a normal application's request may be refused.
    constexpr std::uint32_t directUserAction = 2;
    askWindowManager(connection, static_cast<xcb_window_t>(window.winId()), activeWindow,
        { directUserAction, lastUserAction().time });
}

/// Qt looks for the token in the environment only.
void passOnActivationToken()
{
    // Compositors make short ones: a message that is too long for the connection would end the
    // program.
    constexpr qsizetype longestToken = 512;
    auto const token = std::exchange(lastUserAction().activationToken, {});
    if (!token.isEmpty() && token.size() <= longestToken)
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

void forgetWhenFocusIsLost(QWindow& window)
{
    auto const focusChanged = [&window] {
        auto& activated = lastUserAction().activatedWindow;
        if (QGuiApplication::focusWindow() == &window)
            forgetWhenFocusIsLost(window);
        else if (activated == &window)
            activated.clear();
    };
    QObject::connect(
        &window, &QWindow::activeChanged, &window, focusChanged, Qt::SingleShotConnection);
}

} // namespace

bool isWaylandSession()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

void activateWindow(QWindow& window)
{
    WindowManagerWatch::install();
    lastUserAction().activatedWindow = &window;
    forgetWhenFocusIsLost(window);
    window.raise();
    if (auto* const connection = x11Connection())
        return sendActivation(connection, window);
    passOnActivationToken();
    window.requestActivate();
}

QWindow* windowAwaitingFocus()
{
    auto* const window = lastUserAction().activatedWindow.data();
    bool const isAwaiting
        = window && window->isVisible() && window != QGuiApplication::focusWindow();
    return isAwaiting ? window : nullptr;
}

void activateIgnoringOtherApps()
{
    // To be in front is to have the focus here, and a window that has it must not be asked again.
    auto const* const focused = QGuiApplication::focusWindow();
    if (windowAwaitingFocus() || (focused && focused->isVisible()))
        return;
    for (auto* const widget : QApplication::topLevelWidgets()) {
        auto const type = widget->windowType();
        if (widget->isVisible() && (type == Qt::Window || type == Qt::Dialog || type == Qt::Tool))
            return activateWindow(*widget->windowHandle());
    }
}

} // namespace quillbar::platform
