#include "platform/Updater.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

namespace quillbar::platform {

namespace {

struct Updates {
    bool hasUpdater = true;
    int checkCount = 0;
};
headless::State<Updates> updates;

class RecordingUpdater final : public Updater {
public:
    void checkForUpdates() override { ++updates->checkCount; }
};

} // namespace

std::unique_ptr<Updater> startUpdater()
{
    headless::note("startUpdater");
    return updates->hasUpdater ? std::make_unique<RecordingUpdater>() : nullptr;
}

namespace headless {

void setHasUpdater(bool hasUpdater)
{
    updates->hasUpdater = hasUpdater;
}

int updateCheckCount()
{
    return updates->checkCount;
}

} // namespace headless

} // namespace quillbar::platform
