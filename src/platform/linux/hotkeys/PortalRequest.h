#pragma once

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

/// A call of the desktop's portal; `portal` is the bus's own name of the process behind it.
[[nodiscard]] QDBusMessage portalCall(QString const& portal, QString const& path,
    char const* interface, QString const& method, QVariantList const& arguments = {});

/// A path below the portal's that belongs to this program, with `token` at its end.
[[nodiscard]] QString portalObjectPath(QLatin1String kind, QString const& token);

/// A token that no request or session of this process had before.
[[nodiscard]] QString newPortalToken();

/// A question to the portal that the person may be asked first, so that its answer comes in a
/// signal of its own, however late. Destroyed before that, it is taken back. Main thread.
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    enum class Response : std::uint8_t { Success, Declined, Failed };
    using Done = std::function<void(Response response, QVariantMap const& results)>;

    /// Calls the method of GlobalShortcuts with `arguments` and, as the last one, `options`. `done`
    /// is called once, through the event loop, and may destroy the request.
    PortalRequest(QString portal, QString const& method, QVariantList arguments,
        QVariantMap options, Done done);
    PortalRequest(PortalRequest const&) = delete;
    PortalRequest& operator=(PortalRequest const&) = delete;
    ~PortalRequest() override;

private:
    Q_SLOT void responded(QDBusMessage const& signal);
    void finish(Response response, QVariantMap const& results);

    QString portal_;
    QString path_;
    Done done_;
};

} // namespace quillbar::platform
