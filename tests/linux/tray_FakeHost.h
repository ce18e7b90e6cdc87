#pragma once

#include "linux/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace quillbar::testing {

/// A panel: collects status items, reads one and hears its signals.
class FakeHost : public QDBusVirtualObject {
    Q_OBJECT

public:
    FakeHost(PrivateBus const& bus, QString const& name);

    void becomeWatcher();
    /// Goes by the second name that Cinnamon's watcher has; to be called before.
    void becomeCinnamon();
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

public Q_SLOTS:
    void hear(QDBusMessage const& signal);

private:
    QDBusMessage call(QString const& path, QString const& interface, QString const& method,
        QVariantList const& arguments);

    QDBusConnection connection_;
    bool hasHost_ = true;
};

} // namespace quillbar::testing
