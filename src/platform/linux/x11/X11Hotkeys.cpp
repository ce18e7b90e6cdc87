#include "platform/linux/x11/X11Hotkeys.h"

#include "platform/linux/input/UserAction.h"
#include "platform/linux/input/VirtualKeyCodes.h"
#include "platform/linux/x11/WindowActivation.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <QMetaObject>

#include <algorithm>
#include <utility>

namespace quillbar::platform {

namespace {

constexpr std::uint32_t xKeycodeOffset = 8;
constexpr std::uint32_t lastXKeycode = 255;

std::vector<xcb_keycode_t> keycodesFor(std::uint32_t keyCode)
{
    std::vector<xcb_keycode_t> keycodes;
    for (auto const key : evdevKeysFor(keyCode)) {
        if (key + xKeycodeOffset <= lastXKeycode)
            keycodes.push_back(static_cast<xcb_keycode_t>(key + xKeycodeOffset));
    }
    return keycodes;
}

xcb_window_t rootWindow(xcb_connection_t* connection, int screenNumber)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber)
        xcb_screen_next(&screens);
    return screens.data->root;
}

} // namespace

std::shared_ptr<X11Hotkeys> X11Hotkeys::connect(PressHandler onPressed)
{
    int screenNumber = 0;
    Connection connection { xcb_connect(nullptr, &screenNumber) };
    if (xcb_connection_has_error(connection.get()) != 0)
        return nullptr;
    auto const root = rootWindow(connection.get(), screenNumber);
    std::shared_ptr<X11Hotkeys> hotkeys { new X11Hotkeys(
        std::move(connection), root, std::move(onPressed)) };
    return hotkeys->startListening() ? hotkeys : nullptr;
}

X11Hotkeys::X11Hotkeys(Connection connection, xcb_window_t root, PressHandler onPressed)
    : connection_(std::move(connection))
    , root_(root)
    , onPressed_(std::move(onPressed))
    , xInputGrabs_(connection_.get(), root)
{
}

bool X11Hotkeys::startListening()
{
    prefetchXkb(connection_.get());
    ModifierBitsRequest bits { connection_.get() };
    auto const keyboardChange = useXkb(connection_.get());
    if (!keyboardChange)
        return false;
    bits_ = bits.answer();
    auto const onKey = [this](xcb_key_press_event_t const& event) {
        if (event.response_type == XCB_KEY_PRESS)
            keyPressed(event);
        else
            keyReleased(event.detail);
    };
    auto const onKeyboardChange = [this] {
        followKeyboard();
        if (onObstaclesChange)
            onObstaclesChange();
    };
    events_.emplace(connection_.get(), xInputGrabs_, *keyboardChange,
        KeyEventThread::Handlers { onKey, onKeyboardChange });
    return true;
}

X11Hotkeys::Claim X11Hotkeys::makeClaim(
    std::uint32_t keyCode, KeyModifiers modifiers, std::uint32_t id)
{
    return { keycodesFor(keyCode), modifiers, id };
}

Token X11Hotkeys::claim(
    std::uint32_t keyCode, KeyModifiers modifiers, std::uint32_t id, std::string const& /*title*/)
{
    auto claim = makeClaim(keyCode, modifiers, id);
    auto const grabs = grabsOf(claim);
    auto const isOurs = [this](Grab const& grab) { return claimOf(grab.keycode, grab.mask); };
    if (grabs.empty() || std::any_of(grabs.begin(), grabs.end(), isOurs)
        || !(takeOverReleased(claim) || grab(claim)))
        return {};
    claim.isHeld = true;
    auto const number = nextNumber_++;
    claims_.emplace(number, std::move(claim));
    return Token { [weak = weak_from_this(), number] {
        if (auto const self = weak.lock())
            self->release(number);
    } };
}

/// A claim that is refused after a change of the keyboard stays, to be tried again.
void X11Hotkeys::regainLost()
{
    for (auto& [number, claim] : claims_)
        claim.isHeld = claim.isHeld || grab(claim);
}

/// Hotkeys are often given back and claimed anew one after the other, and a press in between would
/// be lost: the server is told of the outcome only.
void X11Hotkeys::release(std::uint64_t number)
{
    auto claim = claims_.extract(number);
    if (!claim.mapped().isHeld)
        return;
    if (released_.empty())
        QMetaObject::invokeMethod(
            &context_, [this] { giveBackReleased(); }, Qt::QueuedConnection);
    released_.push_back(std::move(claim.mapped()));
}

bool X11Hotkeys::takeOverReleased(Claim const& claim)
{
    return std::erase_if(released_, [&](Claim const& released) {
        return released.keycodes == claim.keycodes && released.modifiers == claim.modifiers;
    }) > 0;
}

void X11Hotkeys::giveBackReleased()
{
    for (auto const& claim : std::exchange(released_, {})) {
        for (auto const& [keycode, mask] : grabsOf(claim)) {
            if (!claimOf(keycode, mask))
                xcb_ungrab_key(connection_.get(), keycode, root_, mask);
        }
    }
    xcb_flush(connection_.get());
}

/// A grab fits one exact set of modifiers, so each state of CapsLock and NumLock needs its own.
std::vector<X11Hotkeys::Grab> X11Hotkeys::grabsOf(Claim const& claim) const
{
    auto const mask = bits_.mask(claim.modifiers);
    if (!mask)
        return {};
    std::set<std::uint16_t> locks;
    for (unsigned const lock : { 0u, unsigned { XCB_MOD_MASK_LOCK } }) {
        locks.insert(static_cast<std::uint16_t>(lock));
        locks.insert(static_cast<std::uint16_t>(lock | bits_.numLock));
    }
    std::vector<Grab> grabs;
    for (auto const keycode : claim.keycodes) {
        for (auto const lock : locks)
            grabs.push_back({ keycode, static_cast<std::uint16_t>(*mask | lock) });
    }
    return grabs;
}

