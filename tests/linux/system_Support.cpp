#include "linux/system_Support.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/wait.h>
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

TemporaryFolder::TemporaryFolder()
{
    auto pattern = (fs::temp_directory_path() / "quillbar-test-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder");
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code error;
    fs::remove_all(path_, error);
}

fs::path TemporaryFolder::write(fs::path const& name, std::string const& text) const
{
    auto const file = path_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file;
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

Process::Process(std::vector<std::string> const& arguments, Changes const& changes)
{
    std::vector<std::string> variables;
    for (auto const& [name, value] : changes)
        variables.push_back(name + '=' + value);
    for (auto** entry = environ; *entry; ++entry) {
        std::string text = *entry;
        bool isChanged = false;
        for (auto const& [name, value] : changes)
            isChanged = isChanged || text.starts_with(name + '=');
        if (!isChanged)
            variables.push_back(std::move(text));
    }
    auto const pointers = [](std::vector<std::string> const& texts) {
        std::vector<char*> result;
        for (auto const& text : texts)
            result.push_back(const_cast<char*>(text.c_str()));
        result.push_back(nullptr);
        return result;
    };
    if (::posix_spawnp(&pid_, arguments.front().c_str(), nullptr, nullptr,
            pointers(arguments).data(), pointers(variables).data())
        != 0)
        throw std::runtime_error("cannot start " + arguments.front());
}

Process::~Process()
{
    if (pid_ < 0)
        return;
    send(SIGKILL);
    ::waitpid(pid_, nullptr, 0);
}

void Process::send(int signal) const
{
    ::kill(pid_, signal);
}

int Process::waitStatus()
{
    int status = 0;
    runUntil([&] { return ::waitpid(pid_, &status, WNOHANG) != 0; });
    pid_ = -1;
    return status;
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
                           "</policy></busconfig>\n";
    return QStringLiteral("--config-file=%1").arg(QString::fromStdString(file.string()));
}

} // namespace quillbar::testing
