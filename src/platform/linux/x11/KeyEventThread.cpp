#include "platform/linux/x11/KeyEventThread.h"

#include "platform/linux/process/BlockingWait.h"
#include "platform/linux/x11/X11Connection.h"

#include <QMetaObject>

#include <chrono>
#include <sys/socket.h>
#include <utility>

namespace quillbar::platform {

namespace {

using namespace std::chrono_literals;

// Nobody can type meanwhile. With the way to this thread and back it stays below 1.5 seconds.
constexpr auto longestHold = 1400ms;

} // namespace

KeyEventThread::KeyEventThread(xcb_connection_t* connection, XInputGrabs const& xInputGrabs,
    std::uint8_t keyboardChange, Handlers handlers)
    : connection_(connection)
    , xInputGrabs_(xInputGrabs)
    , keyboardChange_(keyboardChange)
    , handlers_(std::move(handlers))
    , thread_([this] { run(); })
{
}

KeyEventThread::~KeyEventThread()
{
    {
        std::lock_guard const lock(mutex_);
        isEnding_ = true;
    }
    isAnswered_.notify_one();
    // Nothing else ends the wait for an event.
    ::shutdown(xcb_get_file_descriptor(connection_), SHUT_RDWR);
    thread_.join();
}

void KeyEventThread::run()
{
    // Events that another thread read while it waited for a reply come here, too.
    while (XcbPtr<xcb_generic_event_t> const event { xcb_wait_for_event(connection_) })
        read(*event);
}

void KeyEventThread::read(xcb_generic_event_t const& event)
{
    auto const type = x11EventType(event);
    if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE)
        readKey(reinterpret_cast<xcb_key_press_event_t const&>(event));
    else if (type == XCB_GE_GENERIC)
        xInputGrabs_.passOn(event);
    else if (type == keyboardChange_ && !isChangeSent_.exchange(true))
        QMetaObject::invokeMethod(
            &context_,
            [this] {
                isChangeSent_ = false;
                handlers_.onKeyboardChange();
            },
            Qt::QueuedConnection);
}

void KeyEventThread::readKey(xcb_key_press_event_t const& key)
{
    std::unique_lock lock(mutex_);
    bool const isBehind = handled_ != sent_;
    awaited_ = ++sent_;
    QMetaObject::invokeMethod(
        &context_, [this, key, number = sent_] { handOver(key, number); }, Qt::QueuedConnection);
    // A main thread that has not come to the key before will not come to this one.
    auto const limit = isBehind || BlockingWait::isOngoing() ? 0ms : longestHold;
    if (!isAnswered_.wait_for(lock, limit, [this] { return isEnding_ || awaited_ == 0; }))
        allow(XCB_ALLOW_SYNC_KEYBOARD);
    awaited_ = 0;
}

void KeyEventThread::handOver(xcb_key_press_event_t const& key, std::uint32_t number)
{
    {
        std::lock_guard const lock(mutex_);
        handled_ = number;
    }
    handlers_.onKey(key);
}

void KeyEventThread::answer(std::optional<xcb_allow_t> mode)
{
    std::lock_guard const lock(mutex_);
    if (awaited_ != handled_)
        return;
    if (mode)
        allow(*mode);
    awaited_ = 0;
    isAnswered_.notify_one();
}

void KeyEventThread::allow(xcb_allow_t mode)
{
    xcb_allow_events(connection_, static_cast<std::uint8_t>(mode), XCB_CURRENT_TIME);
    xcb_flush(connection_);
}

} // namespace quillbar::platform