X11Hotkeys::Requests X11Hotkeys::sendXInputGrabs(Claim const& claim) const
{
    Requests sent;
    if (!xInputGrabs_.isAvailable())
        return sent;
    for (auto const& [keycode, mask] : grabsOf(claim))
        sent.cookies.push_back(xInputGrabs_.ask(keycode, mask));
    return sent;
}

X11Hotkeys::Requests X11Hotkeys::sendGrabs(Claim const& claim)
{
    auto sent = sendXInputGrabs(claim);
    for (auto const& [keycode, mask] : grabsOf(claim)) {
        sent.grabs.push_back(xcb_grab_key_checked(
            connection_.get(), 0, root_, mask, keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC));
    }
    return sent;
}

/// Requests that are all sent before the first is checked cost one wait together.
bool X11Hotkeys::isAnyRefused(Requests const& sent)
{
    bool isRefused = false;
    for (auto const cookie : sent.cookies)
        isRefused = xInputGrabs_.isTaken(cookie) || isRefused;
    for (auto const cookie : sent.grabs) {
        XcbPtr<xcb_generic_error_t> const error { xcb_request_check(connection_.get(), cookie) };
        isRefused = isRefused || error != nullptr;
    }
    return isRefused;
}

bool X11Hotkeys::grab(Claim const& claim)
{
    auto const sent = sendGrabs(claim);
    bool const isRefused = sent.grabs.empty() || isAnyRefused(sent);
    if (isRefused) {
        ungrab(claim);
        xcb_flush(connection_.get());
    }
    return !isRefused;
}

void X11Hotkeys::ungrab(Claim const& claim)
{
    for (auto const& [keycode, mask] : grabsOf(claim))
        xcb_ungrab_key(connection_.get(), keycode, root_, mask);
}

X11Hotkeys::Claim const* X11Hotkeys::claimOf(xcb_keycode_t keycode, std::uint16_t mask) const
{
    auto const state = bits_.hotkeyState(mask);
    for (auto const& [number, claim] : claims_) {
        auto const& keycodes = claim.keycodes;
        if (bits_.mask(claim.modifiers) == state
            && std::find(keycodes.begin(), keycodes.end(), keycode) != keycodes.end())
            return &claim;
    }
    return nullptr;
}

/// Whether the server gave us one of the grabs already.
bool X11Hotkeys::isHeld(Claim const& claim) const
{
    auto const grabs = grabsOf(claim);
    return std::any_of(grabs.begin(), grabs.end(), [this](Grab const& grab) {
        auto const* const owner = claimOf(grab.keycode, grab.mask);
        return owner != nullptr && owner->isHeld;
    });
}

/// The keyboard is ours from the press of a hotkey to its release, and the server delivers one key
/// event at a time: each has to be let pass before the next one comes.
void X11Hotkeys::keyPressed(xcb_key_press_event_t const& event)
{
    bool const isFirst = held_.empty();
    if (isFirst)
        grabbingKey_ = event.detail;
    bool const isRepeat = !held_.insert(event.detail).second;
    auto const* const claim = isRepeat ? nullptr : claimOf(event.detail, event.state);
    if (claim) {
        noteUserAction(event.time);
        fire(*claim);
    } else if (!isFirst && (isRepeat || bits_.keys.count(event.detail) > 0)) {
        events_->answer(XCB_ALLOW_SYNC_KEYBOARD);
    } else {
        // Somebody types on with the hotkey still down, or pressed what was grabbed for a moment.
        // This ends the grab, and the hotkey's repeating as well.
        held_.clear();
        events_->answer(XCB_ALLOW_REPLAY_KEYBOARD);
    }
}

/// Keys that went down meanwhile may come up unseen later, so they count as released too.
void X11Hotkeys::keyReleased(xcb_keycode_t keycode)
{
    if (keycode == grabbingKey_) {
        held_.clear();
        events_->answer(std::nullopt);
    } else {
        held_.erase(keycode);
        events_->answer(XCB_ALLOW_SYNC_KEYBOARD);
    }
}

void X11Hotkeys::fire(Claim const& claim)
{
    firedModifiers_ = claim.modifiers;
    isHandlerRunning_ = true;
    // A handler that waits for the person, in an event loop of its own, needs the keyboard.
    QMetaObject::invokeMethod(
        &context_, [this] { handlerDone(); }, Qt::QueuedConnection);
    onPressed_(claim.id);
    handlerDone();
}

void X11Hotkeys::handlerDone()
{
    if (!std::exchange(isHandlerRunning_, false))
        return;
    if (auto* const window = windowAwaitingFocus()) {
        lastUserAction().heldModifiers = firedModifiers_;
        focusWait_.start(*window);
    } else {
        events_->answer(XCB_ALLOW_SYNC_KEYBOARD);
    }
}

void X11Hotkeys::followKeyboard()
{
    auto const bits = ModifierBitsRequest { connection_.get() }.answer();
    if (bits == bits_)
        return;
    giveBackReleased();
    for (auto& [number, claim] : claims_) {
        ungrab(claim);
        claim.isHeld = false;
    }
    bits_ = bits;
    regainLost();
}

} // namespace quillbar::platform
