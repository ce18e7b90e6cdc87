#pragma once

#include "platform/linux/tray/DBusTypes.h"
#include "platform/linux/tray/PropertyReply.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>

#include <functional>
#include <vector>

namespace quillbar::platform {

/// Who renders the menu on a left click.
enum class MenuOwner { Program, Host };

/// What a status-notifier host sees. Every value is asked for only when a host reads it.
struct StatusNotifierFace {
    std::function<QString()> title;
    std::function<QString()> toolTip;
    std::function<QString()> iconName;
    std::function<QString()> iconThemePath;
    std::function<QList<IconPixmap>()> iconPixmap;
    /// The person clicked; called through the event loop.
    std::function<void()> activate;
    /// The person clicked in a host that is to draw the menu and draws none; called likewise.
    std::function<void()> menuMissed;
};

/// The status item on the bus (org.kde.StatusNotifierItem). Main thread.
class StatusNotifierItem : public QDBusVirtualObject {
public:
    static constexpr auto objectPath = "/StatusNotifierItem";

    StatusNotifierItem(QDBusConnection connection, StatusNotifierFace face, MenuOwner menuOwner);
    StatusNotifierItem(StatusNotifierItem const&) = delete;
    StatusNotifierItem& operator=(StatusNotifierItem const&) = delete;
    ~StatusNotifierItem() override;

    void emitNewIcon();
    void emitNewToolTip();

    bool handleMessage(QDBusMessage const& message, QDBusConnection const& connection) override;
    [[nodiscard]] QString introspect(QString const& path) const override;

private:
    [[nodiscard]] std::vector<ReadableProperty> properties() const;
    QDBusMessage reply(QDBusMessage const& call);
    QDBusMessage activateReply(QDBusMessage const& call);
    QDBusMessage contextMenuReply(QDBusMessage const& call);
    void callLater(std::function<void()> const& callback);
    void emitSignal(QString const& name);

    QDBusConnection connection_;
    StatusNotifierFace face_;
    MenuOwner menuOwner_;
};

} // namespace quillbar::platform
