#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <functional>

namespace quillbar::platform {

/// Waits until a window has the keyboard or will not get it: it is hidden or gone, or the window
/// manager keeps it waiting too long. One wait at a time. Main thread.
class FocusWait final : public QObject {
public:
    explicit FocusWait(std::function<void()> onOver);

    void start(QWindow& window);

private:
    void end();

    std::function<void()> onOver_;
    QPointer<QWindow> window_;
    QTimer limit_;
};

} // namespace quillbar::platform
