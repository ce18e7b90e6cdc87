#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

#include <functional>

namespace quillbar::platform {

/// Waits until a window has the keyboard or will not get it, since it is hidden or gone. Main
/// thread.
class FocusWait final : public QObject {
public:
    explicit FocusWait(std::function<void()> onOver);

    /// Ends the wait before, without a call.
    void start(QWindow& window);

private:
    void stop();
    void end();

    std::function<void()> onOver_;
    QPointer<QWindow> window_;
};

} // namespace quillbar::platform
