#pragma once

#include "platform/linux/hotkeys/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QObject>
#include <QSet>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace quillbar::platform {

/// A hotkey as the portal is told of it.
struct PortalShortcut {
    QString id;
    QString description;
    QString trigger;

    friend bool operator==(PortalShortcut const&, PortalShortcut const&) = default;
};

QDBusArgument& operator<<(QDBusArgument& argument, PortalShortcut const& shortcut);
QDBusArgument const& operator>>(QDBusArgument const& argument, PortalShortcut& shortcut);

/// One set of hotkeys at the portal, which takes a set once a session. Destruction gives them back.
/// Nothing that the portal says is trusted. Main thread.
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

    PortalSession(QString portal, std::vector<PortalShortcut> shortcuts, Events events);
    PortalSession(PortalSession const&) = delete;
    PortalSession& operator=(PortalSession const&) = delete;
    ~PortalSession() override;

    [[nodiscard]] State state() const { return state_; }
    /// Whether the desktop left this one of the hotkeys out.
    [[nodiscard]] bool isLeftOut(QString const& id) const { return leftOut_.contains(id); }

private:
    void created(PortalRequest::Response response, QVariantMap const& results);
    void bind();
    void bound(PortalRequest::Response response, QVariantMap const& results);
    void setState(State state);
    Q_SLOT void activated(QDBusMessage const& signal);
    Q_SLOT void closed(QDBusMessage const& signal);

    QString portal_;
    QString path_;
    std::vector<PortalShortcut> shortcuts_;
    Events events_;
    State state_ = State::Asking;
    QSet<QString> leftOut_;
    std::unique_ptr<PortalRequest> request_;
};

} // namespace quillbar::platform

Q_DECLARE_METATYPE(quillbar::platform::PortalShortcut)
