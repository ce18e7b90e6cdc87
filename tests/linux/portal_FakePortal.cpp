#include "linux/portal_FakePortal.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <gtest/gtest.h>

#include <utility>

namespace quillbar::testing {

using namespace Qt::StringLiterals;
using namespace platform;

static auto const managerPath = u"/org/freedesktop/systemd1"_s;

FakePortal::FakePortal(PrivateBus const& bus)
    : connection_(bus.connect("portal"_L1 + QString::number(++count_)))
{
    connection_.registerVirtualObject(portalPath, this, QDBusConnection::SubPath);
    connection_.registerVirtualObject(managerPath, this);
    EXPECT_TRUE(connection_.registerService(portalName));
    disconnectAfter(*this, connection_);
}

void FakePortal::becomeUnitManager()
{
    EXPECT_TRUE(connection_.registerService(u"org.freedesktop.systemd1"_s));
}

bool FakePortal::handleMessage(QDBusMessage const& message, QDBusConnection const& connection)
{
    auto const member = message.member();
    auto const kind = message.path().section('/'_L1, 5, 5);
    calls << (kind.isEmpty() ? member : member + ' '_L1 + kind);
    if (member == "Get"_L1)
        connection.send(message.createReply(QVariant::fromValue(QDBusVariant(1u))));
    else if (member == "CreateSession"_L1)
        createSession(message);
    else if (member == "BindShortcuts"_L1)
        bindShortcuts(message);
    else if (kind == "session"_L1 && message.isReplyRequired()) {
        openSession_.clear();
        connection.send(message.createReply());
    } else if (message.isReplyRequired())
        connection.send(message.createReply());
    return true;
}

QString FakePortal::introspect(QString const& /*path*/) const
{
    return {};
}

void FakePortal::createSession(QDBusMessage const& call)
{
    auto const options = qdbus_cast<QVariantMap>(call.arguments().value(0));
    auto const request = pathFor(call, u"request"_s, options[u"handle_token"_s]);
    sessionPath = pathFor(call, u"session"_s, options[u"session_handle_token"_s]);
    connection_.send(call.createReply(QVariant::fromValue(QDBusObjectPath(request))));
    QVariantMap results { { u"session_handle"_s, sessionPath } };
    if (takesAtCreation) {
        readAsked(options[u"shortcuts"_s]);
        results.insert(u"shortcuts"_s, keptShortcuts());
    }
    auto const isFailure = std::exchange(openSession_, sessionPath) == sessionPath;
    emitSignal(request, u"org.freedesktop.portal.Request"_s, u"Response"_s,
        { isFailure ? 2u : 0u, results });
}

QVariant FakePortal::keptShortcuts()
{
    QList<ShortcutProperties> kept;
    for (auto const& shortcut : asked) {
        auto const isLost = known_.contains(shortcut.id) && taken.contains(shortcut.trigger);
        kept.append({ shortcut.id,
            { { u"trigger_description"_s, isLost ? QString() : shortcut.trigger } } });
        known_ << shortcut.id;
    }
    return QVariant::fromValue(kept);
}

void FakePortal::bindShortcuts(QDBusMessage const& call)
{
    EXPECT_EQ(call.signature(), "oa(sa{sv})sa{sv}"_L1);
    EXPECT_EQ(call.arguments().at(0).value<QDBusObjectPath>().path(), sessionPath);
    readAsked(call.arguments().at(1));
    auto const options = qdbus_cast<QVariantMap>(call.arguments().at(3));
    bindRequest_ = pathFor(call, u"request"_s, options[u"handle_token"_s]);
    connection_.send(call.createReply(QVariant::fromValue(QDBusObjectPath(bindRequest_))));
    if (!answer.isEmpty())
        respond(answer);
}

void FakePortal::readAsked(QVariant const& argument)
{
    asked.clear();
    using Shortcuts = QList<ShortcutProperties>;
    for (auto const& [id, properties] : qdbus_cast<Shortcuts>(argument))
        asked.push_back({ id, properties[u"description"_s].toString(),
            properties[u"preferred_trigger"_s].toString() });
}

void FakePortal::respond(QVariantList const& arguments)
{
    emitSignal(bindRequest_, u"org.freedesktop.portal.Request"_s, u"Response"_s, arguments);
}

void FakePortal::activate(QString const& session, QString const& id, QVariantMap const& options)
{
    emitSignal(portalPath, QLatin1String(globalShortcutsInterface), u"Activated"_s,
        { QVariant::fromValue(QDBusObjectPath(session)), id, 12345ULL, options });
}

void FakePortal::emitSignal(QString const& path, QString const& interface, QString const& name,
    QVariantList const& arguments)
{
    auto signal = QDBusMessage::createSignal(path, interface, name);
    signal.setArguments(arguments);
    connection_.send(signal);
}

QString FakePortal::pathFor(QDBusMessage const& call, QString const& kind, QVariant const& token)
{
    auto sender = call.service().mid(1);
    sender.replace('.'_L1, '_'_L1);
    return portalPath + '/'_L1 + kind + '/'_L1 + sender + '/'_L1 + token.toString();
}

} // namespace quillbar::testing
