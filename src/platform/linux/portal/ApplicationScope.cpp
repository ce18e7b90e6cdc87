#include "platform/linux/portal/ApplicationScope.h"

#include "platform/linux/dbus/DBusStruct.h"
#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/desktop/ApplicationId.h"

#include <QCoreApplication>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QFile>
#include <QPointer>
#include <QRegularExpression>

#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

/// A property of a systemd unit, "(sv)".
struct UnitProperty {
    QString name;
    QDBusVariant value;

    static auto fields(auto& self) { return std::tie(self.name, self.value); }
};

/// A unit to be started along with another, "(sa(sv))".
struct AuxiliaryUnit {
    QString name;
    QList<UnitProperty> properties;

    static auto fields(auto& self) { return std::tie(self.name, self.properties); }
};

namespace {

constexpr std::chrono::milliseconds managerTimeout { 5000 };
auto const manager = u"org.freedesktop.systemd1"_s;
auto const managerPath = u"/org/freedesktop/systemd1"_s;
auto const managerInterface = u"org.freedesktop.systemd1.Manager"_s;

/// Whether the unit of this process already has the application's name, as systemd's autostart
/// generator and desktops that launch into scopes give it.
bool isInOwnUnit()
{
    QFile file(u"/proc/self/cgroup"_s);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QRegularExpression const ownUnit(
        "/app-(\\w+-)?"_L1 + QRegularExpression::escape(QLatin1String(applicationId)) + "[@-]"_L1);
    return QString::fromUtf8(file.readAll()).contains(ownUnit);
}

QDBusMessage startScope(QString const& name)
{
    qDBusRegisterMetaType<UnitProperty>();
    qDBusRegisterMetaType<QList<UnitProperty>>();
    qDBusRegisterMetaType<AuxiliaryUnit>();
    qDBusRegisterMetaType<QList<AuxiliaryUnit>>();
    auto const processes = QList<uint> { static_cast<uint>(QCoreApplication::applicationPid()) };
    QList<UnitProperty> const properties {
        { u"PIDs"_s, QDBusVariant(QVariant::fromValue(processes)) },
        { u"Slice"_s, QDBusVariant(u"app.slice"_s) },
        // Its name is free again after a process that ended badly.
        { u"CollectMode"_s, QDBusVariant(u"inactive-or-failed"_s) },
    };
    auto call = QDBusMessage::createMethodCall(
        manager, managerPath, managerInterface, u"StartTransientUnit"_s);
    call.setArguments({ name, u"fail"_s, QVariant::fromValue(properties),
        QVariant::fromValue(QList<AuxiliaryUnit>()) });
    return call;
}

} // namespace

void ApplicationScope::enter(std::function<void()> done)
{
    if (isInOwnUnit())
        done();
    else
        new ApplicationScope(std::move(done));
}

ApplicationScope::ApplicationScope(std::function<void()> done)
    : QObject(QCoreApplication::instance())
    , name_("app-"_L1 + QLatin1String(applicationId) + '-'_L1
          + QString::number(QCoreApplication::applicationPid()) + ".scope"_L1)
    , done_(std::move(done))
{
    // Before the call, for the move may be done before the call's own answer is read.
    sessionBus().connect(QString(), managerPath, managerInterface, u"JobRemoved"_s, this,
        SLOT(jobRemoved(QDBusMessage)));
    callOnBus(
        startScope(name_), managerTimeout, [self = QPointer(this)](QDBusMessage const& reply) {
            if (self && reply.type() == QDBusMessage::ErrorMessage)
                self->finish();
        });
}

void ApplicationScope::jobRemoved(QDBusMessage const& signal)
{
    if (signal.arguments().value(2).toString() == name_)
        finish();
}

void ApplicationScope::finish()
{
    deleteLater();
    if (auto const done = std::exchange(done_, nullptr))
        done();
}

} // namespace quillbar::platform
