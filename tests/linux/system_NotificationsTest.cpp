#include "linux/PrivateBus.h"
#include "linux/system_Support.h"
#include "platform/MainQueue.h"
#include "platform/Notifications.h"
#include "platform/Updater.h"
#include "platform/Workspace.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <gtest/gtest.h>

#include <vector>

namespace quillbar::platform {
namespace {

using quillbar::testing::busConfiguration;
using quillbar::testing::PrivateBus;
using quillbar::testing::runUntil;

QString const serviceName = QStringLiteral("org.freedesktop.Notifications");

enum class Answers { Yes, Never };

/// A notification service on a connection of its own.
class FakeService : public QDBusVirtualObject {
public:
    explicit FakeService(QStringList capabilities, Answers answers = Answers::Yes)
        : capabilities_(std::move(capabilities))
        , answers_(answers)
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
        if (answers_ == Answers::Never) {
            message.setDelayedReply(true);
            return true;
        }
        auto const isQuestion = message.member() == QLatin1String("GetCapabilities");
        connection.send(message.createReply(isQuestion ? QVariant(capabilities_) : QVariant(1u)));
        return true;
    }

    [[nodiscard]] QString introspect(QString const&) const override { return {}; }

    QVariantList nextNotification()
    {
        runUntil(
            [this] { return !calls.empty() && calls.back().member() == QLatin1String("Notify"); });
        auto const arguments = calls.back().arguments();
        calls.back() = QDBusMessage();
        return arguments;
    }

    std::vector<QDBusMessage> calls;

private:
    static inline int count_ = 0;

    QStringList capabilities_;
    Answers answers_;
    QString connectionName_ = QStringLiteral("service%1").arg(++count_);
    QDBusConnection connection_;
};

Notification const success { "id", "A <b> & c", "“<y> & \"z\"”", NotificationSound::None };

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
    {
        FakeService service({ QStringLiteral("body"), QStringLiteral("body-markup") });
        postNotification(success);
        auto const arguments = service.nextNotification();
        EXPECT_EQ(arguments.value(3).toString(), QStringLiteral("A <b> & c"));
        EXPECT_EQ(arguments.value(4).toString(), QStringLiteral("“&lt;y&gt; &amp; &quot;z&quot;”"));
        postNotification(success);
        service.nextNotification();
        EXPECT_EQ(service.calls.size(), 3u) << "asked for its capabilities twice";
    }
    FakeService plain({ QStringLiteral("body") });
    postNotification(success);
    EXPECT_EQ(plain.nextNotification().value(4).toString(), QStringLiteral("“<y> & \"z\"”"));
}

TEST_F(Notifications, Authorization_needsAServiceThatRunsOrCanStart)
{
    {
        PrivateBus const bus(busConfiguration(folder.path()));
        EXPECT_EQ(authorization(), NotificationAuthorization::Denied);
        FakeService const service({}, Answers::Never);
        EXPECT_EQ(authorization(), NotificationAuthorization::Authorized);
    }
    // The bus has gone.
    EXPECT_EQ(authorization(), NotificationAuthorization::Denied);
    postNotification(success);
    bool isAsked = false;
    requestNotificationAuthorization([&] { isAsked = true; });
    runUntil([&] { return isAsked; });
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
    FakeService service({}, Answers::Never);
    postNotification(success);
    runUntil([&] { return !service.calls.empty(); });
    bool isAlive = false;
    post([&] { isAlive = true; });
    runUntil([&] { return isAlive; });
    EXPECT_EQ(service.calls.size(), 1u);
}

TEST_F(Notifications, WhatNoProgramCanOpen_isTold)
{
    quillbar::testing::useScratchHome(folder.path());
    PrivateBus const bus(busConfiguration(folder.path()));
    FakeService service({});
    auto const updater = startUpdater();
    ASSERT_NE(updater, nullptr);
    updater->checkForUpdates();
    EXPECT_EQ(service.nextNotification().value(4).toString(),
        QStringLiteral("Your system’s package manager keeps Quillbar up to date."));
    openAddress("https://example.org");
    EXPECT_EQ(service.nextNotification().value(4).toString(),
        QStringLiteral("No program could open “https://example.org”."));
}

} // namespace
} // namespace quillbar::platform
