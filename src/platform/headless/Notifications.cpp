#include "platform/Notifications.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

#include <utility>

namespace quillbar::platform {

namespace {

struct Center {
    NotificationAuthorization authorization = NotificationAuthorization::NotDetermined;
    NotificationAuthorization answer = NotificationAuthorization::Denied;
    int requestCount = 0;
    std::vector<Notification> posted;
};
headless::State<Center> center;

} // namespace

void requestNotificationAuthorization(std::function<void()> done)
{
    headless::note("requestNotificationAuthorization");
    ++center->requestCount;
    if (center->authorization == NotificationAuthorization::NotDetermined)
        center->authorization = center->answer;
    auto const answered = std::move(done);
    answered();
}

void queryNotificationAuthorization(std::function<void(NotificationAuthorization)> done)
{
    auto const answered = std::move(done);
    answered(center->authorization);
}

void postNotification(Notification notification)
{
    headless::note("postNotification");
    center->posted.push_back(std::move(notification));
}

namespace headless {

void setNotificationAuthorization(NotificationAuthorization authorization)
{
    center->authorization = authorization;
}

void setNotificationAnswer(NotificationAuthorization answer)
{
    center->answer = answer;
}

int authorizationRequestCount()
{
    return center->requestCount;
}

std::vector<Notification> const& postedNotifications()
{
    return center->posted;
}

} // namespace headless

} // namespace quillbar::platform
