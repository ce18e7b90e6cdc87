#include "platform/linux/x11/FocusWait.h"

#include <QGuiApplication>

#include <chrono>
#include <utility>

namespace quillbar::platform {

namespace {

using namespace std::chrono_literals;

// Nobody can type meanwhile.
constexpr auto longestWait = 1s;

} // namespace

FocusWait::FocusWait(std::function<void()> onOver)
    : onOver_(std::move(onOver))
{
    limit_.setSingleShot(true);
    limit_.setInterval(longestWait);
    connect(&limit_, &QTimer::timeout, this, &FocusWait::end);
}

void FocusWait::start(QWindow& window)
{
    window_ = &window;
    limit_.start();
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

void FocusWait::end()
{
    limit_.stop();
    qGuiApp->disconnect(this);
    if (window_)
        window_->disconnect(this);
    onOver_();
}

} // namespace quillbar::platform
