#include "shortcuts/RunLog.h"

#include "shortcuts/Names.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <glib.h>
#include <map>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t mostLogs = 200;

std::string logFolder()
{
    // The rules for base directories have relative ones ignored, which the library leaves to us.
    fs::path const state = g_get_user_state_dir();
    auto const home = fs::path(g_get_home_dir()) / ".local/state";
    return (state.is_absolute() ? state : home) / "shortcuts";
}

std::string durationText(std::chrono::milliseconds duration)
{
    auto const seconds = duration.count() / 1000;
    char text[64];
    if (seconds < 60)
        g_snprintf(text, sizeof text, "%.1f s", static_cast<double>(duration.count()) / 1000);
    else
        g_snprintf(text, sizeof text, "%ld h %ld min %ld s", seconds / 3600, seconds / 60 % 60,
            seconds % 60);
    return text;
}

std::string statusText(int status)
{
    if (WIFSIGNALED(status))
        return "was ended by signal " + std::to_string(WTERMSIG(status)) + " ("
            + strsignal(WTERMSIG(status)) + ")";
    auto const code = WEXITSTATUS(status);
    std::string text = "ended with " + std::to_string(code);
    switch (code) {
    case 0:
        return "succeeded";
    case 126:
        return text + ": something cannot be executed";
    case 127:
        return text + ": a program or an interpreter is not installed";
    default:
        return text;
    }
}

using LogFiles = std::multimap<fs::file_time_type, fs::path, std::greater<>>;

LogFiles newestFirst()
{
    LogFiles files;
    std::error_code error;
    for (fs::directory_iterator file(logFolder(), error), end; !error && file != end;
         file.increment(error)) {
        // Another run may have removed it.
        if (auto const time = file->last_write_time(error); !error)
            files.emplace(time, file->path());
    }
    return files;
}

void removeOldest()
{
    std::size_t count = 0;
    for (auto const& [time, path] : newestFirst()) {
        if (++count > mostLogs)
            unlink(path.c_str());
    }
}

bool writeAll(int file, std::string_view text)
{
    while (!text.empty()) {
        auto const count = write(file, text.data(), text.size());
        if (count <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace

std::string logPath(std::string_view name)
{
    constexpr std::size_t longest = 200;
    std::string const text(name);
    g_autofree char* escaped = g_uri_escape_string(text.c_str(), " !'()+,;=@&$", TRUE);
    g_autofree char* sum = g_compute_checksum_for_string(G_CHECKSUM_SHA256, text.c_str(), -1);
    // The checksum of a name is never the name of a shortcut that people give.
    return logFolder() + "/" + (std::strlen(escaped) <= longest ? escaped : sum) + ".log";
}

bool writeLogText(std::string_view name, std::string_view text)
{
    auto const folder = logFolder();
    // A home that is missing now may be mounted later, over what would be made here.
    if (!g_file_test(g_get_home_dir(), G_FILE_TEST_IS_DIR))
        return false;
    g_mkdir_with_parents(folder.c_str(), S_IRWXU);
    auto temporary = folder + "/.XXXXXX";
    auto const file = g_mkstemp(temporary.data());
    if (file < 0)
        return false;
    auto isWritten = writeAll(file, text);
    isWritten
        = close(file) == 0 && isWritten && rename(temporary.c_str(), logPath(name).c_str()) == 0;
    if (!isWritten)
        unlink(temporary.c_str());
    removeOldest();
    return isWritten;
}

bool writeLog(EndedRun const& run)
{
    auto text = printable(run.name) + ", begun " + timeText(run.began) + ", ran "
        + durationText(run.duration) + ": " + statusText(run.status) + "\n";
    if (!run.file.empty())
        text += printable(run.file) + "\n";
    text += run.isCut ? "\n[the last 64 KiB of its output]\n" : "\n";
    return writeLogText(run.name, text.append(run.output));
}

std::vector<std::string> logHeads()
{
    std::vector<std::string> heads;
    for (auto const& [time, path] : newestFirst()) {
        std::string line;
        if (path.extension() == ".log" && std::getline(std::ifstream(path), line))
            heads.push_back(std::move(line));
    }
    return heads;
}

std::string timeText(std::chrono::system_clock::time_point time)
{
    auto const seconds = std::chrono::system_clock::to_time_t(time);
    struct tm local { };
    localtime_r(&seconds, &local);
    char text[32];
    return { text, std::strftime(text, sizeof text, "%F %T", &local) };
}

} // namespace quillbar::shortcuts
