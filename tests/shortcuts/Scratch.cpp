#include "shortcuts/Scratch.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>

namespace quillbar::shortcuts {

namespace {

std::vector<char*> pointers(std::vector<std::string>& texts)
{
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (auto& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

} // namespace

Scratch::Scratch()
    : variables { { "HOME", home }, { "XDG_DATA_HOME", home / "data" },
        { "XDG_DATA_DIRS", home / "system" }, { "PATH", programs.string() + ":/usr/bin:/bin" } }
{
}

std::filesystem::path Scratch::write(
    std::filesystem::path const& path, std::string const& text, mode_t mode)
{
    std::filesystem::create_directories(path.parent_path());
    chmod(path.parent_path().c_str(), 0755);
    std::ofstream(path, std::ios::binary) << text;
    chmod(path.c_str(), mode);
    return path;
}

std::filesystem::path Scratch::script(std::string const& fileName, std::string const& body)
{
    return write(own / fileName, "#!/bin/sh\n" + body + "\n");
}

std::filesystem::path Scratch::entry(std::string const& fileName, std::string const& lines)
{
    return write(own / fileName, "[Desktop Entry]\nType=Application\n" + lines + "\n", 0644);
}

Environment Scratch::environment() const
{
    setenv("PATH", variables.at("PATH").c_str(), 1);
    return { home, { own, shared } };
}

Outcome Scratch::run(std::vector<std::string> arguments, std::filesystem::path output) const
{
    arguments.insert(arguments.begin(), SHORTCUTS_PROGRAM);
    std::vector<std::string> settings;
    for (auto const& [name, value] : variables)
        settings.emplace_back(name).append("=").append(value);
    auto const errors = output == "/dev/null" ? output : home / "errors.txt";
    if (output.empty())
        output = home / "output.txt";

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr auto flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errors.c_str(), flags, 0600);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    pid_t child = 0;
    auto const error = posix_spawn(&child, SHORTCUTS_PROGRAM, &actions, &attributes,
        pointers(arguments).data(), pointers(settings).data());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(error, 0);

    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return { WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status), contents(output),
        contents(errors) };
}

std::string contents(std::filesystem::path const& path)
{
    if (!std::filesystem::is_regular_file(path))
        return {};
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace quillbar::shortcuts
