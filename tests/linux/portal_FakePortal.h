#pragma once

#include "linux/PrivateBus.h"
#include "platform/linux/portal/PortalSession.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <vector>

namespace quillbar::testing {

/// The desktop's portal as far as it concerns hotkeys, scripted. It goes with its name and its
/// connection, as a portal that ends does.
class FakePortal : public QDBusVirtualObject {
public:
    explicit FakePortal(PrivateBus const& bus);

    /// The members of the calls since the start, in order; of Close the path's kind too.
    QStringList calls;
    /// What was asked for last.
    std::vector<platform::PortalShortcut> asked;
    /// The last session that was asked for.
    QString sessionPath;

    /// Takes the shortcuts from CreateSession and keeps them, as KDE's portal does.
    bool takesAtCreation = false;
    /// Triggers that another program has.
    QStringList taken;
    /// Answers BindShortcuts with that, at once; not at all when it is empty.
    QVariantList answer { 0u, QVariantMap() };

    /// Answers the last BindShortcuts.
    void respond(QVariantList const& arguments);
    /// The person presses a hotkey.
    void activate(QString const& session, QString const& id, QVariantMap const& options = {});
    void emitSignal(QString const& path, QString const& interface, QString const& name,
        QVariantList const& arguments);

    /// Answers for systemd's user manager too.
    void becomeUnitManager();

    bool handleMessage(QDBusMessage const& message, QDBusConnection const& connection) override;
    [[nodiscard]] QString introspect(QString const& path) const override;

private:
    void createSession(QDBusMessage const& call);
    void readAsked(QVariant const& shortcuts);
    /// A shortcut that is new is answered with its wish.
    QVariant keptShortcuts();
    void bindShortcuts(QDBusMessage const& call);
    /// Where the program of that call expects the object of that kind.
    static QString pathFor(QDBusMessage const& call, QString const& kind, QVariant const& token);

    static inline int count_ = 0;

    QDBusConnection connection_;
    QString bindRequest_;
    QString openSession_;
    QStringList known_;
};

} // namespace quillbar::testing
