#pragma once

#include "platform/linux/x11/XSettings.h"

#include <QDBusMessage>
#include <QObject>
#include <QPalette>
#include <QVariant>

#include <optional>

namespace quillbar::platform {

/// Gives the program dark colours while the desktop prefers them, which it tells through its
/// portal (org.freedesktop.portal.Settings), or, where that knows of no preference, by the name of
/// its GTK theme (X11). Where a Qt theme brings colours of its own, under KDE or where the person
/// chose one, it stays with them. Main thread.
class ColorScheme final : public QObject {
    Q_OBJECT

public:
    /// Asks at once, follows every change, and never waits.
    void follow();

private:
    void askPortal();
    Q_SLOT void settingChanged(QDBusMessage const& signal);
    void prefer(QVariant const& preference);
    void apply();
    void use(QPalette const& colors);
    [[nodiscard]] bool isDarkWanted() const;

    uint preference_ = 0;
    std::optional<XSettings> desktopSettings_;
    bool isDark_ = false;
    QPalette light_;
};

} // namespace quillbar::platform
