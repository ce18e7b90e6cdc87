#include "platform/linux/widgets/KeyFilter.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/input/UserAction.h"
#include "platform/linux/input/VirtualKeyCodes.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/widgets/WindowPeer.h"

#include <QApplication>
#include <QPointer>
#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <utility>

namespace quillbar::platform {

namespace {

constexpr std::uint32_t scanCodeOffset = 8;

// The modifier that a key gives; 0 for any other key. Alt with Shift is Qt's Meta key.
KeyModifiers modifierOf(int qtKey)
{
    switch (qtKey) {
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        return commandKey;
    case Qt::Key_Alt:
    case Qt::Key_Meta:
        return optionKey;
    case Qt::Key_Control:
        return controlKey;
    case Qt::Key_Shift:
        return shiftKey;
    default:
        return 0;
    }
}

bool isModifierKey(int qtKey)
{
    return modifierOf(qtKey) != 0 || qtKey == Qt::Key_AltGr || qtKey == Qt::Key_Mode_switch
        || qtKey == Qt::Key_CapsLock || qtKey == Qt::Key_Hyper_L || qtKey == Qt::Key_Hyper_R;
}

// Layouts can put these keys elsewhere, for example Escape on the CapsLock key.
std::optional<std::uint32_t> keyCodeInWindows(int qtKey)
{
    switch (qtKey) {
    case Qt::Key_Return:
        return key::returnKey;
    case Qt::Key_Enter:
        return key::keypadEnter;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return key::tab;
    case Qt::Key_Space:
        return key::space;
    case Qt::Key_Escape:
        return key::escape;
    case Qt::Key_Left:
        return key::leftArrow;
    case Qt::Key_Right:
        return key::rightArrow;
    case Qt::Key_Down:
        return key::downArrow;
    case Qt::Key_Up:
        return key::upArrow;
    default:
        return std::nullopt;
    }
}

/// The modifiers of a hotkey may still be down while the person types into the window that it
/// opened. Notes which of them are, and returns the event without them; null when none is.
std::unique_ptr<QKeyEvent> withoutHotkeyModifiers(QKeyEvent const& event)
{
    auto const pressed = toKeyModifiers(event.modifiers()) & ~modifierOf(event.key());
    auto const held = lastUserAction().heldModifiers &= pressed;
    if (held == 0)
        return nullptr;
    auto text = event.text();
    // Control has turned the letter into a control character.
    if ((held & controlKey) != 0) {
        char32_t const character = xkb_keysym_to_utf32(event.nativeVirtualKey());
        text = character == 0 ? QString() : QString::fromUcs4(&character, 1);
    }
    return std::make_unique<QKeyEvent>(event.type(), event.key(),
        event.modifiers() & ~toQtModifiers(held), event.nativeScanCode(), event.nativeVirtualKey(),
        event.nativeModifiers(), text, event.isAutoRepeat(), static_cast<quint16>(event.count()));
}

void focusChanged(QWidget* /*old*/, QWidget* now)
{
    auto* const window = nativeWindowOf(now);
    auto* const native = now ? nativeViewOf(now) : nullptr;
    if (window && window->portable && native && native->portable)
        window->portable->userFocused(native->portable->shared_from_this());
}

// Qt offers a press to each parent in turn; it is filtered only where it arrives first. The
// application's focus widget would not do: under Wayland a new window gets keys a moment before Qt
// takes it for the active one.
bool isKeyTarget(QObject const& watched)
{
    if (!watched.isWidgetType())
        return false;
    if (auto const* const grabber = QWidget::keyboardGrabber())
        return &watched == grabber;
    auto const* const window = static_cast<QWidget const&>(watched).window();
    auto const* const focused = window->focusWidget();
    return &watched == (focused ? focused : window);
}

// True when the widget was sent the event without a hotkey's modifiers instead.
bool deliverWithoutHotkeyModifiers(QObject& watched, QEvent& event)
{
    bool const isKey = event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
    // An event that a program sent does not tell which keys are down.
    if (!isKey || lastUserAction().heldModifiers == 0 || !event.spontaneous()
        || !isKeyTarget(watched))
        return false;
    auto const meant = withoutHotkeyModifiers(static_cast<QKeyEvent&>(event));
    if (!meant)
        return false;
    QCoreApplication::sendEvent(&watched, meant.get());
    return true;
}

bool isCloseCommand(QKeyEvent const& event)
{
    return event.key() == Qt::Key_Escape
        || (event.key() == Qt::Key_W && event.modifiers() == Qt::ControlModifier);
}

// While its key is held, such a command is carried out once only.
bool isDoneOnce(QKeyEvent const& event)
{
    return isCloseCommand(event) || event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// Sees every key press of the application before the widgets do, notes the mouse, and tells the
/// portable windows which view has the keyboard.
class KeyFilter final : public QObject {
public:
    explicit KeyFilter(QObject* application)
        : QObject(application)
    {
        application->installEventFilter(this);
        connect(qApp, &QApplication::focusChanged, this, focusChanged);
    }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool keyPressed(QWidget& target, QKeyEvent const& event);
    [[nodiscard]] bool hasClosedPopUp(QEvent const& event);
    [[nodiscard]] bool isRepeat(QKeyEvent const& press) const;

    /// When the key went down that an open pop-up was offered.
    std::optional<quint64> popUpKeyTime_;
    /// The key of the last press if that was recorded: its repeats do nothing.
    quint32 recordedScanCode_ = 0;
    quint32 releasedScanCode_ = 0;
    quint64 releaseTime_ = 0;
};

bool KeyFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && isKeyboardGrabWanted()) {
        event->accept();
        return true;
    }
    if (deliverWithoutHotkeyModifiers(*watched, *event) || hasClosedPopUp(*event))
        return true;
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        if (auto* const window = nativeWindowOf(static_cast<QWidget*>(watched)))
            window->noteMouse();
    }
    if (event->type() == QEvent::KeyRelease) {
        releasedScanCode_ = static_cast<QKeyEvent*>(event)->nativeScanCode();
        releaseTime_ = static_cast<QKeyEvent*>(event)->timestamp();
    }
    if (event->type() != QEvent::KeyPress || QApplication::activePopupWidget()
        || !isKeyTarget(*watched))
        return false;
    return keyPressed(static_cast<QWidget&>(*watched), static_cast<QKeyEvent&>(*event));
}

