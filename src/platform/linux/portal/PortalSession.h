#pragma once

#include "platform/linux/dbus/DBusStruct.h"
#include "platform/linux/portal/PortalRequest.h"

#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace quillbar::platform {

/// A hotkey that the portal is asked for.
struct PortalShortcut {
    QString id;
    QString description;
    QString trigger;

    friend bool operator==(PortalShortcut const&, PortalShortcut const&) = default;
};

/// What the portal is told of a hotkey, or tells of it.
struct ShortcutProperties {
    QString id;
    QVariantMap properties;

    static auto fields(auto& self) { return std::tie(self.id, self.properties); }
};

/// One set of hotkeys at the portal, which takes a set once a session. Destruction gives them back.
/// All sessions have one name, for some desktops keep what the person decided by it: the next one
/// is made when close() has ended the one before. Nothing that the portal says is trusted. Main
/// thread.
class PortalSession final : public QObject {
    Q_OBJECT

public:
    enum class State : std::uint8_t { Asking, Bound, Declined, Failed };

    struct Events {
        /// The state has changed.
        std::function<void()> onState;
        /// The person pressed a hotkey. `token` lets a window come to the front; it may be empty.
        std::function<void(QString const& id, std::uint32_t time, QString const& token)> onPressed;
    };

    PortalSession(Portal portal, std::vector<PortalShortcut> shortcuts, Events events);
    PortalSession(PortalSession const&) = delete;
    PortalSession& operator=(PortalSession const&) = delete;
    ~PortalSession() override;

    [[nodiscard]] State state() const { return state_; }
    /// Whether the desktop left this one of the hotkeys out.
    [[nodiscard]] bool isLeftOut(QString const& id) const { return leftOut_.contains(id); }
    /// Whether the desktop has given the keys of this one to another program.
    [[nodiscard]] bool isTaken(QString const& id) const { return taken_.contains(id); }

    /// Gives the hotkeys back and reports nothing more; `done` is called once, through the event
    /// loop, when the portal has ended the session, and may destroy it.
    void close(std::function<void()> done);

private:
    void create();
    void created(PortalRequest::Response response, QVariantMap const& results);
    [[nodiscard]] bool areBoundBy(QList<ShortcutProperties> const& answer) const;
    void bind();
    void bound(PortalRequest::Response response, QVariantMap const& results);
    void end();
    void ended();
    void setState(State state);
    Q_SLOT void activated(QDBusMessage const& signal);
    Q_SLOT void closed(QDBusMessage const& signal);

    Portal portal_;
    QString path_;
    std::vector<PortalShortcut> shortcuts_;
    Events events_;
    State state_ = State::Asking;
    QSet<QString> leftOut_;
    QSet<QString> taken_;
    /// CreateSession or Close has not been answered yet.
    bool isInTransit_ = false;
    bool isEnded_ = false;
    bool isSecond_ = false;
    std::function<void()> onEnd_;
    std::unique_ptr<PortalRequest> request_;
};

} // namespace quillbar::platform
