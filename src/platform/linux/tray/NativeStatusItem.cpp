#include "platform/linux/tray/NativeStatusItem.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"
#include "platform/linux/x11/WindowActivation.h"

#include <QApplication>
#include <QCursor>
#include <QPainter>
#include <QtEndian>

#include <chrono>
#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

// Clients of Wayland cannot place a menu without the click's own event.
MenuOwner menuOwner()
{
    return isWaylandSession() ? MenuOwner::Host : MenuOwner::Program;
}

constexpr auto const* noTrayExplanation
    = "This desktop shows no tray icons. Start Quillbar again to open its settings; Ctrl+Q in its "
      "windows quits it.";

IconPixmap toPixmap(QImage const& image)
{
    auto const argb = image.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap { argb.width(), argb.height(), {} };
    auto const count = qsizetype { argb.width() } * argb.height();
    pixmap.pixels.resize(count * qsizetype { sizeof(quint32) });
    qToBigEndian<quint32>(argb.constBits(), count, pixmap.pixels.data());
    return pixmap;
}

Background likelyBackground()
{
    return isDark(QGuiApplication::palette()) ? Background::Dark : Background::Light;
}

} // namespace

NativeStatusItem::NativeStatusItem(StatusItem& item)
    : item_(item)
    , notifier_(notifierCallbacks(), menuOwner())
    , xEmbedTray_(
          { .icon = [this](std::optional<Background> background) { return xEmbedIcon(background); },
              .toolTip = [this] { return toolTip_; },
              .activate = [this] { toggleMenu(); },
              .askForHost = [this] { registration_.askForHost(); } })
    , registration_([this](TrayHost host) { hostIs(host); })
{
    using namespace std::chrono_literals;
    menu_.onOpen = [this] { item_.userOpenedMenu(); };
    hold_.setSingleShot(true);
    // Plasma and GNOME read an icon up to some 0.3 s after they are told of it.
    hold_.setInterval(450ms);
    QObject::connect(&hold_, &QTimer::timeout, &hold_,
        [this] { show(std::exchange(nextPulse_, std::nullopt).value_or(wantedAppearance())); });
    // At login the panel may well start later.
    placeWait_.setSingleShot(true);
    placeWait_.setInterval(10s);
    QObject::connect(&placeWait_, &QTimer::timeout, &placeWait_, [this] {
        if (!xEmbedTray_.isShown())
            item_.systemReportedUnavailable(noTrayExplanation);
    });
}

NativeStatusItem::~NativeStatusItem()
{
    delete openMenu_;
}

void NativeStatusItem::syncButton()
{
    if (auto toolTip = toQString(item_.button().toolTip()); toolTip != toolTip_) {
        toolTip_ = std::move(toolTip);
        Q_EMIT notifier_.NewToolTip();
        xEmbedTray_.update();
    }
    auto const appearance = wantedAppearance();
    if (!hold_.isActive())
        show(appearance);
    else if (item_.button().alpha() < 1 && appearance != appearance_)
        nextPulse_ = appearance;
}

void NativeStatusItem::syncMenu()
{
    menu_.setMenu(item_.menu());
}

StatusNotifierCallbacks NativeStatusItem::notifierCallbacks()
{
    return {
        .title = [] { return QGuiApplication::applicationDisplayName(); },
        .toolTip = [this] { return toolTip_; },
        .iconName =
            [this] {
                auto appearance = appearance_;
                appearance.isSymbolic = registration_.showsSymbolicIcons();
                return files_.iconName(appearance);
            },
        .iconThemePath = [this] { return files_.folder(); },
        .iconPixmap = [this] { return pixmaps(); },
        .activate = [this] { toggleMenu(); },
        .menuMissed = [this] { item_.userMissedMenu(); },
    };
}

IconAppearance NativeStatusItem::wantedAppearance() const
{
    auto const& button = item_.button();
    IconAppearance appearance;
    appearance.alpha = button.alpha();
    if (button.image()) {
        if (auto const* symbol = std::get_if<SymbolImage>(&*button.image()))
            appearance.symbol = symbol->name;
    }
    if (button.contentTintColor()) {
        appearance.tint = toQColor(*button.contentTintColor(), QGuiApplication::palette());
        // Dimmed, too, the colour would be hard to see.
        appearance.alpha = 1;
    }
    return appearance;
}

void NativeStatusItem::show(IconAppearance const& appearance)
{
    pixmaps_.reset();
    if (appearance != appearance_) {
        appearance_ = appearance;
        hold_.start();
        Q_EMIT notifier_.NewIcon();
    }
    xEmbedTray_.update();
}

QImage NativeStatusItem::rendered(int side, Background background) const
{
    // The margin that other programs' icons have.
    auto const edge = side * 3 / 32;
    auto const& image = item_.button().image();
    QImage result(side, side, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    if (!image)
        return result;
    auto const panelText
        = background == Background::Dark ? QColor(Qt::white) : QColor(0x30, 0x30, 0x30);
    QSizeF const size(side - 2 * edge, side - 2 * edge);
    QPainter painter(&result);
    painter.setOpacity(appearance_.alpha);
    painter.drawImage(QRectF(QPointF(edge, edge), size),
        renderImage(*image,
            { .symbolSize = size,
                .devicePixelRatio = 1,
                .foreground = appearance_.tint.value_or(panelText),
                .palette = QGuiApplication::palette() }));
    return result;
}

QList<IconPixmap> const& NativeStatusItem::pixmaps()
{
    if (!pixmaps_) {
        auto const background = likelyBackground();
        pixmaps_ = { toPixmap(rendered(22, background)), toPixmap(rendered(44, background)) };
    }
    return *pixmaps_;
}

QIcon NativeStatusItem::xEmbedIcon(std::optional<Background> background) const
{
    QIcon icon;
    for (auto const side : { 16, 22, 24, 32, 48 })
        icon.addPixmap(QPixmap::fromImage(rendered(side, background.value_or(likelyBackground()))));
    return icon;
}

void NativeStatusItem::toggleMenu()
{
    if (openMenu_) {
        openMenu_->close();
        return;
    }
    // Before the first menu is there, only a question asked at start can be waiting.
    if (item_.menu()->items.empty()) {
        if (auto* dialog = QApplication::activeModalWidget())
            activateWindow(*dialog->windowHandle());
        return;
    }
    openMenu_ = new StatusMenuWidget(item_.menu());
    openMenu_->popup(QCursor::pos());
    item_.userOpenedMenu();
}

void NativeStatusItem::hostIs(TrayHost host)
{
    xEmbedTray_.setWanted(host == TrayHost::Absent);
    if (host == TrayHost::Present || xEmbedTray_.isShown())
        placeWait_.stop();
    else
        placeWait_.start();
}

void NativeStatusItemDeleter::operator()(NativeStatusItem* native) const
{
    delete native;
}

NativeStatusItem* createNativeStatusItem(StatusItem& item)
{
    return new NativeStatusItem(item);
}

void syncStatusButton(StatusItem const& item)
{
    item.native()->syncButton();
}

void syncStatusMenu(StatusItem const& item)
{
    item.native()->syncMenu();
}

} // namespace quillbar::platform
