#pragma once

#include "platform/linux/tray/DBusMenu.h"
#include "platform/linux/tray/HostRegistration.h"
#include "platform/linux/tray/IconFiles.h"
#include "platform/linux/tray/LegacyTray.h"
#include "platform/linux/tray/StatusMenu.h"
#include "platform/linux/tray/StatusNotifierItem.h"
#include "platform/view/StatusItem.h"

#include <QDBusConnection>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>

namespace quillbar::platform {

/// The Linux side of a status item: on the bus for hosts of today, in an embedding tray where there
/// is no such host, and the menu that a click opens. Owned by its StatusItem; main thread.
struct NativeStatusItem {
public:
    NativeStatusItem(StatusItem& item, QDBusConnection const& connection);
    NativeStatusItem(NativeStatusItem const&) = delete;
    NativeStatusItem& operator=(NativeStatusItem const&) = delete;
    ~NativeStatusItem();

    void syncFace();
    void syncMenu();

private:
    [[nodiscard]] StatusNotifierFace notifierFace();
    [[nodiscard]] IconLook wantedLook() const;
    void show(IconLook const& look);
    /// A square of that many pixels, clear at the edge.
    [[nodiscard]] QImage rendered(int side, Ground ground) const;
    [[nodiscard]] QList<IconPixmap> const& pixmaps();
    [[nodiscard]] QIcon legacyIcon(std::optional<Ground> ground) const;
    void toggleMenu();
    void hostIs(TrayHost host);

    StatusItem& item_;
    IconFiles files_;
    IconLook look_;
    std::optional<QList<IconPixmap>> pixmaps_;
    QString toolTip_;
    QTimer hold_;
    /// Begun while another look was held.
    std::optional<IconLook> nextPulse_;
    QTimer placeWait_;
    DBusMenu menu_;
    StatusNotifierItem notifier_;
    LegacyTray legacyTray_;
    HostRegistration registration_;
    QPointer<StatusMenu> openMenu_;
};

} // namespace quillbar::platform
