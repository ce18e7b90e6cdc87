#pragma once

#include "platform/linux/dbus/DBusStruct.h"
#include "platform/linux/tray/MenuExport.h"

#include <QDBusContext>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace quillbar::platform {

/// A row with its children, as deep as they were asked for; each child is a MenuLayout too.
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QVariantList children;

    static auto fields(auto& self) { return std::tie(self.id, self.properties, self.children); }
};

/// What the person did with a row in the host's menu.
struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;

    static auto fields(auto& self)
    {
        return std::tie(self.id, self.name, self.data, self.timestamp);
    }
};

/// Shows a menu to hosts on the bus (com.canonical.dbusmenu, version 3) and carries out the clicks
/// that they report, through the event loop. Calls come from anybody: each is answered, none is
/// trusted. Main thread.
class DBusMenu : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version MEMBER version_ CONSTANT)
    Q_PROPERTY(QString Status MEMBER status_ CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QStringList IconThemePath MEMBER iconThemePath_ CONSTANT)

public:
    static constexpr auto objectPath = "/MenuBar";

    DBusMenu();

    /// Tells the hosts, if the menu looks different from the last one.
    void setMenu(std::shared_ptr<Menu const> menu);

    /// Called when a host opens the menu, by whichever of the calls that hosts send then.
    std::function<void()> onOpen;

    // The names are the interface's. QtDBus looks up the types of parameters by their full names.
    // NOLINTBEGIN(readability-identifier-naming, readability-redundant-access-specifiers)
public Q_SLOTS:
    uint GetLayout(
        int parentId, int depth, QStringList const& names, quillbar::platform::MenuLayout& layout);
    QList<MenuRowProperties> GetGroupProperties(QList<int> const& ids, QStringList const& names);
    QDBusVariant GetProperty(int id, QString const& name);
    void Event(int id, QString const& name, QDBusVariant const& data, uint timestamp);
    QList<int> EventGroup(QList<quillbar::platform::MenuEvent> const& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(QList<int> const& ids, QList<int>& unknownIds);

Q_SIGNALS:
    void ItemsPropertiesUpdated(QList<quillbar::platform::MenuRowProperties> const& updated,
        QList<quillbar::platform::MenuRowRemovals> const& removed);
    void LayoutUpdated(uint revision, int parentId);
    // NOLINTEND(readability-identifier-naming, readability-redundant-access-specifiers)

private:
    [[nodiscard]] static QString textDirection();
    /// Null, and the call is answered with an error, when no row has that id.
    MenuExport::Row const* rowOrError(int id);
    void sendUnknownRow();
    MenuLayout layoutOf(MenuExport::Row const& row, int depth, QStringList const& names);
    void handleEvent(MenuExport::Row const& row, QString const& name, uint timestamp);
    void opened(int id);

    uint const version_ = 3;
    QString const status_ = QStringLiteral("normal");
    QStringList const iconThemePath_;
    MenuExport export_;
};

} // namespace quillbar::platform
