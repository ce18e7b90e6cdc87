#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <chrono>
#include <functional>

namespace quillbar::platform {

/// A connection to the session bus. One that the bus closes is made anew at once; where that fails,
/// because the bus has gone, it stays closed. Main thread.
class SessionBus final : public QObject {
    Q_OBJECT

public:
    /// The connection that every part of the program but the portal uses; a child of the
    /// QApplication.
    [[nodiscard]] static SessionBus& own();

    explicit SessionBus(QDBusConnection const& connection, QObject* parent = nullptr);

    [[nodiscard]] QDBusConnection const& connection() const { return connection_; }

Q_SIGNALS:
    /// Nothing is registered on the new connection yet.
    void joined(QDBusConnection const& connection);

private:
    void watch();
    Q_SLOT void joinAgain();

    QDBusConnection connection_;
};

/// The program's own connection.
[[nodiscard]] QDBusConnection sessionBus();

/// Calls `registerOn` with the program's own connection, at once, and with each later one while
/// `member` lives.
void onSessionBus(QObject* member, std::function<void(QDBusConnection bus)> const& registerOn);

/// A call of the message bus itself (org.freedesktop.DBus).
[[nodiscard]] QDBusMessage busCall(QString const& method, QVariantList const& arguments = {});

/// Sends `call` on the session bus, or on `bus`, and returns at once. `done` is called once,
/// through the event loop, with the reply or an error, which also stands for no bus and for no
/// answer within `timeout`. Main thread.
void callOnBus(QDBusMessage const& call, std::chrono::milliseconds timeout,
    std::function<void(QDBusMessage const& reply)> done, QDBusConnection const& bus = sessionBus());

} // namespace quillbar::platform
