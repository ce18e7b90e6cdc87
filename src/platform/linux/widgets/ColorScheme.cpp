#include "platform/linux/widgets/ColorScheme.h"

#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/drawing/Contrast.h"
#include "platform/linux/widgets/Painting.h"

#include <QApplication>
#include <QDBusVariant>
#include <QPointer>
#include <QProxyStyle>
#include <QToolTip>

namespace quillbar::platform {

namespace {

// The call may have to start the portal first.
constexpr std::chrono::milliseconds portalTimeout { 10000 };
constexpr uint noPreference = 0;
constexpr uint prefersDark = 1;

auto const portal = QStringLiteral("org.freedesktop.portal.Desktop");
auto const path = QStringLiteral("/org/freedesktop/portal/desktop");
auto const interface = QStringLiteral("org.freedesktop.portal.Settings");
auto const appearance = QStringLiteral("org.freedesktop.appearance");
auto const colorScheme = QStringLiteral("color-scheme");

QPalette darkPalette()
{
    constexpr QRgb window = 0xff2b2b2b;
    constexpr QRgb base = 0xff1f1f1f;
    constexpr QRgb button = 0xff3c3c3c;
    constexpr QRgb text = 0xfff0f0f0;
    constexpr QRgb disabledText = 0xff8a8a8a;
    constexpr QRgb highlight = 0xff3584e4;

    QPalette palette { QColor(button), QColor(window) };
    for (auto const role :
        { QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText }) {
        palette.setColor(role, QColor(text));
        palette.setColor(QPalette::Disabled, role, QColor(disabledText));
    }
    palette.setColor(QPalette::Base, QColor(base));
    palette.setColor(QPalette::AlternateBase, QColor(window));
    palette.setColor(QPalette::ToolTipBase, QColor(button));
    palette.setColor(QPalette::PlaceholderText, QColor(disabledText));
    palette.setColor(QPalette::Highlight, QColor(highlight));
    palette.setColor(QPalette::HighlightedText, QColor(Qt::white));
    palette.setColor(QPalette::Link, QColor(highlight));
    return palette;
}

/// The same colours, those changed that Qt's widgets use and that cannot be read.
QPalette legibleColors(QPalette palette)
{
    auto const color
        = [&](QPalette::ColorRole role) { return palette.color(QPalette::Active, role); };
    // A field may stand on the window without a background of its own.
    auto const placeholder
        = legible(color(QPalette::PlaceholderText), color(QPalette::Base), textContrast);
    palette.setColor(
        QPalette::PlaceholderText, legible(placeholder, color(QPalette::Window), textContrast));
    palette.setColor(QPalette::Highlight,
        legible(color(QPalette::Highlight), color(QPalette::HighlightedText), textContrast));
    return palette;
}

/// Qt's theme for KDE does not set the colour of placeholders: black, unreadable in dark windows.
class KdeStyle final : public QProxyStyle {
public:
    using QProxyStyle::polish;
    void polish(QPalette& palette) override
    {
        QProxyStyle::polish(palette);
        constexpr double share = 0.5;
        palette.setColor(QPalette::PlaceholderText,
            faded(palette.color(QPalette::Active, QPalette::Text), share));
        palette = legibleColors(palette);
    }
};

QVariant unwrapped(QVariant value)
{
    // Read answers with a variant in a variant, SettingChanged with one.
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

// "Adwaita-dark", "Blackbird", "HighContrastInverse"; "Arc-Darker" has light windows.
bool isNameOfDarkTheme(QByteArray const& theme)
{
    auto const name = theme.toLower().replace("darker", "");
    return name.contains("dark") || name.contains("black") || name.contains("inverse");
}

} // namespace

void ColorScheme::follow()
{
    auto const theme = qgetenv("QT_QPA_PLATFORMTHEME");
    if (theme == "kde")
        QApplication::setStyle(new KdeStyle);
    if (theme != "generic")
        return;
    desktopSettings_.emplace([this] { apply(); });
    light_ = QApplication::palette();
    use(light_);
    apply();
    onSessionBus(this, [this](QDBusConnection bus) {
        // Naming the sender would make Qt wait for the bus to tell its owner.
        bus.connect(QString(), path, interface, QStringLiteral("SettingChanged"), this,
            SLOT(settingChanged(QDBusMessage)));
        askPortal();
    });
}

void ColorScheme::askPortal()
{
    auto call = QDBusMessage::createMethodCall(portal, path, interface, QStringLiteral("Read"));
    call.setArguments({ appearance, colorScheme });
    callOnBus(call, portalTimeout, [self = QPointer(this)](QDBusMessage const& reply) {
        if (self && reply.type() == QDBusMessage::ReplyMessage)
            self->prefer(reply.arguments().value(0));
    });
}

void ColorScheme::settingChanged(QDBusMessage const& signal)
{
    auto const arguments = signal.arguments();
    if (arguments.value(0) == appearance && arguments.value(1) == colorScheme)
        prefer(arguments.value(2));
}

void ColorScheme::prefer(QVariant const& preference)
{
    preference_ = unwrapped(preference).toUInt();
    apply();
}

bool ColorScheme::isDarkWanted() const
{
    if (preference_ == noPreference)
        return isNameOfDarkTheme(desktopSettings_->text("Net/ThemeName"));
    return preference_ == prefersDark;
}

void ColorScheme::apply()
{
    bool const isDark = isDarkWanted();
    if (isDark == isDark_)
        return;
    isDark_ = isDark;
    use(isDark ? darkPalette() : light_);
}

void ColorScheme::use(QPalette const& colors)
{
    auto const palette = legibleColors(colors);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

} // namespace quillbar::platform
