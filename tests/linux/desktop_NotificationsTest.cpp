#include "linux/PrivateBus.h"
#include "linux/Support.h"
#include "platform/Notifications.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <gtest/gtest.h>

#include <utility>

namespace quillbar::platform {
namespace {

using quillbar::testing::busConfiguration;
using quillbar::testing::PrivateBus;
using quillbar::testing::runUntil;

QString const serviceName = QStringLiteral("org.freedesktop.Notifications");

/// A notification service that does not tell its capabilities.
class FakeService : public QDBusVirtualObject {
public:
    FakeService()
    {
        connection_.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), this);
        EXPECT_TRUE(connection_.registerService(serviceName));
        quillbar::testing::disconnectAfter(*this, connection_);
    }

    bool handleMessage(QDBusMessage const& message, QDBusConnection const& connection) override
    {
        if (message.member() == QLatin1String("GetCapabilities"))
            return connection.send(message.createErrorReply(QDBusError::Failed, {}));
        text_ = message.arguments().value(4).toString();
        return connection.send(message.createReply(1u));
    }

    [[nodiscard]] QString introspect(QString const&) const override { return {}; }

    QString nextText()
    {
        runUntil([this] { return !text_.isEmpty(); });
        return std::exchange(text_, {});
    }

private:
    QDBusConnection connection_
        = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("service"));
    QString text_;
};

class Notifications : public ::testing::Test {
protected:
    Notifications() { quillbar::testing::startApplication(); }

    static NotificationAuthorization authorization()
    {
        auto answer = NotificationAuthorization::NotDetermined;
        queryNotificationAuthorization([&](NotificationAuthorization told) { answer = told; });
        runUntil([&] { return answer != NotificationAuthorization::NotDetermined; });
        return answer;
    }

    quillbar::testing::TemporaryFolder folder;
};

TEST_F(Notifications, Text_isEscapedUntilTheServiceTellsThatItTakesPlainText)
{
    PrivateBus const bus(busConfiguration(folder.path()));
    FakeService service;
    postNotification({ "id", "Quillbar", "“<y> & \"z\"”", NotificationSound::None });
    EXPECT_EQ(service.nextText(), QStringLiteral("“&lt;y&gt; &amp; &quot;z&quot;”"));
}

TEST_F(Notifications, Authorization_needsAServiceThatRunsOrCanStart)
{
    {
        PrivateBus const bus(busConfiguration(folder.path()));
        EXPECT_EQ(authorization(), NotificationAuthorization::Denied);
        FakeService const service;
        EXPECT_EQ(authorization(), NotificationAuthorization::Authorized);
    }
    EXPECT_EQ(authorization(), NotificationAuthorization::Denied) << "the bus has gone";
}

TEST_F(Notifications, Authorization_isGivenForAServiceThatTheBusCanStart)
{
    folder.write("services/n.service",
        "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=/bin/false\n");
    PrivateBus const bus(busConfiguration(folder.path()));
    EXPECT_EQ(authorization(), NotificationAuthorization::Authorized);
}

} // namespace
} // namespace quillbar::platform
