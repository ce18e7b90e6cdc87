#include "platform/linux/system/SessionBus.h"

#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusPendingCallWatcher>

namespace quillbar::platform {

QDBusMessage busCall(QString const& method, QVariantList const& arguments)
{
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"), method);
    call.setArguments(arguments);
    return call;
}

void callOnBus(QDBusMessage const& call, std::chrono::milliseconds timeout,
    std::function<void(QDBusMessage const& reply)> done, QDBusConnection const& bus)
{
    // A call that was never sent would never be reported as finished.
    if (!bus.isConnected()) {
        post([done = std::move(done)] {
            done(QDBusMessage::createError(
                QDBusError::Disconnected, QStringLiteral("no session bus")));
        });
        return;
    }
    auto* const watcher = new QDBusPendingCallWatcher(
        bus.asyncCall(call, static_cast<int>(timeout.count())), QCoreApplication::instance());
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, done = std::move(done)] {
            watcher->deleteLater();
            done(watcher->reply());
        });
}

} // namespace quillbar::platform
