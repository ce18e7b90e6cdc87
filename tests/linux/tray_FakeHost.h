#pragma once

#include "linux/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace quillbar::testing {

/// A panel: collects status items, reads one and hears its signals.
class FakeHost : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hasHost_)

public:
    explicit FakeHost(PrivateBus const& bus);

    void becomeWatcher();
    /// Goes by the second name that Cinnamon's watcher has, and registers anew.
    void becomeCinnamon();

    /// Calls the first registered item, whose process is this one.
    QDBusMessage callItem(QString const& method, QVariantList const& arguments = {});
    QDBusMessage callMenu(QString const& method, QVariantList const& arguments = {});
    [[nodiscard]] QVariant property(QString const& name);

    /// Whether, as the watcher, it claims that something shows the items; tells of a change.
    void setHasHost(bool hasHost);

    QStringList items;
    QStringList signalNames;

public Q_SLOTS:
    void RegisterStatusNotifierItem(QString const& item) { items << item; }
    void hear(QDBusMessage const& signal) { signalNames << signal.member(); }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    QDBusMessage call(QString const& path, QString const& interface, QString const& method,
        QVariantList const& arguments);

    QDBusConnection connection_;
    bool hasHost_ = true;
};

} // namespace quillbar::testing
