#include "ui/HotkeyRecorder.h"

#include "platform/KeyModifiers.h"
#include "platform/view/Window.h"
#include "ui/Weakly.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillbar {

using platform::KeyEventResult;

namespace {

constexpr platform::Font titleFont { .size = 12, .family = platform::FontFamily::Monospaced };

/// Caps Lock, the left Control key and Fn (57, 59 and 63) can be recorded like any other key.
constexpr std::array<std::uint32_t, 7> modifierKeys { 54, 55, 56, 58, 60, 61, 62 };

constexpr platform::KeyModifiers recordedModifiers
    = platform::commandKey | platform::optionKey | platform::controlKey | platform::shiftKey;

/// Command comes first, unlike in the platform's own menus.
constexpr std::pair<platform::KeyModifiers, char const*> modifierSymbols[] = {
    { platform::commandKey, "⌘" },
    { platform::optionKey, "⌥" },
    { platform::controlKey, "⌃" },
    { platform::shiftKey, "⇧" },
};

constexpr auto noHotkey = "None";

std::string keyName(std::uint32_t keyCode)
{
    // Codes 0 to 6 are labelled A to G, although their keys are A, S, D, F, H, G and Z: people know
    // their hotkeys by these labels.
    if (keyCode <= 6)
        return std::string(1, static_cast<char>('A' + keyCode));

    switch (keyCode) {
    case 36:
        return "Return";
    case 48:
        return "Tab";
    case 49:
        return "Space";
    case 51:
        return "Delete";
    case 53:
        return "Esc";
    default:
        return "·" + std::to_string(keyCode);
    }
}

/// For a screen reader, which pauses at punctuation marks.
std::string spokenText(std::string text, HotkeyNote const& note)
{
    if (!note.keys.empty())
        text += ", " + note.keys;
    if (!note.problem.empty())
        text += ". " + note.problem;
    std::ranges::replace(text, '\n', ' ');
    return text;
}

} // namespace

HotkeyRecorder::HotkeyRecorder()
{
    setFocusRing(platform::FocusRing::None);
    setFont(titleFont);
    onClick = [this] {
        if (isRecording_)
            stopRecording();
        else
            beginRecording();
    };
}

std::string HotkeyRecorder::label(std::int64_t keyCode, std::uint32_t modifiers)
{
    auto const systemKeyCode = Hotkey { keyCode, modifiers }.systemKeyCode();
    std::string text;
    for (auto const& [bit, symbol] : modifierSymbols) {
        if (modifiers & bit)
            text += symbol;
    }
    return text + keyName(systemKeyCode);
}

void HotkeyRecorder::setHotkey(std::optional<Hotkey> const& hotkey)
{
    displayString_ = hotkey ? label(hotkey->keyCode, hotkey->modifiers) : std::string();
    refreshTitle();
}

void HotkeyRecorder::setPlaceholderString(std::string placeholder)
{
    placeholder_ = std::move(placeholder);
    refreshTitle();
}

void HotkeyRecorder::setNote(HotkeyNote note)
{
    note_ = std::move(note);
    refreshNote();
}

void HotkeyRecorder::cancelRecording()
{
    if (isRecording_)
        stopRecording();
}

void HotkeyRecorder::beginRecording()
{
    isRecording_ = true;
    displayString_.clear();
    placeholder_ = "Press keys…";
    refreshTitle();
    if (auto* const owner = window()) {
        hadFocus_ = owner->firstResponder().get() == this;
        owner->makeFirstResponder(nullptr);
        stopWhenWindowCloses();
    }
    monitor_ = platform::addKeyDownMonitor(
        weakly(*this,
            [](HotkeyRecorder& self, platform::KeyEvent const& event) {
                return self.keyPressed(event);
            }),
        platform::KeyMonitorReach::GrabKeyboard);
}

void HotkeyRecorder::stopRecording()
{
    monitor_.reset();
    isRecording_ = false;
    if (displayString_.empty())
        displayString_ = noHotkey;
    refreshTitle();
    // beginRecording() took the focus from this control; Tab continues from here.
    auto* const owner = window();
    if (std::exchange(hadFocus_, false) && owner && !owner->firstResponder())
        owner->makeFirstResponder(shared_from_this());
}

void HotkeyRecorder::stopWhenWindowCloses()
{
    // Observers cannot be removed, so each window gets only one.
    if (observedWindow_.lock().get() == window())
        return;
    observedWindow_ = window()->weak_from_this();
    window()->addWillCloseObserver(
        weakly(*this, [](HotkeyRecorder& self) { self.cancelRecording(); }));
}

KeyEventResult HotkeyRecorder::keyPressed(platform::KeyEvent const& event)
{
    if (!isRecording_ || std::ranges::find(modifierKeys, event.keyCode) != modifierKeys.end())
        return KeyEventResult::Pass;
    auto const modifiers = event.modifiers & recordedModifiers;
    displayString_ = label(event.keyCode, modifiers);
    note_ = {};
    stopRecording();
    if (auto const callback = onRecord)
        callback(event.keyCode, modifiers);
    return KeyEventResult::Consume;
}

void HotkeyRecorder::refreshTitle()
{
    bool const isEmpty = displayString_.empty();
    auto const& text = isEmpty ? placeholder_ : displayString_;
    setAttributedTitle(platform::AttributedText {
        .text = text,
        .font = titleFont,
        .color = isEmpty ? platform::SystemColor::PlaceholderText : platform::SystemColor::Label,
    });
    refreshNote();
}

void HotkeyRecorder::refreshNote()
{
    auto note = isRecording_ ? HotkeyNote {} : note_;
    // "None" stands there after a recording without a key, too, which leaves the hotkey as it was.
    if (displayString_ == noHotkey)
        note.problem.clear();
    if (note.problem.empty())
        setImage(std::nullopt);
    else
        setImage(platform::SymbolImage { .name = "exclamationmark.triangle.fill",
            .accessibilityDescription = {},
            .size = std::nullopt,
            .tint = platform::SystemColor::Red });
    bool const needsBreak = !note.keys.empty() && !note.problem.empty();
    setToolTip(isRecording_ ? "Press the new keys, or click again to leave."
                            : note.keys + (needsBreak ? "\n" : "") + note.problem);
    // The accessible name says whose hotkey it is, so the text goes into the description.
    setAccessibilityDescription(spokenText(attributedTitle()->text, note));
}

} // namespace quillbar
