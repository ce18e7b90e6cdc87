#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <functional>

namespace quillbar::platform {

/// Makes this process known to the desktop as the application, however it was started: desktops
/// take the application's name from that of the systemd unit, which is the bus's for a program that
/// the bus started, and the terminal's for one that was typed there. Main thread.
class ApplicationScope final : public QObject {
    Q_OBJECT

public:
    /// Moves a process in another unit into a scope of the application's name; without systemd all
    /// stays as it is. `done` is called once, through the event loop unless there is nothing to do.
    static void enter(std::function<void()> done);

private:
    /// Deletes itself after it has called `done`.
    explicit ApplicationScope(std::function<void()> done);

    Q_SLOT void jobRemoved(QDBusMessage const& signal);
    void finish();

    QString name_;
    std::function<void()> done_;
};

} // namespace quillbar::platform
