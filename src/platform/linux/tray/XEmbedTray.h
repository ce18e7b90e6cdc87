#pragma once

#include "platform/linux/tray/TrayBackground.h"

#include <QAbstractNativeEventFilter>
#include <QIcon>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class QSystemTrayIcon;

namespace quillbar::platform {

/// The status item in an XEmbed tray, which embeds a window for each icon (X11 only). Main thread.
class XEmbedTray : private QAbstractNativeEventFilter {
public:
    /// All are called when there is a tray and the icon is needed.
    struct Callbacks {
        /// For that background, or for an unknown one. The picture's corners stay transparent.
        std::function<QIcon(std::optional<Background>)> icon;
        std::function<QString()> toolTip;
        std::function<void()> activate;
        /// Asks the bus once more whether it has a host; setWanted() is called with the answer.
        std::function<void()> askForHost;
    };

    explicit XEmbedTray(Callbacks callbacks);
    XEmbedTray(XEmbedTray const&) = delete;
    XEmbedTray& operator=(XEmbedTray const&) = delete;
    ~XEmbedTray() override;

    /// While wanted, the icon is in the tray as soon as there is one. To be called with true
    /// whenever it was just learned that the bus has no host.
    void setWanted(bool isWanted);
    void update();
    /// Whether a tray has been found.
    [[nodiscard]] bool isShown() const { return icon_ != nullptr; }

private:
    bool nativeEventFilter(QByteArray const& eventType, void* message, qintptr* result) override;
    void show();

    Callbacks callbacks_;
    bool isWanted_ = false;
    // Whether askForHost() was called and is not answered yet.
    bool isAsked_ = false;
    QTimer later_;
    std::unique_ptr<QSystemTrayIcon> icon_;
    std::unique_ptr<TrayBackground> background_;
};

} // namespace quillbar::platform
