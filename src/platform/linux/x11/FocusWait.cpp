#include "platform/linux/x11/FocusWait.h"

#include <QGuiApplication>

#include <utility>

namespace quillbar::platform {

FocusWait::FocusWait(std::function<void()> onOver)
    : onOver_(std::move(onOver))
{
}

void FocusWait::start(QWindow& window)
{
    stop();
    window_ = &window;
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow const* focused) {
        if (focused == window_)
            end();
    });
    connect(window_, &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible)
            end();
    });
    connect(window_, &QObject::destroyed, this, &FocusWait::end);
}

void FocusWait::stop()
{
    qGuiApp->disconnect(this);
    if (window_)
        window_->disconnect(this);
}

void FocusWait::end()
{
    stop();
    onOver_();
}

} // namespace quillbar::platform
