#include "linux/PrivateBus.h"
#include "linux/system_Support.h"
#include "platform/linux/system/DesktopApplication.h"
#include "platform/linux/system/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>
#include <gtest/gtest.h>

#include <cstdlib>

namespace quillbar::platform {
namespace {

using quillbar::testing::ask;
using quillbar::testing::busConfiguration;
using quillbar::testing::Mailbox;
using quillbar::testing::PrivateBus;
using quillbar::testing::Process;

class Applications : public ::testing::Test {
protected:
    Applications()
    {
        quillbar::testing::startApplication();
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        ::setenv("DRIVER_MAILBOX", mailbox.path().c_str(), 1);
        for (auto const* name : { "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN" })
            ::unsetenv(name);
    }

    /// The reply's error name; empty for success.
    static std::string call(QString const& method, QVariantList const& arguments)
    {
        auto message = QDBusMessage::createMethodCall(QStringLiteral("com.quillbar.Quillbar"),
            QStringLiteral("/com/quillbar/Quillbar"), QStringLiteral("org.freedesktop.Application"),
            method);
        message.setArguments(arguments);
        return ask(QDBusConnection::sessionBus(), message).errorName().toStdString();
    }

    static std::string act(QString const& action)
    {
        return call(QStringLiteral("ActivateAction"), { action, QVariantList {}, QVariantMap {} });
    }

    std::string const driver = SYSTEM_DRIVER;
    quillbar::testing::TemporaryFolder folder;
    Mailbox mailbox { folder.path() / "mailbox" };
};

TEST_F(Applications, StartByTheBus_opensNothingOfItself)
{
    folder.write(
        "services/q.service", "[D-BUS Service]\nName=com.quillbar.Quillbar\nExec=" + driver + "\n");
    PrivateBus const bus(busConfiguration(folder.path()));
    EXPECT_EQ(act(QStringLiteral("quit")), "");
    auto const isRunning
        = busCall(QStringLiteral("NameHasOwner"), { QStringLiteral("com.quillbar.Quillbar") });
    while (ask(QDBusConnection::sessionBus(), isRunning).arguments().constFirst().toBool()) { }

    EXPECT_EQ(call(QStringLiteral("Activate"), { QVariantMap {} }), "");
    EXPECT_EQ(mailbox.nextLine(), "launched 0");
    EXPECT_EQ(act(QStringLiteral("palette")), "");
    EXPECT_EQ(mailbox.nextLine(), "palette 0");
    EXPECT_EQ(call(QStringLiteral("Open"), { QStringList {}, QVariantMap {} }), "");
    EXPECT_EQ(mailbox.nextLine(), "settings 0");
    EXPECT_EQ(act(QStringLiteral("quit")), "");
    EXPECT_EQ(mailbox.nextLine(), "gone");
}

TEST_F(Applications, Calls_thatMakeNoSenseAreRefused)
{
    PrivateBus const bus(busConfiguration(folder.path()));
    Process const first({ driver });
    mailbox.nextLine();
    auto const* const invalid = "org.freedesktop.DBus.Error.InvalidArgs";
    EXPECT_EQ(act(QStringLiteral("about")), invalid);
    EXPECT_EQ(call(QStringLiteral("Activate"), { QStringLiteral("x") }), invalid);
    EXPECT_EQ(call(QStringLiteral("ActivateAction"), { 1, 2, 3 }), invalid);
    EXPECT_NE(call(QStringLiteral("Quit"), {}), "");
}

TEST_F(Applications, NoDisplay_isSaidInOneLine)
{
    Process program({ "sh", "-c", "exec \"$0\" 2>\"$DRIVER_MAILBOX\"", driver },
        { { "DISPLAY", "" }, { "WAYLAND_DISPLAY", "" }, { "QT_QPA_PLATFORM", "" } });
    EXPECT_EQ(mailbox.nextLine(),
        "quillbar: no graphical session: neither DISPLAY nor WAYLAND_DISPLAY is set");
    EXPECT_EQ(program.waitStatus(), 1);
}

TEST(LaunchTime, StartupId_tellsItOnlyAtItsEnd)
{
    EXPECT_EQ(launchTime("panel-1-host-program_TIME123456"), 123456u);
    for (auto const* id : { "", "x", "x_TIME", "x_TIME12x", "x_TIME-1", "x_TIME4294967296" })
        EXPECT_EQ(launchTime(id), 0u) << id;
}

} // namespace
} // namespace quillbar::platform
