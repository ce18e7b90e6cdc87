#pragma once

#include "platform/linux/tray/DBusTypes.h"
#include "platform/linux/tray/MenuExport.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace quillbar::platform {

/// Shows a menu to hosts on the bus (com.canonical.dbusmenu, version 3) and carries out the clicks
/// that they report, through the event loop. Calls come from anybody: each is answered, none is
/// trusted. Main thread.
class DBusMenu : public QDBusVirtualObject {
public:
    static constexpr auto objectPath = "/MenuBar";

    explicit DBusMenu(QDBusConnection connection);
    DBusMenu(DBusMenu const&) = delete;
    DBusMenu& operator=(DBusMenu const&) = delete;
    ~DBusMenu() override;

    /// Tells the hosts, if the menu looks different from the last one.
    void setMenu(std::shared_ptr<Menu const> menu);

    /// Called when a host opens the menu, by whichever of the calls that hosts send then.
    std::function<void()> onOpen;

    bool handleMessage(QDBusMessage const& message, QDBusConnection const& connection) override;
    [[nodiscard]] QString introspect(QString const& path) const override;

private:
    enum class Recognition { Known, Unknown };

    QDBusMessage reply(QDBusMessage const& call);
    QDBusMessage layoutReply(QDBusMessage const& call);
    QDBusMessage groupPropertiesReply(QDBusMessage const& call);
    QDBusMessage propertyOfRowReply(QDBusMessage const& call);
    QDBusMessage eventReply(QDBusMessage const& call);
    QDBusMessage eventGroupReply(QDBusMessage const& call);
    QDBusMessage aboutToShowReply(QDBusMessage const& call);
    QDBusMessage aboutToShowGroupReply(QDBusMessage const& call);

    MenuLayout layout(MenuExport::Row const& row, int depth, QStringList const& names);
    Recognition handleEvent(int id, QString const& event, uint timestamp);
    void opened(int id);
    void emitSignal(QString const& name, QVariantList const& arguments);
    void emitPropertiesUpdated(std::vector<ChangedRow> const& changed);

    QDBusConnection connection_;
    MenuExport export_;
};

} // namespace quillbar::platform
