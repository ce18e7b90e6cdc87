#pragma once

#include "platform/Application.h"

#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quillbar::platform {

/// What a launcher gave this process so that its window may come to the front; each may be empty.
struct LaunchTokens {
    std::string activationToken;
    std::string startupId;

    [[nodiscard]] static LaunchTokens fromEnvironment();
};

/// The X server's time of the launch in a startup id; 0 when it tells none.
[[nodiscard]] std::uint32_t launchTime(std::string const& startupId);

/// This program on the session bus (org.freedesktop.Application): one process a session, and its
/// commands for launchers, key bindings and a second start. Main thread.
class DesktopApplication : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Instance : std::uint8_t { First, Second };

    /// Answers from now on; what is asked of the delegate waits for serve().
    DesktopApplication();

    /// Claims the program's name; `done` is called through the event loop, after the messages for
    /// which the bus started this process have arrived. Without a bus every process is the first.
    static void claimName(std::function<void(Instance)> done);

    /// Tells the first instance that the program was started again; `done` is called through the
    /// event loop, also when it does not answer in time.
    static void activateFirst(LaunchTokens const& tokens, std::function<void()> done);

    /// Carries out what was asked for, and from now on at once. A plain activation from before was
    /// this very launch and opens nothing.
    void serve(std::shared_ptr<ApplicationDelegate> const& delegate);

    // The names are the interface's.
    // NOLINTBEGIN(readability-identifier-naming, readability-redundant-access-specifiers)
public Q_SLOTS:
    void Activate(QVariantMap const& platformData);
    void Open(QStringList const& uris, QVariantMap const& platformData);
    void ActivateAction(
        QString const& name, QVariantList const& parameter, QVariantMap const& platformData);
    // NOLINTEND(readability-identifier-naming, readability-redundant-access-specifiers)

private:
    using Request = void (ApplicationDelegate::*)();

    void perform(Request request, QVariantMap const& platformData);
    void runPinned(QString const& name);

    /// Null before serve().
    std::weak_ptr<ApplicationDelegate> delegate_;
    std::vector<std::function<void()>> waiting_;
};

} // namespace quillbar::platform
