#include "platform/HotkeyObstacles.h"

#include "platform/KeyModifiers.h"
#include "platform/macos/text/Strings.h"

#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace quillbar::platform {

namespace {

struct ModifierGlyph {
    KeyModifiers modifier;
    char const* glyph;
};
// In the order in which menus show them.
constexpr ModifierGlyph modifierGlyphs[] = {
    { controlKey, "⌃" },
    { optionKey, "⌥" },
    { shiftKey, "⇧" },
    { commandKey, "⌘" },
};

struct KeyName {
    std::uint32_t keyCode;
    char const* name;
};
// Keys that type no character of their own, by what menus and keyboards call them.
constexpr KeyName keyNames[] = {
    { kVK_Return, "↩" },
    { kVK_Tab, "⇥" },
    { kVK_Space, "Space" },
    { kVK_Delete, "⌫" },
    { kVK_Escape, "⎋" },
    { kVK_ForwardDelete, "⌦" },
    { kVK_Home, "↖" },
    { kVK_End, "↘" },
    { kVK_PageUp, "⇞" },
    { kVK_PageDown, "⇟" },
    { kVK_LeftArrow, "←" },
    { kVK_RightArrow, "→" },
    { kVK_DownArrow, "↓" },
    { kVK_UpArrow, "↑" },
    { kVK_ANSI_KeypadEnter, "⌤" },
    { kVK_ANSI_KeypadClear, "⌧" },
    { kVK_Help, "Help" },
};

// F1 and those that follow it.
constexpr std::uint32_t functionKeys[]
    = { kVK_F1, kVK_F2, kVK_F3, kVK_F4, kVK_F5, kVK_F6, kVK_F7, kVK_F8, kVK_F9, kVK_F10, kVK_F11,
          kVK_F12, kVK_F13, kVK_F14, kVK_F15, kVK_F16, kVK_F17, kVK_F18, kVK_F19, kVK_F20 };

/// What the key alone types in the present layout, in upper case; nil when that is nothing.
NSString* typedCharacter(std::uint16_t keyCode)
{
    TISInputSourceRef const source = TISCopyCurrentKeyboardLayoutInputSource();
    if (!source)
        return nil;
    NSString* typed = nil;
    if (auto const* const data = static_cast<CFDataRef>(
            TISGetInputSourceProperty(source, kTISPropertyUnicodeKeyLayoutData))) {
        std::array<UniChar, 4> characters {};
        UniCharCount count = 0;
        UInt32 deadKeys = 0;
        UCKeyTranslate(reinterpret_cast<UCKeyboardLayout const*>(CFDataGetBytePtr(data)), keyCode,
            kUCKeyActionDisplay, 0, LMGetKbdType(), kUCKeyTranslateNoDeadKeysMask, &deadKeys,
            characters.size(), &count, characters.data());
        typed = [NSString stringWithCharacters:characters.data() length:count];
    }
    CFRelease(source);
    // Some keys type a control character.
    auto const isShown = typed.length > 0 &&
        [typed rangeOfCharacterFromSet:NSCharacterSet.controlCharacterSet].location == NSNotFound;
    return isShown ? typed.uppercaseString : nil;
}

std::string keyName(std::uint32_t keyCode)
{
    for (auto const& [named, name] : keyNames) {
        if (named == keyCode)
            return name;
    }
    auto const* const function = std::ranges::find(functionKeys, keyCode);
    if (function != std::end(functionKeys))
        return "F" + std::to_string(1 + (function - functionKeys));
    NSString* const typed
        = keyCode <= 0x7F ? typedCharacter(static_cast<std::uint16_t>(keyCode)) : nil;
    auto const isOnKeypad = keyCode >= kVK_ANSI_KeypadDecimal && keyCode <= kVK_ANSI_Keypad9;
    return typed && isOnKeypad ? "Keypad " + utf8(typed) : utf8(typed);
}

std::string combinationName(KeyCombination const& combination)
{
    auto const key = keyName(combination.keyCode);
    if (key.empty())
        return {};
    std::string name;
    for (auto const& [modifier, glyph] : modifierGlyphs) {
        if ((combination.modifiers & modifier) != 0)
            name += glyph;
    }
    return name + key;
}

} // namespace

std::string hotkeyObstacleText(HotkeyObstacle obstacle)
{
    // The only one that this system tells of.
    return obstacle == HotkeyObstacle::Taken
        ? "Another program or macOS itself already uses this combination."
        : "macOS does not offer this combination.";
}

std::vector<std::string> hotkeyNames(std::vector<KeyCombination> const& combinations)
{
    std::vector<std::string> names;
    std::transform(
        combinations.begin(), combinations.end(), std::back_inserter(names), combinationName);
    return names;
}

Token observeHotkeyObstacles(std::function<void()> onChange)
{
    // The names change with the keyboard layout; other programs' claims are not told.
    id const observer = [NSDistributedNotificationCenter.defaultCenter
        addObserverForName:(__bridge NSString*)kTISNotifySelectedKeyboardInputSourceChanged
                    object:nil
                     queue:nil
                usingBlock:^(NSNotification*) {
                    // A copy: it may end the observation, and the block with it.
                    auto const change = onChange;
                    change();
                }];
    return Token { [observer] {
        [NSDistributedNotificationCenter.defaultCenter removeObserver:observer];
    } };
}

} // namespace quillbar::platform
