#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QStringListModel>
#include <QVBoxLayout>
#include <xcb/xcb.h>

#include <cstdlib>

namespace {

constexpr std::uint8_t keyB = 56;
constexpr std::uint8_t eventTypeMask = 0x7f;

/// A query field above the names that contain what it says.
class Panel final : public QWidget {
public:
    explicit Panel(int nameCount)
        : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    {
        for (int number = 1; number <= nameCount; ++number)
            names_.append(QStringLiteral("Shortcut %1").arg(number));
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(&query_);
        layout->addWidget(&list_);
        list_.setUniformItemSizes(true);
        list_.setModel(&shown_);
        list_.setFocusPolicy(Qt::NoFocus);
        setFixedSize(400, 244);
        connect(&query_, &QLineEdit::textChanged, this, [this](QString const& text) {
            shown_.setStringList(names_.filter(text, Qt::CaseInsensitive));
        });
        connect(&query_, &QLineEdit::returnPressed, this, &QWidget::hide);
        shown_.setStringList(names_);
    }

    void summon()
    {
        query_.clear();
        move(screen()->availableGeometry().center() - rect().center());
        show();
        activateWindow();
        query_.setFocus();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Escape)
            hide();
        else
            QWidget::keyPressEvent(event);
    }

private:
    QStringList names_;
    QLineEdit query_;
    QListView list_;
    QStringListModel shown_;
};

/// Control+Alt+B, from wherever the keyboard is.
class Hotkey final : public QAbstractNativeEventFilter {
public:
    Hotkey(xcb_connection_t* connection, Panel& panel)
        : panel_(panel)
    {
        auto const root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        xcb_grab_key(connection, 0, root, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, keyB,
            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_flush(connection);
    }

    bool nativeEventFilter(QByteArray const& /*type*/, void* message, qintptr* /*result*/) override
    {
        auto const& event = *static_cast<xcb_generic_event_t const*>(message);
        if ((event.response_type & eventTypeMask) != XCB_KEY_PRESS)
            return false;
        auto const& key = reinterpret_cast<xcb_key_press_event_t const&>(event);
        if (key.detail != keyB || key.event != key.root)
            return false;
        panel_.summon();
        return true;
    }

private:
    Panel& panel_;
};

} // namespace

/// The least that a resident panel with a query field can be; its argument is the number of names.
int main(int argumentCount, char** arguments)
{
    QApplication application { argumentCount, arguments };
    QApplication::setQuitOnLastWindowClosed(false);
    auto* const x11 = application.nativeInterface<QNativeInterface::QX11Application>();
    if (argumentCount != 2 || x11 == nullptr)
        return EXIT_FAILURE;
    Panel panel { std::atoi(arguments[1]) };
    Hotkey hotkey { x11->connection(), panel };
    application.installNativeEventFilter(&hotkey);
    return QApplication::exec();
}
