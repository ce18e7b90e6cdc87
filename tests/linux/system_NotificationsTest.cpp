#include "linux/PrivateBus.h"
#include "linux/system_Support.h"
#include "platform/Notifications.h"
#include "platform/Updater.h"
#include "platform/Workspace.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace quillbar::platform {
namespace {

using quillbar::testing::busConfiguration;
using quillbar::testing::PrivateBus;
using quillbar::testing::runUntil;

QString const serviceName = QStringLiteral("org.freedesktop.Notifications");

/// A notification service on a connection of its own.
class FakeService : public QDBusVirtualObject {
public:
    enum class Capabilities { Markup, Plain, Error, NoAnswer };

    explicit FakeService(Capabilities capabilities)
        : capabilities_(capabilities)
        , connection_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName_))
    {
        connection_.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), this);
        EXPECT_TRUE(connection_.registerService(serviceName));
    }
    FakeService(FakeService const&) = delete;
    FakeService& operator=(FakeService const&) = delete;
    ~FakeService() override
    {
        connection_.unregisterService(serviceName);
        QDBusConnection::disconnectFromBus(connectionName_);
    }

    bool handleMessage(QDBusMessage const& message, QDBusConnection const& connection) override
    {
        calls.push_back(message);
        bool const isQuestion = message.member() == QLatin1String("GetCapabilities");
        if (isQuestion && capabilities_ == Capabilities::NoAnswer)
            message.setDelayedReply(true);
        else if (isQuestion && capabilities_ == Capabilities::Error)
            connection.send(message.createErrorReply(QDBusError::Failed, {}));
        else if (isQuestion)
            connection.send(message.createReply(QVariant(capabilities_ == Capabilities::Markup
                    ? QStringList { QStringLiteral("body-markup") }
                    : QStringList {})));
        else
            connection.send(message.createReply(1u));
        return true;
    }

    [[nodiscard]] QString introspect(QString const&) const override { return {}; }

    QString nextText()
    {
        runUntil(
            [this] { return !calls.empty() && calls.back().member() == QLatin1String("Notify"); });
        auto const text = calls.back().arguments().value(4).toString();
        calls.clear();
        return text;
    }

    std::vector<QDBusMessage> calls;

private:
    static inline int count_ = 0;

    Capabilities capabilities_;
    QString connectionName_ = QStringLiteral("service%1").arg(++count_);
    QDBusConnection connection_;
};

using Capabilities = FakeService::Capabilities;

Notification const success { "id", "Quillbar", "“<y> & \"z\"”", NotificationSound::None };

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

TEST_F(Notifications, Text_isEscapedAsTheServiceOfTheMomentWantsIt)
{
    PrivateBus const bus(busConfiguration(folder.path()));
    auto const plain = QStringLiteral("“<y> & \"z\"”");
    auto const escaped = QStringLiteral("“&lt;y&gt; &amp; &quot;z&quot;”");
    for (auto const& [capabilities, text] : { std::pair(Capabilities::Markup, escaped),
             std::pair(Capabilities::Plain, plain), std::pair(Capabilities::Error, escaped) }) {
        FakeService service(capabilities);
        postNotification(success);
        EXPECT_EQ(service.nextText(), text);
    }
}

TEST_F(Notifications, Authorization_needsAServiceThatRunsOrCanStart)
{
    {
        PrivateBus const bus(busConfiguration(folder.path()));
        EXPECT_EQ(authorization(), NotificationAuthorization::Denied);
        FakeService const service(Capabilities::NoAnswer);
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

TEST_F(Notifications, HungService_neverBlocks)
{
    PrivateBus const bus(busConfiguration(folder.path()));
    FakeService service(Capabilities::NoAnswer);
    postNotification(success);
    runUntil([&] { return !service.calls.empty(); });
    bool isAsked = false;
    requestNotificationAuthorization([&] { isAsked = true; });
    runUntil([&] { return isAsked; });
    EXPECT_EQ(service.calls.size(), 1u);
}

TEST_F(Notifications, WhatNoProgramCanOpen_isTold)
{
    quillbar::testing::useScratchHome(folder.path());
    PrivateBus const bus(busConfiguration(folder.path()));
    FakeService service(Capabilities::Plain);
    auto const updater = startUpdater();
    ASSERT_NE(updater, nullptr);
    updater->checkForUpdates();
    EXPECT_EQ(service.nextText(),
        QStringLiteral("Your system’s package manager keeps Quillbar up to date."));
    openAddress("https://example.org");
    EXPECT_EQ(service.nextText(), QStringLiteral("No program could open “https://example.org”."));
}

} // namespace
} // namespace quillbar::platform
