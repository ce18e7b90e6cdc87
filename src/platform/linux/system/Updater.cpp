#include "platform/Updater.h"

#include "platform/Notifications.h"
#include "platform/linux/system/ApplicationId.h"
#include "platform/linux/system/DesktopPrograms.h"

#include <string>

namespace quillbar::platform {

namespace {

class SoftwareCentre final : public Updater {
public:
    void checkForUpdates() override
    {
        openWithDesktop("appstream:" + std::string(applicationId), [] {
            postNotification(
                { "updates", "Quillbar", "Your system’s package manager keeps Quillbar up to date.",
                    NotificationSound::None });
        });
    }
};

} // namespace

std::unique_ptr<Updater> startUpdater()
{
    return std::make_unique<SoftwareCentre>();
}

} // namespace quillbar::platform
