#pragma once

#include "linux/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace quillbar::testing {

/// One event of the menu's EventGroup call.
struct MenuEvent {
    int id = 0;
    QString name = "clicked";
    QDBusVariant data { 0 };
    uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, MenuEvent const& event);
QDBusArgument const& operator>>(QDBusArgument const& argument, MenuEvent& event);

/// A panel: collects status items, reads one and hears its signals.
class FakeHost : public QDBusVirtualObject {
    Q_OBJECT

public:
    FakeHost(PrivateBus const& bus, QString const& name);
    ~FakeHost() override;

    void becomeWatcher();
    void resign();

    /// Calls the first registered item, whose process is this one.
    QDBusMessage callItem(QString const& method, QVariantList const& arguments = {});
    QDBusMessage callMenu(QString const& method, QVariantList const& arguments = {});
    [[nodiscard]] QVariant property(QString const& name);

    bool handleMessage(QDBusMessage const& message, QDBusConnection const& connection) override;
    [[nodiscard]] QString introspect(QString const& path) const override;

    /// Whether, as the watcher, it claims that something shows the items; tells of a change.
    void setHasHost(bool hasHost);

    QStringList items;
    QStringList signalNames;
    QList<QVariantList> signalArguments;

public Q_SLOTS:
    void hear(QDBusMessage const& signal);

private:
    QDBusMessage call(QString const& path, QString const& interface, QString const& method,
        QVariantList const& arguments);

    QString name_;
    QDBusConnection connection_;
    bool hasHost_ = true;
};

} // namespace quillbar::testing
