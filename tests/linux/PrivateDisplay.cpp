#include "linux/PrivateDisplay.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbar::testing {

PrivateDisplay::PrivateDisplay()
{
    std::array<int, 2> ends {};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe for the X server");
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], 3);
    for (int const output : { STDOUT_FILENO, STDERR_FILENO })
        ::posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    std::array<char const*, 9> const arguments { "Xvfb", "-displayfd", "3", "-screen", "0",
        "640x480x24", "-nolisten", "tcp", nullptr };
    auto const result = ::posix_spawnp(
        &server_, "Xvfb", &actions, nullptr, const_cast<char* const*>(arguments.data()), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);

    std::string number;
    char next = 0;
    while (result == 0 && ::read(ends[0], &next, 1) == 1 && next != '\n')
        number += next;
    ::close(ends[0]);
    if (number.empty())
        throw std::runtime_error("Xvfb does not start");
    ::setenv("DISPLAY", (":" + number).c_str(), 1);
}

PrivateDisplay::~PrivateDisplay()
{
    ::kill(server_, SIGTERM);
    ::waitpid(server_, nullptr, 0);
}

} // namespace quillbar::testing
