#include "platform/linux/system/DesktopApplication.h"

#include "platform/linux/UserAction.h"
#include "platform/linux/system/ApplicationId.h"
#include "platform/linux/system/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>

#include <charconv>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace quillbar::platform {

namespace {

constexpr std::chrono::milliseconds busTimeout { 2000 };
constexpr uint doNotQueue = 4;
constexpr uint replyExists = 3;

QString objectPath()
{
    return QStringLiteral("/com/quillbar/Quillbar");
}

QString interfaceName()
{
    return QStringLiteral("org.freedesktop.Application");
}

std::string variable(char const* name)
{
    auto const* const value = std::getenv(name);
    return value ? value : "";
}

void useTokens(QVariantMap const& platformData)
{
    auto const startupId
        = platformData.value(QStringLiteral("desktop-startup-id")).toString().toStdString();
    noteUserAction(launchTime(startupId));
    lastUserAction().activationToken
        = platformData.value(QStringLiteral("activation-token")).toString();
}

QVariantMap lastMap(QDBusMessage const& message)
{
    return qdbus_cast<QVariantMap>(message.arguments().constLast());
}

} // namespace

LaunchTokens LaunchTokens::fromEnvironment()
{
    return { variable("XDG_ACTIVATION_TOKEN"), variable("DESKTOP_STARTUP_ID") };
}

std::uint32_t launchTime(std::string const& startupId)
{
    constexpr std::string_view mark = "_TIME";
    auto const start = startupId.rfind(mark);
    if (start == std::string::npos)
        return 0;
    std::uint32_t time = 0;
    auto const* const end = startupId.data() + startupId.size();
    auto const result = std::from_chars(startupId.data() + start + mark.size(), end, time);
    return result.ec == std::errc {} && result.ptr == end ? time : 0;
}

DesktopApplication::DesktopApplication()
{
    QDBusConnection::sessionBus().registerVirtualObject(objectPath(), this);
}

DesktopApplication::~DesktopApplication()
{
    QDBusConnection::sessionBus().unregisterObject(objectPath());
}

void DesktopApplication::claimName(std::function<void(Instance)> done)
{
    auto const call
        = busCall(QStringLiteral("RequestName"), { QLatin1String(applicationId), doNotQueue });
    callOnBus(call, busTimeout, [done = std::move(done)](QDBusMessage const& reply) {
        if (reply.type() != QDBusMessage::ReplyMessage)
            return done(Instance::First);
        if (reply.arguments().value(0).toUInt() == replyExists)
            return done(Instance::Second);
        // The bus delivers the messages for which it started this process when the name is claimed.
        // Qt holds messages, but not replies, until its event loop has run: only the reply to a
        // later call comes after them.
        callOnBus(busCall(QStringLiteral("GetId")), busTimeout,
            [done](QDBusMessage const&) { done(Instance::First); });
    });
}

void DesktopApplication::activateFirst(LaunchTokens const& tokens, std::function<void()> done)
{
    QVariantMap platformData;
    if (!tokens.activationToken.empty()) {
        platformData.insert(
            QStringLiteral("activation-token"), QString::fromStdString(tokens.activationToken));
    }
    if (!tokens.startupId.empty()) {
        platformData.insert(
            QStringLiteral("desktop-startup-id"), QString::fromStdString(tokens.startupId));
    }
    auto call = QDBusMessage::createMethodCall(
        QLatin1String(applicationId), objectPath(), interfaceName(), QStringLiteral("Activate"));
    call.setArguments({ platformData });
    callOnBus(call, busTimeout, [done = std::move(done)](QDBusMessage const&) { done(); });
}

void DesktopApplication::serve(std::shared_ptr<ApplicationDelegate> const& delegate)
{
    delegate_ = delegate;
    isServing_ = true;
    for (auto const& request : std::exchange(waiting_, {}))
        request();
}

bool DesktopApplication::handleMessage(
    QDBusMessage const& message, QDBusConnection const& connection)
{
    if (!message.interface().isEmpty() && message.interface() != interfaceName())
        return false;
    auto const member = message.member();
    if (member != QLatin1String("Activate") && member != QLatin1String("Open")
        && member != QLatin1String("ActivateAction"))
        return false;
    // Answered before it is carried out: a window may ask the person something and wait.
    auto const isAccepted = accept(message);
    if (message.isReplyRequired()) {
        connection.send(isAccepted ? message.createReply()
                                   : message.createErrorReply(QDBusError::InvalidArgs,
                                       QStringLiteral("no such action or wrong arguments")));
    }
    return true;
}

QString DesktopApplication::introspect(QString const&) const
{
    return QStringLiteral(R"(<interface name="org.freedesktop.Application">
  <method name="Activate">
    <arg name="platform_data" type="a{sv}" direction="in"/>
  </method>
  <method name="Open">
    <arg name="uris" type="as" direction="in"/>
    <arg name="platform_data" type="a{sv}" direction="in"/>
  </method>
  <method name="ActivateAction">
    <arg name="action_name" type="s" direction="in"/>
    <arg name="parameter" type="av" direction="in"/>
    <arg name="platform_data" type="a{sv}" direction="in"/>
  </method>
</interface>
)");
}

bool DesktopApplication::accept(QDBusMessage const& message)
{
    auto const member = message.member();
    if (member == QLatin1String("ActivateAction"))
        return acceptAction(message);
    auto const signature = member == QLatin1String("Open") ? "asa{sv}" : "a{sv}";
    if (message.signature() != QLatin1String(signature))
        return false;
    if (isServing_)
        perform(&ApplicationDelegate::openSettings, lastMap(message));
    return true;
}

bool DesktopApplication::acceptAction(QDBusMessage const& message)
{
    if (message.signature() != QLatin1String("sava{sv}"))
        return false;
    auto const action = message.arguments().constFirst().toString();
    if (action == QLatin1String("palette"))
        perform(&ApplicationDelegate::openPalette, lastMap(message));
    else if (action == QLatin1String("settings"))
        perform(&ApplicationDelegate::openSettings, lastMap(message));
    else if (action == QLatin1String("quit"))
        terminate();
    else
        return false;
    return true;
}

void DesktopApplication::perform(Request request, QVariantMap const& platformData)
{
    auto work = [this, request, platformData] {
        auto const delegate = delegate_.lock();
        if (!delegate)
            return;
        useTokens(platformData);
        ((*delegate).*request)();
    };
    if (isServing_)
        QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
    else
        waiting_.emplace_back(std::move(work));
}

} // namespace quillbar::platform
