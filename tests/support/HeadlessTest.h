#pragma once

#include "platform/headless/Headless.h"
#include "services/HotkeyManager.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string_view>

namespace quillbar {

namespace headless = platform::headless;

namespace test {

/// A test on the headless backend, with a fresh record and a home of its own.
class HeadlessTest : public testing::Test {
protected:
    HeadlessTest() { reset(); }
    ~HeadlessTest() override
    {
        hotkeyManager().unregisterAll();
        headless::reset();
    }

    void reset()
    {
        headless::reset();
        record.applicationSupportFolders = { home.path() / "Application Support" };
        record.stateFolder = home.path() / "State";
    }

    /// How often a platform function was called.
    [[nodiscard]] long callCount(std::string_view function) const
    {
        return std::ranges::count(record.journal, function);
    }

    TemporaryFolder const home;
    headless::Record& record = headless::record();
};

} // namespace test

} // namespace quillbar
