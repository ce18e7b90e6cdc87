#pragma once

#include "linux/PrivateDisplay.h"
#include "linux/Support.h"
#include "linux/x11_OtherClient.h"
#include "platform/HotkeyObstacles.h"
#include "platform/KeyModifiers.h"
#include "platform/SystemHotkeys.h"

#include <QGuiApplication>
#include <QProcess>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace quillbar::testing {

constexpr std::uint32_t codeS = 1;
constexpr std::uint32_t codeT = 17;
constexpr std::uint32_t codeF13 = 105;
constexpr std::uint16_t superMask = XCB_MOD_MASK_4;

/// The hotkeys of this process on a display of its own, where another client types.
class X11HotkeysTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        display = std::make_unique<PrivateDisplay>();
        qputenv("QT_QPA_PLATFORM", "xcb");
        static int argumentCount = 1;
        static char name[] = "test";
        static char* arguments[] = { name, nullptr };
        application = std::make_unique<QGuiApplication>(argumentCount, arguments);
    }

    static void TearDownTestSuite()
    {
        application.reset();
        display.reset();
    }

    void SetUp() override
    {
        QProcess::execute("setxkbmap", { "-layout", "us", "-option", "" });
        platform::installHotkeyHandler([this](std::uint32_t id) {
            fired.push_back(id);
            if (onFired)
                onFired(id);
        });
        marker = platform::registerSystemHotkey(
            codeS, platform::commandKey | platform::controlKey, signature, markerId);
        ASSERT_TRUE(marker);
    }

    void TearDown() override { platform::installHotkeyHandler(nullptr); }

    /// What fired so far: a last hotkey, pressed now, comes after everything before.
    std::vector<std::uint32_t> firedUntilNow()
    {
        other.tap({ keyControl, keySuper, keyS });
        runUntil([this] { return std::find(fired.begin(), fired.end(), markerId) != fired.end(); });
        if (!fired.empty())
            fired.pop_back();
        return std::exchange(fired, {});
    }

    static platform::Token claim(std::uint32_t code, std::uint32_t modifiers, std::uint32_t id)
    {
        return platform::registerSystemHotkey(code, modifiers, signature, id);
    }

    static constexpr std::uint32_t signature = 0x5155494C;
    static constexpr std::uint32_t markerId = 99;
    using Ids = std::vector<std::uint32_t>;
    using Obstacles = std::vector<std::optional<platform::HotkeyObstacle>>;
    static inline std::unique_ptr<PrivateDisplay> display;
    static inline std::unique_ptr<QGuiApplication> application;
    OtherClient other;
    std::vector<std::uint32_t> fired;
    std::function<void(std::uint32_t)> onFired;
    platform::Token marker;
};

} // namespace quillbar::testing
