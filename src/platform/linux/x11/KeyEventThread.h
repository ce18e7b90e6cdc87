#pragma once

#include "platform/linux/x11/XInputGrabs.h"

#include <QObject>
#include <xcb/xcb.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace quillbar::platform {

/// Reads the events of the hotkeys' X connection on a thread of its own and hands them to the main
/// thread. A press of a grabbed key freezes the keyboard of the whole desktop until it is answered;
/// when no answer comes, because the main thread stalls or a window gets no focus, this thread
/// answers within 1.5 seconds.
class KeyEventThread {
public:
    /// Called on the main thread, in the order of the events.
    struct Handlers {
        /// A press or a release, to be followed by one answer().
        std::function<void(xcb_key_press_event_t const&)> onKey;
        /// The keyboard or its mapping changed.
        std::function<void()> onKeyboardChange;
    };

    /// `keyboardChange` is the type of XKB's events. `connection` and `xInputGrabs` outlive this.
    KeyEventThread(xcb_connection_t* connection, XInputGrabs const& xInputGrabs,
        std::uint8_t keyboardChange, Handlers handlers);
    KeyEventThread(KeyEventThread const&) = delete;
    KeyEventThread& operator=(KeyEventThread const&) = delete;
    ~KeyEventThread();

    /// How the server goes on after the key that was handed over last; nothing for a release that
    /// ended the grab by itself. Does nothing when it comes late. Main thread.
    void answer(std::optional<xcb_allow_t> mode);

private:
    void run();
    void read(xcb_generic_event_t const& event);
    void readKey(xcb_key_press_event_t const& key);
    void handOver(xcb_key_press_event_t const& key, std::uint32_t number);
    void allow(xcb_allow_t mode);

    xcb_connection_t* connection_;
    XInputGrabs const& xInputGrabs_;
    std::uint8_t keyboardChange_;
    Handlers handlers_;
    /// Lives on the main thread: what is handed over ends with it.
    QObject context_;
    /// A change waits in the main queue: the server sends several events for one new mapping.
    std::atomic<bool> isChangeSent_ = false;
    std::mutex mutex_;
    std::condition_variable isAnswered_;
    /// Keys are numbered from 1: the last one handed over, the last one that the main thread began
    /// to handle, and the one whose answer is waited for, or 0.
    std::uint32_t sent_ = 0;
    std::uint32_t handled_ = 0;
    std::uint32_t awaited_ = 0;
    bool isEnding_ = false;
    std::thread thread_;
};

} // namespace quillbar::platform
