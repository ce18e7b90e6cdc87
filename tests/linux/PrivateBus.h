#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QString>
#include <QVariantList>

namespace quillbar::testing {

/// A session bus of the test's own, named in DBUS_SESSION_BUS_ADDRESS; stopped on destruction.
class PrivateBus {
public:
    /// `configuration` is the daemon's option for it.
    explicit PrivateBus(QString const& configuration = QStringLiteral("--session"));
    PrivateBus(PrivateBus const&) = delete;
    PrivateBus& operator=(PrivateBus const&) = delete;
    ~PrivateBus();

    /// Another peer on the bus.
    [[nodiscard]] QDBusConnection connect(QString const& name) const;

private:
    QProcess daemon_;
    QString address_;
};

/// Leaves the bus when `object` is gone, whose last registration on the connection was before: Qt
/// closes a connection on a thread of its own, where it still looks at what is registered.
void disconnectAfter(QObject const& object, QDBusConnection const& connection);

/// Calls and runs the event loop until the answer is there, so that the callee may live in the same
/// thread.
[[nodiscard]] QDBusMessage ask(QDBusConnection connection, QDBusMessage const& call);

} // namespace quillbar::testing
