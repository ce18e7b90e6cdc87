#include "platform/linux/hotkeys/PortalSession.h"

#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr auto sessionInterface = "org.freedesktop.portal.Session";

// The portal's own interface says "s" and means an object path; portals send either.
QString pathIn(QVariant const& value)
{
    return value.canConvert<QDBusObjectPath>() ? value.value<QDBusObjectPath>().path()
                                               : value.toString();
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, PortalShortcut const& shortcut)
{
    argument.beginStructure();
    argument << shortcut.id
             << QVariantMap { { u"description"_s, shortcut.description },
                    { u"preferred_trigger"_s, shortcut.trigger } };
    argument.endStructure();
    return argument;
}

QDBusArgument const& operator>>(QDBusArgument const& argument, PortalShortcut& shortcut)
{
    QVariantMap properties;
    argument.beginStructure();
    argument >> shortcut.id >> properties;
    argument.endStructure();
    shortcut.description = properties.value(u"description"_s).toString();
    shortcut.trigger = properties.value(u"trigger_description"_s).toString();
    return argument;
}

PortalSession::PortalSession(QString portal, std::vector<PortalShortcut> shortcuts, Events events)
    : portal_(std::move(portal))
    , shortcuts_(std::move(shortcuts))
    , events_(std::move(events))
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    auto const token = newPortalToken();
    path_ = portalObjectPath("session"_L1, token);
    auto bus = QDBusConnection::sessionBus();
    bus.connect(portal_, portalPath, QString::fromLatin1(globalShortcutsInterface), u"Activated"_s,
        this, SLOT(activated(QDBusMessage)));
    bus.connect(portal_, path_, QString::fromLatin1(sessionInterface), u"Closed"_s, this,
        SLOT(closed(QDBusMessage)));
    request_ = std::make_unique<PortalRequest>(portal_, u"CreateSession"_s, QVariantList {},
        QVariantMap { { u"session_handle_token"_s, token } },
        [this](auto response, auto const& results) { created(response, results); });
}

PortalSession::~PortalSession()
{
    request_.reset();
    QDBusConnection::sessionBus().send(portalCall(portal_, path_, sessionInterface, u"Close"_s));
}

void PortalSession::created(PortalRequest::Response response, QVariantMap const& results)
{
    if (response == PortalRequest::Response::Success
        && pathIn(results.value(u"session_handle"_s)) == path_)
        bind();
    else
        setState(State::Failed);
}

void PortalSession::bind()
{
    QList<PortalShortcut> const shortcuts(shortcuts_.begin(), shortcuts_.end());
    auto const noParentWindow = QString();
    request_ = std::make_unique<PortalRequest>(portal_, u"BindShortcuts"_s,
        QVariantList { QVariant::fromValue(QDBusObjectPath(path_)), QVariant::fromValue(shortcuts),
            noParentWindow },
        QVariantMap {}, [this](auto response, auto const& results) { bound(response, results); });
}

void PortalSession::bound(PortalRequest::Response response, QVariantMap const& results)
{
    if (response != PortalRequest::Response::Success) {
        setState(response == PortalRequest::Response::Declined ? State::Declined : State::Failed);
        return;
    }
    // A portal that does not tell which ones it took is taken to have taken all.
    auto const told = results.value(u"shortcuts"_s).value<QDBusArgument>();
    if (told.currentSignature() == "a(sa{sv})"_L1) {
        for (auto const& shortcut : shortcuts_)
            leftOut_.insert(shortcut.id);
        for (auto const& shortcut : qdbus_cast<QList<PortalShortcut>>(told))
            leftOut_.remove(shortcut.id);
    }
    setState(State::Bound);
}

void PortalSession::setState(State state)
{
    state_ = state;
    events_.onState();
}

void PortalSession::activated(QDBusMessage const& signal)
{
    if (!signal.signature().startsWith("osta{sv}"_L1))
        return;
    auto const arguments = signal.arguments();
    if (arguments.at(0).value<QDBusObjectPath>().path() != path_)
        return;
    auto const options = qdbus_cast<QVariantMap>(arguments.at(3));
    // Copied, since a hotkey's action may end this session.
    auto const onPressed = events_.onPressed;
    onPressed(arguments.at(1).toString(), static_cast<std::uint32_t>(arguments.at(2).toULongLong()),
        options.value(u"activation_token"_s).toString());
}

void PortalSession::closed(QDBusMessage const& /*signal*/)
{
    // The desktop took the hotkeys back.
    setState(State::Declined);
}

} // namespace quillbar::platform
