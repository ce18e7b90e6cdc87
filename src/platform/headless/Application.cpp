#include "platform/Application.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

namespace quillbar::platform {

namespace {

struct Application {
    Menu mainMenu;
    int activationCount = 0;
    bool isTerminated = false;
};
headless::State<Application> application;

} // namespace

// With nobody to bring events, a program without waiting work has come to its end.
int runApplication(int /*argumentCount*/, char** /*arguments*/,
    std::function<std::shared_ptr<ApplicationDelegate>()> const& makeDelegate)
{
    auto const delegate = makeDelegate();
    delegate->applicationDidFinishLaunching();
    while (!application->isTerminated && headless::isWorkWaiting())
        headless::advance(std::chrono::milliseconds(1));
    delegate->applicationWillTerminate();
    return 0;
}

void terminate()
{
    headless::note("terminate");
    application->isTerminated = true;
}

void installMainMenu(Menu menu)
{
    headless::note("installMainMenu");
    application->mainMenu = std::move(menu);
}

void activateIgnoringOtherApps()
{
    headless::note("activateIgnoringOtherApps");
    ++application->activationCount;
}

namespace headless {

Menu const& mainMenu()
{
    return application->mainMenu;
}

int activationCount()
{
    return application->activationCount;
}

} // namespace headless

} // namespace quillbar::platform
