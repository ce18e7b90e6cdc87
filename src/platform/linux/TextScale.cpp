#include "platform/linux/TextScale.h"

#include "platform/ChildProcess.h"
#include "platform/linux/desktop/XdgFolders.h"
#include "platform/linux/x11/XSettings.h"

#include <QSettings>
#include <QStringList>

#include <algorithm>
#include <chrono>

namespace quillbar::platform {

namespace {

/// In points, the largest that a desktop with GTK begins with.
constexpr double usualGtkFontSize = 11;

/// A font as GTK describes it: "Sans Bold 14". 0 when there is no size.
double sizeOf(QByteArray const& font)
{
    return font.mid(font.lastIndexOf(' ') + 1).toDouble();
}

double scaleOfKde()
{
    QSettings const settings(
        QString::fromStdString(configHome() / "kdeglobals"), QSettings::IniFormat);
    auto const font = settings.value(QStringLiteral("font")).toStringList();
    return font.value(1).toDouble() / usualKdeFontSize;
}

// GNOME under Wayland tells Qt's clients neither of the two. Its portal would, but the program does
// not wait for D-Bus; gsettings reads a file.
double scaleOfGnome()
{
    auto const value = [](char const* key) {
        auto const output
            = readChildOutput({ "/usr/bin/gsettings", "get", "org.gnome.desktop.interface", key },
                std::chrono::seconds(1));
        return QByteArray::fromStdString(output.value_or("")).trimmed().replace('\'', "");
    };
    return sizeOf(value("font-name")) / usualGtkFontSize * value("text-scaling-factor").toDouble();
}

bool isWayland()
{
    auto const chosen = qgetenv("QT_QPA_PLATFORM");
    return chosen.isEmpty() ? qgetenv("XDG_SESSION_TYPE") == "wayland"
                            : chosen.startsWith("wayland");
}

double wantedScale()
{
    auto const desktop = qgetenv("XDG_CURRENT_DESKTOP");
    if (desktop.contains("KDE"))
        return scaleOfKde();
    if (isWayland())
        return desktop.contains("GNOME") ? scaleOfGnome() : 1;
    return sizeOf(readXSetting("Gtk/FontName")) / usualGtkFontSize;
}

} // namespace

double textScale()
{
    constexpr double largest = 4;
    return std::clamp(wantedScale(), 1.0, largest);
}

} // namespace quillbar::platform
