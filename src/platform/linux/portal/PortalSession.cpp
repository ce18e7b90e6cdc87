#include "platform/linux/portal/PortalSession.h"

#include "platform/linux/dbus/SessionBus.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr auto sessionInterface = "org.freedesktop.portal.Session";
// KDE appends it to the application's name and keeps the shortcuts under both.
auto const sessionToken = u"_quillbar"_s;
constexpr std::chrono::milliseconds endTimeout { 10000 };

QVariant requestFor(std::vector<PortalShortcut> const& shortcuts)
{
    QList<ShortcutProperties> request;
    for (auto const& [id, description, trigger] : shortcuts)
        request.append(
            { id, { { u"description"_s, description }, { u"preferred_trigger"_s, trigger } } });
    return QVariant::fromValue(request);
}

std::optional<QList<ShortcutProperties>> shortcutsIn(QVariantMap const& results)
{
    auto const told = results.value(u"shortcuts"_s).value<QDBusArgument>();
    if (told.currentSignature() != "a(sa{sv})"_L1)
        return std::nullopt;
    return qdbus_cast<QList<ShortcutProperties>>(told);
}

} // namespace

PortalSession::PortalSession(Portal portal, std::vector<PortalShortcut> shortcuts, Events events)
    : portal_(std::move(portal))
    , path_(portalObjectPath(portal_.bus, "session"_L1, sessionToken))
    , shortcuts_(std::move(shortcuts))
    , events_(std::move(events))
{
    qDBusRegisterMetaType<ShortcutProperties>();
    qDBusRegisterMetaType<QList<ShortcutProperties>>();
    portal_.bus.connect(portal_.name, portalPath, QString::fromLatin1(globalShortcutsInterface),
        u"Activated"_s, this, SLOT(activated(QDBusMessage)));
    portal_.bus.connect(portal_.name, path_, QString::fromLatin1(sessionInterface), u"Closed"_s,
        this, SLOT(closed(QDBusMessage)));
    create();
}

PortalSession::~PortalSession()
{
    request_.reset();
    if (!isEnded_)
        portal_.bus.send(portalCall(portal_.name, path_, sessionInterface, u"Close"_s));
}

void PortalSession::close(std::function<void()> done)
{
    events_ = {};
    state_ = State::Asking;
    leftOut_.clear();
    taken_.clear();
    onEnd_ = std::move(done);
    if (!isInTransit_)
        end();
}

void PortalSession::create()
{
    isInTransit_ = true;
    isEnded_ = false;
    // KDE's portal takes the shortcuts from here and opens its settings at BindShortcuts.
    request_ = std::make_unique<PortalRequest>(portal_, u"CreateSession"_s, QVariantList {},
        QVariantMap { { u"session_handle_token"_s, sessionToken },
            { u"shortcuts"_s, requestFor(shortcuts_) } },
        [this](auto response, auto const& results) { created(response, results); });
}

void PortalSession::created(PortalRequest::Response response, QVariantMap const& results)
{
    isInTransit_ = false;
    if (onEnd_) {
        end();
        return;
    }
    if (response != PortalRequest::Response::Success) {
        setState(State::Failed);
        return;
    }
    auto const answer = shortcutsIn(results);
    if (!answer || !areBoundBy(*answer)) {
        bind();
        return;
    }
    // KDE's portal answers a new shortcut with the keys that were requested, and in the next
    // session with those that it has, which are none when they were taken.
    if (!std::exchange(isSecond_, true)) {
        end();
        return;
    }
    for (auto const& shortcut : *answer) {
        if (shortcut.properties.value(u"trigger_description"_s).toString().isEmpty())
            taken_.insert(shortcut.id);
    }
    setState(State::Bound);
}

bool PortalSession::areBoundBy(QList<ShortcutProperties> const& answer) const
{
    return std::ranges::all_of(shortcuts_, [&](PortalShortcut const& shortcut) {
        return std::ranges::find(answer, shortcut.id, &ShortcutProperties::id) != answer.end();
    });
}

void PortalSession::bind()
{
    auto const noParentWindow = QString();
    request_ = std::make_unique<PortalRequest>(portal_, u"BindShortcuts"_s,
        QVariantList {
            QVariant::fromValue(QDBusObjectPath(path_)), requestFor(shortcuts_), noParentWindow },
        QVariantMap {}, [this](auto response, auto const& results) { bound(response, results); });
}

void PortalSession::bound(PortalRequest::Response response, QVariantMap const& results)
{
    if (response != PortalRequest::Response::Success) {
        setState(response == PortalRequest::Response::Declined ? State::Declined : State::Failed);
        return;
    }
    // A portal that does not tell which ones it took is taken to have taken all. That it names no
    // keys says nothing here: some leave them to a file of the person's.
    if (auto const answer = shortcutsIn(results)) {
        for (auto const& shortcut : shortcuts_)
            leftOut_.insert(shortcut.id);
        for (auto const& shortcut : *answer)
            leftOut_.remove(shortcut.id);
    }
    setState(State::Bound);
}

void PortalSession::end()
{
    isInTransit_ = true;
    request_.reset();
    callOnBus(
        portalCall(portal_.name, path_, sessionInterface, u"Close"_s), endTimeout,
        [self = QPointer(this)](QDBusMessage const&) {
            if (self)
                self->ended();
        },
        portal_.bus);
}

void PortalSession::ended()
{
    isEnded_ = true;
    if (auto const done = std::exchange(onEnd_, nullptr))
        done();
    else
        create();
}

void PortalSession::setState(State state)
{
    state_ = state;
    if (events_.onState)
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
    if (!onPressed)
        return;
    onPressed(arguments.at(1).toString(), static_cast<std::uint32_t>(arguments.at(2).toULongLong()),
        options.value(u"activation_token"_s).toString());
}

void PortalSession::closed(QDBusMessage const& /*signal*/)
{
    // The desktop took the hotkeys back.
    setState(State::Declined);
}

} // namespace quillbar::platform
