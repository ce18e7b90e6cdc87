#include "linux/PrivateBus.h"
#include "linux/Support.h"
#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/desktop/DesktopApplication.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QStringList>
#include <QVariantMap>
#include <gtest/gtest.h>

#include <cstdlib>

namespace quillbar::platform {
namespace {

using namespace quillbar::testing;

/// The reply's error name; empty for success.
std::string call(QString const& method, QVariantList const& arguments)
{
    auto message = QDBusMessage::createMethodCall(
        "com.quillbar.Quillbar", "/com/quillbar/Quillbar", "org.freedesktop.Application", method);
    message.setArguments(arguments);
    return ask(QDBusConnection::sessionBus(), message).errorName().toStdString();
}

std::string act(QString const& action, QVariantList const& parameter = {})
{
    return call("ActivateAction", { action, parameter, QVariantMap {} });
}

TEST(Applications, StartByTheBus_opensNothingOfItself)
{
    startApplication();
    TemporaryFolder const folder;
    Mailbox mailbox(folder.path() / "mailbox");
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("DRIVER_MAILBOX", mailbox.path().c_str(), 1);
    folder.write("services/q.service",
        "[D-BUS Service]\nName=com.quillbar.Quillbar\nExec=" DESKTOP_DRIVER "\n");
    PrivateBus const bus(busConfiguration(folder.path()));
    EXPECT_EQ(act("quit"), "");
    auto const isRunning = busCall("NameHasOwner", { "com.quillbar.Quillbar" });
    while (ask(QDBusConnection::sessionBus(), isRunning).arguments().constFirst().toBool()) { }

    EXPECT_EQ(call("Activate", { QVariantMap {} }), "");
    EXPECT_EQ(mailbox.nextLine(), "launched");
    EXPECT_EQ(act("palette"), "");
    EXPECT_EQ(mailbox.nextLine(), "palette");
    EXPECT_EQ(call("Open", { QStringList {}, QVariantMap {} }), "");
    EXPECT_EQ(mailbox.nextLine(), "settings");
    EXPECT_EQ(act("run", { "Ä" }), "");
    EXPECT_EQ(mailbox.nextLine(), "run Ä");
    EXPECT_NE(act("run", { "B" }), "");
    EXPECT_EQ(mailbox.nextLine(), "run B");
    EXPECT_NE(act("about"), "");
    EXPECT_EQ(act("quit"), "");
    EXPECT_EQ(mailbox.nextLine(), "gone");
}

TEST(Applications, NoDisplay_isSaidInOneLine)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    for (auto const* name : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" })
        environment.remove(name);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(DESKTOP_DRIVER, {});
    program.waitForFinished();
    EXPECT_EQ(program.readAllStandardError(),
        "quillbar: no graphical session: neither DISPLAY nor WAYLAND_DISPLAY is set\n");
    EXPECT_EQ(program.exitCode(), 1);
}

TEST(LaunchTime, StartupId_tellsItOnlyAtItsEnd)
{
    EXPECT_EQ(launchTime("panel-1-host-program_TIME123456"), 123456u);
    for (auto const* id : { "", "x", "x_TIME", "x_TIME12x", "x_TIME-1", "x_TIME4294967296" })
        EXPECT_EQ(launchTime(id), 0u) << id;
}

} // namespace
} // namespace quillbar::platform
