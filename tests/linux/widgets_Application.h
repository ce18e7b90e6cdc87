#pragma once

#include <QApplication>
#include <QTest>

#include <functional>

namespace quillbar::testing {

/// Makes the one application object of the test program, without a display.
inline void application()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argumentCount = 1;
    static char name[] = "test";
    static char* arguments[] = { name, nullptr };
    [[maybe_unused]] static auto const* const instance = new QApplication(argumentCount, arguments);
}

/// Runs the event loop until the condition holds; false when it does not within a minute.
inline bool waitUntil(std::function<bool()> const& condition)
{
    return QTest::qWaitFor(condition, 60'000);
}

} // namespace quillbar::testing
