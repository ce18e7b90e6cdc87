#include "contract/Backend.h"

#include <QApplication>
#include <QWidget>
#include <gtest/gtest.h>

namespace quillbar::test {

void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void runUntil(std::function<bool()> const& isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void closeAlert()
{
    QApplication::activeModalWidget()->close();
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
