#include "platform/linux/desktop/DesktopApplication.h"

#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/input/UserAction.h"

#include <QDBusError>

#include <charconv>
#include <string_view>
#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds busTimeout { 2000 };
constexpr uint queue = 0;
constexpr uint doNotQueue = 4;
constexpr uint replyExists = 3;

auto const objectPath = u"/com/quillbar/Quillbar"_s;

void useTokens(QVariantMap const& platformData)
{
    auto const startupId = platformData.value(u"desktop-startup-id"_s).toString().toStdString();
    noteUserAction(launchTime(startupId));
    lastUserAction().activationToken = platformData.value(u"activation-token"_s).toString();
}

} // namespace

LaunchTokens LaunchTokens::fromEnvironment()
{
    return { qgetenv("XDG_ACTIVATION_TOKEN").toStdString(),
        qgetenv("DESKTOP_STARTUP_ID").toStdString() };
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
    onSessionBus(this, [this](QDBusConnection bus) {
        bus.registerObject(objectPath, this, QDBusConnection::ExportAllSlots);
    });
    connect(&SessionBus::own(), &SessionBus::joined, this, [](QDBusConnection const& bus) {
        // One that was started meanwhile has the name until it ends.
        bus.send(busCall(u"RequestName"_s, { QLatin1String(applicationId), queue }));
    });
}

void DesktopApplication::claimName(std::function<void(Instance)> done)
{
    auto const call = busCall(u"RequestName"_s, { QLatin1String(applicationId), doNotQueue });
    callOnBus(call, busTimeout, [done = std::move(done)](QDBusMessage const& reply) {
        if (reply.type() != QDBusMessage::ReplyMessage)
            return done(Instance::First);
        if (reply.arguments().value(0).toUInt() == replyExists)
            return done(Instance::Second);
        // The bus delivers the messages for which it started this process when the name is claimed.
        // Qt holds messages, but not replies, until its event loop has run: only the reply to a
        // later call comes after them.
        callOnBus(busCall(u"GetId"_s), busTimeout,
            [done](QDBusMessage const&) { done(Instance::First); });
    });
}

void DesktopApplication::activateFirst(LaunchTokens const& tokens, std::function<void()> done)
{
    QVariantMap const platformData {
        { u"activation-token"_s, QString::fromStdString(tokens.activationToken) },
        { u"desktop-startup-id"_s, QString::fromStdString(tokens.startupId) },
    };
    auto call = QDBusMessage::createMethodCall(
        QLatin1String(applicationId), objectPath, u"org.freedesktop.Application"_s, u"Activate"_s);
    call.setArguments({ platformData });
    callOnBus(call, busTimeout, [done = std::move(done)](QDBusMessage const&) { done(); });
}

void DesktopApplication::serve(std::shared_ptr<ApplicationDelegate> const& delegate)
{
    delegate_ = delegate;
    for (auto const& request : std::exchange(waiting_, {}))
        request();
}

void DesktopApplication::Activate(QVariantMap const& platformData)
{
    if (!delegate_.expired())
        perform(&ApplicationDelegate::openSettings, platformData);
}

void DesktopApplication::Open(QStringList const& /*uris*/, QVariantMap const& platformData)
{
    Activate(platformData);
}

void DesktopApplication::ActivateAction(
    QString const& name, QVariantList const& parameter, QVariantMap const& platformData)
{
    if (name == "palette"_L1)
        perform(&ApplicationDelegate::openPalette, platformData);
    else if (name == "settings"_L1)
        perform(&ApplicationDelegate::openSettings, platformData);
    else if (name == "run"_L1)
        runPinned(parameter.value(0).toString());
    else if (name == "quit"_L1)
        terminate();
    else
        sendErrorReply(QDBusError::InvalidArgs, "No such action: "_L1 + name);
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
    // Answered before it is carried out: a window may ask the person something and wait.
    if (delegate_.expired())
        waiting_.emplace_back(std::move(work));
    else
        QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

void DesktopApplication::runPinned(QString const& name)
{
    // Answered when it is carried out: what is pinned is known only after the start.
    setDelayedReply(true);
    auto const work = [this, name, call = message(), bus = connection()] {
        auto const delegate = delegate_.lock();
        if (!delegate)
            return;
        auto const isPinned = delegate->runPinned(name.toStdString());
        bus.send(isPinned ? call.createReply()
                          : call.createErrorReply(QDBusError::InvalidArgs,
                              u"No pinned shortcut is called “"_s + name + u'”'));
    };
    if (delegate_.expired())
        waiting_.emplace_back(work);
    else
        work();
}

} // namespace quillbar::platform
