#pragma once

#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/input/HotkeyBackend.h"
#include "platform/linux/portal/PortalSession.h"

#include <QDBusServiceWatcher>
#include <QObject>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quillbar::platform {

/// Hotkeys of a desktop that lets no program have the keyboard: its portal
/// (org.freedesktop.portal.GlobalShortcuts) is told which ones the program requests, and the person
/// decides, perhaps on other combinations. Whether a hotkey works is known only later; until then
/// every claim succeeds. Main thread.
class PortalHotkeys final : public QObject,
                            public HotkeyBackend,
                            public std::enable_shared_from_this<PortalHotkeys> {
    Q_OBJECT

public:
    using PressHandler = std::function<void(std::uint32_t id)>;

    explicit PortalHotkeys(PressHandler onPressed);
    PortalHotkeys(PortalHotkeys const&) = delete;
    PortalHotkeys& operator=(PortalHotkeys const&) = delete;
    ~PortalHotkeys() override;

    [[nodiscard]] Token claim(std::uint32_t keyCode, KeyModifiers modifiers, std::uint32_t id,
        std::string const& title) override;
    [[nodiscard]] std::vector<std::optional<HotkeyObstacle>> obstacles(
        std::vector<KeyCombination> const& combinations) override;
    /// The names that the portal is told.
    [[nodiscard]] std::vector<std::string> keyNames(
        std::vector<std::uint32_t> const& keyCodes) override;

private:
    enum class Service : std::uint8_t { Unknown, Absent, Present };

    struct Claim {
        PortalShortcut shortcut;
        std::uint32_t id;
    };

    void release(std::uint64_t number);
    void updateLater();
    void update();
    void start();
    void contact();
    void answered(QDBusMessage const& reply);
    void serviceChanged(Service service);
    void open();
    void sessionChanged();
    void pressed(QString const& id, std::uint32_t time, QString const& token);
    void tellObstacles() const;
    [[nodiscard]] Claim const* claimWith(
        QString PortalShortcut::*property, QString const& value) const;
    [[nodiscard]] std::optional<HotkeyObstacle> obstacle(KeyCombination const& combination) const;

    PressHandler onPressed_;
    SessionBus bus_;
    QDBusServiceWatcher watcher_;
    std::map<std::uint64_t, Claim> claims_;
    std::uint64_t nextNumber_ = 1;
    bool isUpdateDue_ = false;
    Service service_ = Service::Unknown;
    QString portal_;
    int contacts_ = 0;
    /// What the portal was last asked for.
    std::vector<PortalShortcut> asked_;
    std::unique_ptr<PortalSession> session_;
    bool isClosing_ = false;
    bool isDeclined_ = false;
};

} // namespace quillbar::platform
