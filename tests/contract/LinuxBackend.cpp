#include "contract/Backend.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace quillbar::test {

void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

// What never comes is ended by the test's own time limit.
void waitUntil(std::function<bool()> const& isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

std::chrono::milliseconds now()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

} // namespace quillbar::test

int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The session that the tests run in must not see their status items.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    QApplication const application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
