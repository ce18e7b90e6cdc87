#pragma once

#include "platform/linux/tray/DBusMenu.h"
#include "platform/linux/tray/HostRegistration.h"
#include "platform/linux/tray/IconFiles.h"
#include "platform/linux/tray/StatusNotifierItem.h"
#include "platform/linux/tray/XEmbedTray.h"
#include "platform/linux/widgets/StatusMenuWidget.h"
#include "platform/view/StatusItem.h"

#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>

namespace quillbar::platform {

/// The Linux side of a status item: on the bus for hosts of today, in an embedding tray where there
/// is no such host, and the menu that a click opens. Owned by its StatusItem; main thread.
struct NativeStatusItem {
public:
    explicit NativeStatusItem(StatusItem& item);
    NativeStatusItem(NativeStatusItem const&) = delete;
    NativeStatusItem& operator=(NativeStatusItem const&) = delete;
    ~NativeStatusItem();

    void syncButton();
    void syncMenu();

private:
    [[nodiscard]] StatusNotifierCallbacks notifierCallbacks();
    [[nodiscard]] IconAppearance wantedAppearance() const;
    void show(IconAppearance const& appearance);
    /// A square of that many pixels, clear at the edge.
    [[nodiscard]] QImage rendered(int side, Background background) const;
    [[nodiscard]] QList<IconPixmap> const& pixmaps();
    [[nodiscard]] QIcon xEmbedIcon(std::optional<Background> background) const;
    void toggleMenu();
    void hostIs(TrayHost host);

    StatusItem& item_;
    IconFiles files_;
    IconAppearance appearance_;
    std::optional<QList<IconPixmap>> pixmaps_;
    QString toolTip_;
    QTimer hold_;
    /// A dimmed look that came while another was held: the next to be shown.
    std::optional<IconAppearance> nextPulse_;
    QTimer placeWait_;
    DBusMenu menu_;
    StatusNotifierItem notifier_;
    XEmbedTray xEmbedTray_;
    HostRegistration registration_;
    QPointer<StatusMenuWidget> openMenu_;
};

} // namespace quillbar::platform
