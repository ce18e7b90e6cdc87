#pragma once

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace quillbar::testing {

/// The one application object of the test program, on the platform plug-in that QT_QPA_PLATFORM
/// names, by default without a display.
inline QApplication& application()
{
    static QApplication* const instance = [] {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argumentCount = 1;
        static char name[] = "test";
        static char* arguments[] = { name, nullptr };
        return new QApplication(argumentCount, arguments);
    }();
    return *instance;
}

/// Runs the event loop until the condition holds; false when it does not within a minute.
inline bool waitUntil(std::function<bool()> const& condition)
{
    QDeadlineTimer const deadline(60'000);
    // What other processes do wakes no loop here.
    QTimer tick;
    tick.start(5);
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

} // namespace quillbar::testing
