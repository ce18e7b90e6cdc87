#include "linux/Support.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar::testing {

namespace fs = std::filesystem;

void startApplication()
{
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = { name, nullptr };
    static auto const* const application = new QCoreApplication(count, arguments);
    static_cast<void>(application);
}

void runUntil(std::function<bool()> const& isDone)
{
    while (!isDone()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
}

std::string readFile(fs::path const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

void useScratchHome(fs::path const& folder)
{
    ::setenv("HOME", folder.c_str(), 1);
    ::setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    ::setenv("XDG_DATA_DIRS", (folder / "system").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
    ::setenv("XDG_CONFIG_DIRS", (folder / "etc").c_str(), 1);
}

Mailbox::Mailbox(fs::path path)
    : path_(std::move(path))
{
    // Open for writing too, so that it never comes to its end.
    if (::mkfifo(path_.c_str(), S_IRWXU) != 0
        || (descriptor_ = ::open(path_.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC)) < 0)
        throw std::runtime_error("no mailbox");
}

Mailbox::~Mailbox()
{
    ::close(descriptor_);
}

std::string Mailbox::nextLine()
{
    std::string line;
    runUntil([&] {
        char next = 0;
        while (::read(descriptor_, &next, 1) == 1) {
            if (next == '\n')
                return true;
            line += next;
        }
        return false;
    });
    return line;
}

QString busConfiguration(fs::path const& folder)
{
    auto const services = folder / "services";
    fs::create_directories(services);
    auto const file = folder / "bus.conf";
    std::ofstream(file) << "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
                           "<auth>EXTERNAL</auth><servicedir>"
                        << services.string()
                        << "</servicedir><policy context=\"default\">"
                           "<allow send_destination=\"*\" eavesdrop=\"true\"/>"
                           "<allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                           "</policy><limit name=\"max_message_size\">100000</limit>"
                           "</busconfig>\n";
    return QStringLiteral("--config-file=%1").arg(QString::fromStdString(file.string()));
}

} // namespace quillbar::testing
