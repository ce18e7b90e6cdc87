#include "shortcuts/Running.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string_view>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace fs = std::filesystem;

namespace {

/// Once a package has been upgraded, the kernel marks the program of a process that runs on.
std::string programOf(fs::path const& process)
{
    std::error_code error;
    auto path = fs::read_symlink(process / "exe", error).string();
    constexpr std::string_view mark = " (deleted)";
    return path.ends_with(mark) ? path.substr(0, path.size() - mark.size()) : path;
}

std::string contents(fs::path const& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// Which shortcut this process was started for; empty when it is no run.
std::string nameOfRun(fs::path const& process, std::string const& program)
{
    if (programOf(process) != program)
        return {};
    std::istringstream arguments(contents(process / "cmdline"));
    std::string command;
    std::string name;
    std::getline(arguments, command, '\0');
    std::getline(arguments, command, '\0');
    std::getline(arguments, name, '\0');
    return command == "run" ? name : std::string();
}

struct ProcessStatus {
    pid_t parent = 0;
    std::chrono::system_clock::time_point began;
};

ProcessStatus statusOf(fs::path const& process)
{
    auto const text = contents(process / "stat");
    // The fields that follow the program's name, which may hold anything.
    std::istringstream fields(text.substr(std::min(text.rfind(')') + 1, text.size())));
    std::vector<std::string> values;
    for (std::string value; fields >> value;)
        values.push_back(value);
    constexpr std::size_t parent = 1;
    constexpr std::size_t startTime = 19;
    if (values.size() <= startTime)
        return {};
    timespec now {};
    clock_gettime(CLOCK_BOOTTIME, &now);
    std::chrono::seconds const age(
        now.tv_sec - std::stoll(values[startTime]) / sysconf(_SC_CLK_TCK));
    return { std::stoi(values[parent]), std::chrono::system_clock::now() - age };
}

} // namespace

std::vector<RunningShortcut> runningShortcuts()
{
    auto const program = programOf("/proc/self");
    std::map<pid_t, std::string> watches;
    std::vector<std::pair<pid_t, ProcessStatus>> processes;
    std::error_code error;
    for (auto const& file : fs::directory_iterator("/proc", error)) {
        auto const number = std::atoi(file.path().filename().c_str());
        struct stat status { };
        if (number <= 0 || stat(file.path().c_str(), &status) != 0 || status.st_uid != geteuid())
            continue;
        processes.emplace_back(number, statusOf(file.path()));
        if (auto name = nameOfRun(file.path(), program); !name.empty())
            watches[number] = std::move(name);
    }
    // A watch has one child, the shortcut; a run in a terminal has become the shortcut.
    std::vector<RunningShortcut> running;
    for (auto const& [process, status] : processes) {
        if (auto const watch = watches.find(status.parent); watch != watches.end())
            running.push_back({ watch->second, process, status.began });
    }
    std::ranges::sort(running, {}, &RunningShortcut::began);
    return running;
}

bool stopGroup(RunningShortcut const& shortcut)
{
    using namespace std::chrono_literals;
    auto const signalAndWait = [group = -shortcut.process](int signal, auto limit) {
        kill(group, signal);
        for (auto waited = 0ms; waited < limit && kill(group, 0) == 0; waited += 20ms)
            std::this_thread::sleep_for(20ms);
        return kill(group, 0) != 0;
    };
    if (signalAndWait(SIGTERM, 5s))
        return false;
    signalAndWait(SIGKILL, 1s);
    return true;
}

} // namespace quillbar::shortcuts