// Qt closes a pop-up before it delivers the press, which under Wayland goes to the window then:
// Escape would close that as well.
bool KeyFilter::hasClosedPopUp(QEvent const& event)
{
    bool const isPopUpOpen = QApplication::activePopupWidget() != nullptr;
    if (event.type() == QEvent::ShortcutOverride && isPopUpOpen)
        popUpKeyTime_ = static_cast<QKeyEvent const&>(event).timestamp();
    if (event.type() != QEvent::KeyPress)
        return false;
    auto const time = std::exchange(popUpKeyTime_, std::nullopt);
    return !isPopUpOpen && time == static_cast<QKeyEvent const&>(event).timestamp();
}

// A repeat is a release and a press of the same time. Qt knows it by the press that waits behind
// the release, which under load comes too late.
bool KeyFilter::isRepeat(QKeyEvent const& press) const
{
    return press.isAutoRepeat()
        || (press.timestamp() != 0 && press.timestamp() == releaseTime_
            && press.nativeScanCode() == releasedScanCode_);
}

bool KeyFilter::keyPressed(QWidget& target, QKeyEvent const& event)
{
    QPointer<NativeWindow> const window = nativeWindowOf(&target);
    bool const isRecording = isKeyboardGrabWanted();
    auto const pressed = translateKey(event, isRecording ? KeyMeaning::Place : KeyMeaning::Layout);
    if (!window || !window->portable || !pressed)
        return false;
    if (!isRepeat(event))
        recordedScanCode_ = isRecording ? event.nativeScanCode() : 0;
    else if (isRecording || isDoneOnce(event) || event.nativeScanCode() == recordedScanCode_)
        return true;
    window->setAttribute(Qt::WA_KeyboardFocusChange);
    if (runKeyDownMonitors(*pressed) == KeyEventResult::Consume)
        return true;
    if (!window || !window->portable)
        return true;
    if (window->portable->userPressedKey(*pressed) == KeyEventResult::Consume)
        return true;
    if (!window || !window->portable
        || window->portable->userPressedFocusKey(*pressed) == KeyEventResult::Consume)
        return true;
    if (!isCloseCommand(event) || window->portable->style() != WindowStyle::TitledClosable)
        return false;
    window->portable->userClosed();
    return true;
}

} // namespace

std::optional<KeyEvent> translateKey(QKeyEvent const& event, KeyMeaning meaning)
{
    if (isModifierKey(event.key()))
        return std::nullopt;
    auto keyCode = meaning == KeyMeaning::Layout ? keyCodeInWindows(event.key()) : std::nullopt;
    if (!keyCode && event.nativeScanCode() > scanCodeOffset)
        keyCode = evdevToVirtualKey(event.nativeScanCode() - scanCodeOffset);
    if (!keyCode)
        return std::nullopt;
    return KeyEvent { *keyCode, toKeyModifiers(event.modifiers()) };
}

void installKeyFilter()
{
    static QPointer<KeyFilter> installed;
    if (!installed)
        installed = new KeyFilter(qApp);
}

void syncKeyboardGrab()
{
    auto* const holder = QWidget::keyboardGrabber();
    auto* const active = nativeWindowOf(QApplication::activeWindow());
    QWidget* const wanted = isKeyboardGrabWanted() ? active : nullptr;
    if (holder == wanted)
        return;
    if (holder && nativeWindowOf(holder) == holder)
        holder->releaseKeyboard();
    if (wanted)
        wanted->grabKeyboard();
}

} // namespace quillbar::platform
