#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QPalette>
#include <QVariant>

namespace quillbar::platform {

/// Gives the program dark colours while the desktop prefers them, which it tells through its
/// portal (org.freedesktop.portal.Settings). Nothing changes where there is no portal, or where the
/// person chose a Qt theme, which brings colours of its own. Main thread.
class ColorScheme final : public QObject {
    Q_OBJECT

public:
    /// Asks at once, follows every change, and never waits.
    void follow();

private:
    Q_SLOT void settingChanged(QDBusMessage const& signal);
    void apply(QVariant const& preference);

    bool isDark_ = false;
    QPalette light_;
};

} // namespace quillbar::platform
