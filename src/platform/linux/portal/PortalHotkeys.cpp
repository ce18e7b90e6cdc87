#include "platform/linux/portal/PortalHotkeys.h"

#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/input/KeyNames.h"
#include "platform/linux/input/UserAction.h"
#include "platform/linux/portal/ApplicationScope.h"

#include <QPointer>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

// The call may have to start the portal first.
constexpr std::chrono::milliseconds startTimeout { 10000 };
constexpr qsizetype longestDescription = 100;

QString descriptionOf(QString const& title)
{
    auto const line = title.simplified();
    return line.size() > longestDescription ? line.left(longestDescription - 1) + u'…' : line;
}

} // namespace

PortalHotkeys::PortalHotkeys(PressHandler onPressed)
    : onPressed_(std::move(onPressed))
    , bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"portal"_s))
    , watcher_(portalName, bus_.connection(), QDBusServiceWatcher::WatchForOwnerChange)
{
    // The portal takes who a program is from its systemd unit, at the connection's first call.
    ApplicationScope::enter([self = QPointer(this)] {
        if (self)
            self->start();
    });
}

PortalHotkeys::~PortalHotkeys()
{
    QDBusConnection::disconnectFromBus(bus_.connection().name());
}

void PortalHotkeys::start()
{
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](QString const&, QString const&, QString const& newOwner) {
            serviceChanged(newOwner.isEmpty() ? Service::Absent : Service::Unknown);
        });
    connect(&bus_, &SessionBus::joined, this, [this](QDBusConnection const& bus) {
        watcher_.setConnection(bus);
        serviceChanged(Service::Unknown);
    });
    contact();
}

Token PortalHotkeys::claim(
    std::uint32_t keyCode, KeyModifiers modifiers, std::uint32_t id, std::string const& title)
{
    auto const trigger = triggerText({ keyCode, modifiers });
    if (!trigger || claimWith(&PortalShortcut::trigger, *trigger))
        return {};
    auto const text = QString::fromStdString(title);
    auto const number = nextNumber_++;
    // Desktops keep to the keys that they know of an id, and hold them for it: KDE would find the
    // keys of another id taken, even by one that is no more.
    claims_.emplace(number, Claim { { *trigger, descriptionOf(text), *trigger }, id });
    updateLater();
    return Token { [weak = weak_from_this(), number] {
        if (auto const self = weak.lock())
            self->release(number);
    } };
}

std::vector<std::optional<HotkeyObstacle>> PortalHotkeys::obstacles(
    std::vector<KeyCombination> const& combinations)
{
    std::vector<std::optional<HotkeyObstacle>> found;
    std::transform(combinations.begin(), combinations.end(), std::back_inserter(found),
        [this](KeyCombination const& combination) { return obstacle(combination); });
    return found;
}

std::vector<std::string> PortalHotkeys::keyNames(std::vector<std::uint32_t> const& keyCodes)
{
    std::vector<std::string> names;
    std::transform(keyCodes.begin(), keyCodes.end(), std::back_inserter(names),
        [](std::uint32_t keyCode) { return nameOfKey(usKeysym(keyCode)); });
    return names;
}

std::optional<HotkeyObstacle> PortalHotkeys::obstacle(KeyCombination const& combination) const
{
    auto const trigger = triggerText(combination);
    if (!trigger)
        return HotkeyObstacle::NoSuchKey;
    if (service_ == Service::Absent)
        return HotkeyObstacle::NoService;
    auto const* const claim = claimWith(&PortalShortcut::trigger, *trigger);
    if (!claim)
        return std::nullopt;
    if (session_ && session_->isTaken(claim->shortcut.id))
        return HotkeyObstacle::Taken;
    if (isDeclined_ || (session_ && session_->isLeftOut(claim->shortcut.id)))
        return HotkeyObstacle::Declined;
    if (session_ && session_->state() == PortalSession::State::Failed)
        return HotkeyObstacle::NoService;
    return std::nullopt;
}

