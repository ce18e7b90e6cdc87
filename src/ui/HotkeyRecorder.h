#pragma once

#include "model/Hotkey.h"
#include "platform/KeyMonitor.h"
#include "platform/Token.h"
#include "platform/view/Button.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillbar {

/// What the settings say about a hotkey besides its label.
struct HotkeyNote {
    /// The combination by the names of its keys; empty when unknown.
    std::string keys;
    /// Why it cannot work, or what it keeps from other programs, as a sentence; may be empty.
    std::string problem;
};

/// The button with which a person sets a hotkey: after a click it takes the next key press and
/// reports the combination; it registers nothing. Also the one formatter of a hotkey as text.
class HotkeyRecorder : public platform::Button {
public:
    HotkeyRecorder();

    /// For example "⌘⌥·17". Ends the program for a key code outside 0 … 2³²−1.
    [[nodiscard]] static std::string label(std::int64_t keyCode, std::uint32_t modifiers);

    /// Shows the hotkey's label, or the placeholder when there is none.
    void setHotkey(std::optional<Hotkey> const& hotkey);
    /// Shown as the tooltip, with a warning sign for a problem; cleared when another hotkey is
    /// recorded.
    void setNote(HotkeyNote note);
    /// Shown greyed while there is no text.
    void setPlaceholderString(std::string placeholder);
    /// Gives the keyboard back; without a recorded key the text is "None". Does nothing unless a
    /// recording is under way.
    void cancelRecording();

    [[nodiscard]] bool isRecording() const { return isRecording_; }

    /// Told of every newly recorded combination. May destroy the recorder.
    std::function<void(std::int64_t keyCode, std::uint32_t modifiers)> onRecord;

private:
    void beginRecording();
    void stopRecording();
    void stopWhenWindowCloses();
    [[nodiscard]] platform::KeyEventResult keyPressed(platform::KeyEvent const& event);
    void refreshTitle();
    void refreshNote();

    platform::Token monitor_;
    bool isRecording_ = false;
    bool hadFocus_ = false;
    std::weak_ptr<platform::Window> observedWindow_;
    std::string displayString_;
    std::string placeholder_;
    HotkeyNote note_;
};

} // namespace quillbar
