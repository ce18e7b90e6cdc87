#include "platform/linux/portal/PortalRequest.h"

#include "platform/linux/dbus/SessionBus.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QPointer>

#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds handleTimeout { 10000 };
constexpr auto requestInterface = "org.freedesktop.portal.Request";

PortalRequest::Response responseOf(uint code)
{
    switch (code) {
    case 0:
        return PortalRequest::Response::Success;
    case 1:
        return PortalRequest::Response::Declined;
    default:
        return PortalRequest::Response::Failed;
    }
}

QString newToken()
{
    static int count = 0;
    return "quillbar"_L1 + QString::number(++count);
}

bool isRefusal(QDBusMessage const& reply)
{
    // A portal that is slow to say where it will answer may still answer.
    return reply.type() == QDBusMessage::ErrorMessage
        && QDBusError(reply).type() != QDBusError::NoReply;
}

} // namespace

QDBusMessage portalCall(QString const& portal, QString const& path, char const* interface,
    QString const& method, QVariantList const& arguments)
{
    auto call
        = QDBusMessage::createMethodCall(portal, path, QString::fromLatin1(interface), method);
    call.setArguments(arguments);
    return call;
}

QString portalObjectPath(QDBusConnection const& bus, QLatin1String kind, QString const& token)
{
    auto sender = bus.baseService().mid(1);
    sender.replace('.'_L1, '_'_L1);
    return portalPath + '/'_L1 + kind + '/'_L1 + sender + '/'_L1 + token;
}

PortalRequest::PortalRequest(
    Portal portal, QString const& method, QVariantList arguments, QVariantMap options, Done done)
    : portal_(std::move(portal))
    , done_(std::move(done))
{
    auto const token = newToken();
    path_ = portalObjectPath(portal_.bus, "request"_L1, token);
    // Before the call, for the answer may come at once. Other senders are not heard.
    portal_.bus.connect(portal_.name, path_, QString::fromLatin1(requestInterface), u"Response"_s,
        this, SLOT(responded(QDBusMessage)));
    options.insert(u"handle_token"_s, token);
    arguments.append(options);
    callOnBus(
        portalCall(portal_.name, portalPath, globalShortcutsInterface, method, arguments),
        handleTimeout,
        [self = QPointer(this)](QDBusMessage const& reply) {
            if (self && isRefusal(reply))
                self->finish(Response::Failed, {});
        },
        portal_.bus);
}

PortalRequest::~PortalRequest()
{
    if (done_)
        portal_.bus.send(portalCall(portal_.name, path_, requestInterface, u"Close"_s));
}

void PortalRequest::responded(QDBusMessage const& signal)
{
    if (signal.signature() != "ua{sv}"_L1)
        return;
    auto const arguments = signal.arguments();
    finish(responseOf(arguments.at(0).toUInt()), qdbus_cast<QVariantMap>(arguments.at(1)));
}

void PortalRequest::finish(Response response, QVariantMap const& results)
{
    if (auto const done = std::exchange(done_, nullptr))
        done(response, results);
}

} // namespace quillbar::platform
