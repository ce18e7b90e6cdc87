#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantList>

#include <chrono>
#include <functional>

namespace quillbar::platform {

/// A call of the message bus itself (org.freedesktop.DBus).
[[nodiscard]] QDBusMessage busCall(QString const& method, QVariantList const& arguments = {});

/// Sends `call` on the session bus, or on `bus`, and returns at once. `done` is called once,
/// through the event loop, with the reply or an error, which also stands for no bus and for no
/// answer within `timeout`. Main thread.
void callOnBus(QDBusMessage const& call, std::chrono::milliseconds timeout,
    std::function<void(QDBusMessage const& reply)> done,
    QDBusConnection const& bus = QDBusConnection::sessionBus());

} // namespace quillbar::platform