PortalHotkeys::Claim const* PortalHotkeys::claimWith(
    QString PortalShortcut::*property, QString const& value) const
{
    auto const found = std::find_if(claims_.begin(), claims_.end(),
        [&](auto const& entry) { return entry.second.shortcut.*property == value; });
    return found == claims_.end() ? nullptr : &found->second;
}

void PortalHotkeys::release(std::uint64_t number)
{
    claims_.erase(number);
    updateLater();
}

/// Hotkeys are given back and claimed anew one after the other, but a portal that is asked may ask
/// the person: it is told of the outcome only.
void PortalHotkeys::updateLater()
{
    if (!std::exchange(isUpdateDue_, true))
        QMetaObject::invokeMethod(this, &PortalHotkeys::update, Qt::QueuedConnection);
}

void PortalHotkeys::update()
{
    isUpdateDue_ = false;
    std::vector<PortalShortcut> wanted;
    for (auto const& [number, claim] : claims_)
        wanted.push_back(claim.shortcut);
    auto const byId = [](PortalShortcut const& a, PortalShortcut const& b) { return a.id < b.id; };
    std::sort(wanted.begin(), wanted.end(), byId);
    if (wanted == asked_)
        return;
    asked_ = std::move(wanted);
    isDeclined_ = false;
    if (service_ == Service::Absent)
        contact();
    else
        open();
    tellObstacles();
}

void PortalHotkeys::contact()
{
    // Newer portals know programs outside of sandboxes by this only, and only before other calls.
    bus_.connection().send(
        portalCall(portalName, portalPath, "org.freedesktop.host.portal.Registry", u"Register"_s,
            { QLatin1String(applicationId), QVariantMap() }));
    auto const call = portalCall(portalName, portalPath, "org.freedesktop.DBus.Properties",
        u"Get"_s, { QLatin1String(globalShortcutsInterface), u"version"_s });
    callOnBus(
        call, startTimeout,
        [self = QPointer(this), number = ++contacts_](QDBusMessage const& reply) {
            if (self && number == self->contacts_)
                self->answered(reply);
        },
        bus_.connection());
}

void PortalHotkeys::answered(QDBusMessage const& reply)
{
    bool const isPresent = reply.type() == QDBusMessage::ReplyMessage;
    service_ = isPresent ? Service::Present : Service::Absent;
    portal_ = isPresent ? reply.service() : QString();
    open();
    tellObstacles();
}

void PortalHotkeys::serviceChanged(Service service)
{
    session_.reset();
    isClosing_ = false;
    portal_.clear();
    service_ = service;
    if (service == Service::Absent)
        tellObstacles();
    else
        contact();
}

void PortalHotkeys::open()
{
    if (session_) {
        if (std::exchange(isClosing_, true))
            return;
        session_->close([this] {
            isClosing_ = false;
            session_.reset();
            open();
        });
        return;
    }
    if (portal_.isEmpty() || asked_.empty() || isDeclined_)
        return;
    session_ = std::make_unique<PortalSession>(Portal { bus_.connection(), portal_ }, asked_,
        PortalSession::Events { .onState = [this] { sessionChanged(); },
            .onPressed
            = [this](auto const& id, auto time, auto const& token) { pressed(id, time, token); } });
}

void PortalHotkeys::sessionChanged()
{
    isDeclined_ = session_->state() == PortalSession::State::Declined;
    tellObstacles();
}

void PortalHotkeys::pressed(QString const& id, std::uint32_t time, QString const& token)
{
    auto const* const claim = claimWith(&PortalShortcut::id, id);
    if (!claim)
        return;
    noteUserAction(time);
    lastUserAction().activationToken = token;
    onPressed_(claim->id);
}

void PortalHotkeys::tellObstacles() const
{
    if (onObstaclesChange)
        onObstaclesChange();
}

} // namespace quillbar::platform
