#include "platform/linux/tray/XEmbedTray.h"

#include "platform/linux/x11/X11Connection.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

// A panel that is both an XEmbed tray and a status-notifier host becomes the tray first.
constexpr std::chrono::milliseconds untilTraysAreSettled { 500 };

// QSystemTrayIcon gives no access to its window.
QWidget* iconWindow()
{
    auto const windows = QApplication::topLevelWidgets();
    auto const found = std::ranges::find(windows, "QSystemTrayIconSys"_L1,
        [](QWidget const* window) { return window->objectName(); });
    return found == windows.end() ? nullptr : *found;
}

} // namespace

XEmbedTray::XEmbedTray(Callbacks callbacks)
    : callbacks_(std::move(callbacks))
{
    later_.setSingleShot(true);
    later_.setInterval(untilTraysAreSettled);
    QObject::connect(&later_, &QTimer::timeout, &later_, [this] {
        isAsked_ = !icon_ && xEmbedTrayWindow() != XCB_WINDOW_NONE;
        if (isAsked_)
            callbacks_.askForHost();
    });
}

XEmbedTray::~XEmbedTray()
{
    setWanted(false);
}

void XEmbedTray::setWanted(bool isWanted)
{
    if (isWanted && std::exchange(isAsked_, false))
        show();
    if (isWanted == isWanted_)
        return;
    isWanted_ = isWanted;
    if (!isWanted) {
        QCoreApplication::instance()->removeNativeEventFilter(this);
        later_.stop();
        isAsked_ = false;
        background_.reset();
        icon_.reset();
        return;
    }
    if (x11Connection() == nullptr)
        return;
    QCoreApplication::instance()->installNativeEventFilter(this);
    later_.start();
}

void XEmbedTray::update()
{
    if (!icon_)
        return;
    icon_->setIcon(callbacks_.icon(background_ ? background_->background() : std::nullopt));
    icon_->setToolTip(callbacks_.toolTip());
}

// A tray that starts announces itself by a client message of the type MANAGER to the root window.
bool XEmbedTray::nativeEventFilter(QByteArray const& eventType, void* message, qintptr* /*result*/)
{
    auto const* const event = x11Event(eventType, message);
    if (icon_ || event == nullptr || x11EventType(*event) != XCB_CLIENT_MESSAGE)
        return false;
    auto const* announcement = reinterpret_cast<xcb_client_message_event_t const*>(event);
    // Qt docks icons on this announcement, too: one made before Qt has read it would be docked
    // twice.
    static auto const manager = x11Atom(x11Connection(), "MANAGER");
    if (announcement->type == manager)
        later_.start();
    return false;
}

// Before its first icon, Qt asks the watcher whether there is a host, and waits up to 50 seconds if
// the watcher hangs; if there were one, Qt would make an item on the bus beside ours, and never a
// window. Right after the watcher's own answer it neither waits nor finds one.
void XEmbedTray::show()
{
    icon_ = std::make_unique<QSystemTrayIcon>();
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
        [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::Context)
                callbacks_.activate();
        });
    update();
    icon_->show();
    if (auto* const window = iconWindow())
        background_ = std::make_unique<TrayBackground>(*window, [this] { update(); });
}

} // namespace quillbar::platform
