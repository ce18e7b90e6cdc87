#include "platform/linux/dbus/SessionBus.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

QDBusMessage busCall(QString const& method, QVariantList const& arguments)
{
    auto call = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, method);
    call.setArguments(arguments);
    return call;
}

void callOnBus(QDBusMessage const& call, std::chrono::milliseconds timeout,
    std::function<void(QDBusMessage const& reply)> done, QDBusConnection const& bus)
{
    // A call that was never sent would never be reported as finished.
    auto const pending = bus.isConnected()
        ? bus.asyncCall(call, static_cast<int>(timeout.count()))
        : QDBusPendingCall::fromError({ QDBusError::Disconnected, u"no session bus"_s });
    auto* const watcher = new QDBusPendingCallWatcher(pending, QCoreApplication::instance());
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, done = std::move(done)] {
            watcher->deleteLater();
            done(watcher->reply());
        });
}

} // namespace quillbar::platform
