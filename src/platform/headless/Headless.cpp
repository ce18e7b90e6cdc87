// The record, and the platform functions that only write into it or answer from it.

#include "platform/headless/Headless.h"

#include "platform/Application.h"
#include "platform/Folders.h"
#include "platform/LoginEntry.h"
#include "platform/Symbols.h"
#include "platform/Updater.h"
#include "platform/Workspace.h"

#include <utility>

namespace quillbar::platform {

namespace headless {

namespace {

Record theRecord;

} // namespace

Record& record()
{
    return theRecord;
}

void reset()
{
    // The old record may hold the last reference to a controller, whose destructor uses the new
    // one.
    [[maybe_unused]] auto const forgotten = std::exchange(theRecord, Record());
}

} // namespace headless

using headless::record;

// There are no events, so the loop also ends when no work is waiting.
int runApplication(int /*argumentCount*/, char** /*arguments*/,
    std::function<std::shared_ptr<ApplicationDelegate>()> const& makeDelegate)
{
    auto const delegate = makeDelegate();
    delegate->applicationDidFinishLaunching();
    while (!record().isTerminated && !record().waitingWork.empty())
        headless::advance(std::chrono::milliseconds(1));
    delegate->applicationWillTerminate();
    return 0;
}

void terminate()
{
    record().journal.emplace_back("terminate");
    record().isTerminated = true;
}

void installMainMenu(Menu menu)
{
    record().journal.emplace_back("installMainMenu");
    record().mainMenu = std::move(menu);
}

void setApplicationIcon(std::function<Image(double size)> /*iconOfSize*/)
{
    record().journal.emplace_back("setApplicationIcon");
}

void activateIgnoringOtherApps()
{
    record().journal.emplace_back("activateIgnoringOtherApps");
}

AlertAnswer runModal(Alert const& alert)
{
    record().journal.emplace_back("runModal");
    record().shownAlerts.push_back(alert);
    if (auto const onAlert = record().onAlert)
        onAlert(alert);
    headless::runPosted();
    auto& answers = record().alertAnswers;
    if (answers.empty()) {
        return { .button = alert.buttons.size() - 1,
            .text = alert.accessory ? alert.accessory->text : std::string() };
    }
    auto answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

void requestNotificationAuthorization(std::function<void()> done)
{
    record().journal.emplace_back("requestNotificationAuthorization");
    if (record().notificationAuthorization == NotificationAuthorization::NotDetermined)
        record().notificationAuthorization = record().notificationAnswer;
    auto const answered = std::move(done);
    answered();
}

void queryNotificationAuthorization(std::function<void(NotificationAuthorization)> done)
{
    auto const answered = std::move(done);
    answered(record().notificationAuthorization);
}

void postNotification(Notification notification)
{
    record().journal.emplace_back("postNotification");
    record().postedNotifications.push_back(std::move(notification));
}

void openAddress(std::string const& /*address*/)
{
    record().journal.emplace_back("openAddress");
}

bool hasSecuritySettings()
{
    return true;
}

void openSecuritySettings()
{
    record().journal.emplace_back("openSecuritySettings");
}

void writeLoginEntry(LoginEntry const& /*entry*/)
{
    record().journal.emplace_back("writeLoginEntry");
}

void removeLoginEntry(std::string const& /*label*/)
{
    record().journal.emplace_back("removeLoginEntry");
}

namespace {

class RecordingUpdater final : public Updater {
public:
    void checkForUpdates() override { record().journal.emplace_back("checkForUpdates"); }
};

} // namespace

std::unique_ptr<Updater> startUpdater()
{
    record().journal.emplace_back("startUpdater");
    return std::make_unique<RecordingUpdater>();
}

std::vector<std::filesystem::path> applicationSupportFolders()
{
    return record().applicationSupportFolders;
}

std::filesystem::path stateFolder()
{
    return record().stateFolder;
}

std::string executablePath()
{
    return "/opt/Quillbar/quillbar";
}

std::string bundleVersion()
{
    return "1.2.3";
}

bool symbolExists(std::string_view name)
{
    return !record().missingSymbols.contains(name);
}

std::optional<Image> bundleImage(std::string_view /*name*/, Size /*size*/)
{
    return std::nullopt;
}

} // namespace quillbar::platform
