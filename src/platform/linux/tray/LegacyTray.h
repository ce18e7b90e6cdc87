#pragma once

#include <QAbstractNativeEventFilter>
#include <QIcon>
#include <QString>

#include <functional>
#include <memory>

class QSystemTrayIcon;

namespace quillbar::platform {

/// The status item in a tray of the older kind, which embeds windows (X11 only). Main thread.
class LegacyTray : private QAbstractNativeEventFilter {
public:
    /// Both are called when there is a tray and the icon is needed.
    struct Face {
        std::function<QIcon()> icon;
        std::function<QString()> toolTip;
        std::function<void()> activate;
    };

    explicit LegacyTray(Face face);
    LegacyTray(LegacyTray const&) = delete;
    LegacyTray& operator=(LegacyTray const&) = delete;
    ~LegacyTray() override;

    /// While wanted, the icon is in the tray as soon as there is one.
    void setWanted(bool isWanted);
    void update();

private:
    bool nativeEventFilter(QByteArray const& eventType, void* message, qintptr* result) override;
    void showIfThereIsATray();

    Face face_;
    bool isWanted_ = false;
    std::unique_ptr<QSystemTrayIcon> icon_;
};

} // namespace quillbar::platform
