#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <cstdint>
#include <functional>

namespace quillbar::platform {

inline auto const portalName = QStringLiteral("org.freedesktop.portal.Desktop");
inline auto const portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
inline constexpr auto globalShortcutsInterface = "org.freedesktop.portal.GlobalShortcuts";

/// The desktop's portal as it is reached.
struct Portal {
    /// A connection for the portal alone: it takes who a program is from the connection's first
    /// call.
    QDBusConnection bus;
    /// The bus's own name of the process behind it.
    QString name;
};

/// A call of the desktop's portal; `portal` is one of its names.
[[nodiscard]] QDBusMessage portalCall(QString const& portal, QString const& path,
    char const* interface, QString const& method, QVariantList const& arguments = {});

/// A path below the portal's that belongs to the program on `bus`, with `token` at its end.
[[nodiscard]] QString portalObjectPath(
    QDBusConnection const& bus, QLatin1String kind, QString const& token);

/// A question to the portal that the person may be asked first, so that its answer comes in a
/// signal of its own, however late. Destroying it before that cancels it. Main thread.
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    enum class Response : std::uint8_t { Success, Declined, Failed };
    using Done = std::function<void(Response response, QVariantMap const& results)>;

    /// Calls the method of GlobalShortcuts with `arguments` and, as the last one, `options`. `done`
    /// is called once, through the event loop, and may destroy the request.
    PortalRequest(Portal portal, QString const& method, QVariantList arguments, QVariantMap options,
        Done done);
    PortalRequest(PortalRequest const&) = delete;
    PortalRequest& operator=(PortalRequest const&) = delete;
    ~PortalRequest() override;

private:
    Q_SLOT void responded(QDBusMessage const& signal);
    void finish(Response response, QVariantMap const& results);

    Portal portal_;
    QString path_;
    Done done_;
};

} // namespace quillbar::platform
