// A program with a life cycle and nothing else: it tells the named pipe in its environment what
// happens to it. (The desktop's launchers pass no arguments.)

#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "platform/linux/UserAction.h"

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

class Driver : public ApplicationDelegate {
public:
    Driver(Driver const&) = delete;
    Driver& operator=(Driver const&) = delete;
    Driver() = default;
    ~Driver() override { tell(QCoreApplication::instance() ? "gone" : "gone too late"); }

    void applicationDidFinishLaunching() override
    {
        tell("launched " + std::to_string(lastUserAction().time));
        // Work that is never reached keeps what it holds alive.
        postDelayed(std::chrono::hours(1), [held = self.lock()] {});
    }
    void applicationWillTerminate() override { }
    void openSettings() override { tell("settings " + std::to_string(lastUserAction().time)); }
    void openPalette() override { tell("palette " + std::to_string(lastUserAction().time)); }

    std::weak_ptr<Driver> self;
};

} // namespace

int main(int argumentCount, char** arguments)
{
    return runApplication(argumentCount, arguments, [] {
        auto const driver = std::make_shared<Driver>();
        driver->self = driver;
        return driver;
    });
}
