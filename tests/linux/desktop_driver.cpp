// A program with a life cycle and nothing else: it tells the named pipe in its environment what
// happens to it. (The desktop's launchers pass no arguments.)

#include "platform/Application.h"
#include "platform/MainQueue.h"

#include <QCoreApplication>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

using namespace quillbar::platform;

namespace {

void tell(std::string const& line)
{
    std::ofstream(std::getenv("DRIVER_MAILBOX"), std::ios::app) << line << std::endl;
}

struct Driver : ApplicationDelegate, std::enable_shared_from_this<Driver> {
    ~Driver() override { tell(QCoreApplication::instance() ? "gone" : "gone too late"); }

    void applicationDidFinishLaunching() override
    {
        tell("launched");
        // Work that is never reached keeps what it holds alive.
        postDelayed(std::chrono::hours(1), [held = shared_from_this()] {});
    }
    void applicationWillTerminate() override
    {
        post([held = shared_from_this()] {});
    }
    void openSettings() override { tell("settings"); }
    void openPalette() override { tell("palette"); }
    bool runPinned(std::string const& name) override
    {
        tell("run " + name);
        return name == "Ä";
    }
};

} // namespace

int main(int argumentCount, char** arguments)
{
    return runApplication(argumentCount, arguments, [] { return std::make_shared<Driver>(); });
}
