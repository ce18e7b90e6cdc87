#pragma once

#include "platform/linux/dbus/DBusStruct.h"

#include <QByteArray>
#include <QDBusContext>
#include <QDBusObjectPath>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace quillbar::platform {

/// One size of an icon: pixels of alpha, red, green, blue in this order of bytes.
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;

    static auto fields(auto& self) { return std::tie(self.width, self.height, self.pixels); }
};

struct ToolTip {
    QString iconName;
    QList<IconPixmap> iconPixmap;
    QString title;
    QString text;

    static auto fields(auto& self)
    {
        return std::tie(self.iconName, self.iconPixmap, self.title, self.text);
    }
};

/// Who renders the menu on a left click.
enum class MenuOwner { Program, Host };

/// What a status-notifier host sees. Every value is asked for only when a host reads it.
struct StatusNotifierCallbacks {
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
class StatusNotifierItem : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category MEMBER category_ CONSTANT)
    Q_PROPERTY(QString Id MEMBER id_ CONSTANT)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status MEMBER status_ CONSTANT)
    Q_PROPERTY(int WindowId MEMBER windowId_ CONSTANT)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QString IconThemePath READ iconThemePath)
    Q_PROPERTY(QList<IconPixmap> IconPixmap READ iconPixmap)
    Q_PROPERTY(ToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu MEMBER itemIsMenu_ CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu MEMBER menu_ CONSTANT)

public:
    StatusNotifierItem(StatusNotifierCallbacks callbacks, MenuOwner menuOwner);

    // The names are the interface's.
    // NOLINTBEGIN(readability-identifier-naming, readability-redundant-access-specifiers)
public Q_SLOTS:
    void Activate(int x, int y);
    void ContextMenu(int x, int y);
    void SecondaryActivate(int /*x*/, int /*y*/) { }
    void Scroll(int /*delta*/, QString const& /*orientation*/) { }
    void ProvideXdgActivationToken(QString const& token);

Q_SIGNALS:
    void NewIcon();
    void NewToolTip();
    // NOLINTEND(readability-identifier-naming, readability-redundant-access-specifiers)

private:
    [[nodiscard]] QString title() const { return callbacks_.title(); }
    [[nodiscard]] QString iconName() const { return callbacks_.iconName(); }
    [[nodiscard]] QString iconThemePath() const { return callbacks_.iconThemePath(); }
    [[nodiscard]] QList<IconPixmap> iconPixmap() const { return callbacks_.iconPixmap(); }
    [[nodiscard]] ToolTip toolTip() const { return { {}, {}, callbacks_.toolTip(), {} }; }
    void callLater(std::function<void()> const& callback);

    StatusNotifierCallbacks callbacks_;
    QString const category_ = QStringLiteral("ApplicationStatus");
    QString const id_ = QStringLiteral("quillbar");
    QString const status_ = QStringLiteral("Active");
    int const windowId_ = 0;
    bool const itemIsMenu_;
    QDBusObjectPath const menu_;
};

} // namespace quillbar::platform
