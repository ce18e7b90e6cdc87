#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

/// Starts the program named by its argument once for every line of its input, with nothing around
/// it, and prints when: nanoseconds of the monotonic clock just before.
int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2)
        return EXIT_FAILURE;
    char run[] = "run";
    char name[] = "bare";
    std::array<char*, 4> const child { arguments[1], run, name, nullptr };
    while (true) {
        auto const next = std::getchar();
        if (next == EOF)
            return EXIT_SUCCESS;
        if (next != '\n')
            continue;
        timespec before {};
        clock_gettime(CLOCK_MONOTONIC, &before);
        pid_t process = 0;
        if (posix_spawn(&process, child[0], nullptr, nullptr, child.data(), environ) != 0)
            return EXIT_FAILURE;
        waitpid(process, nullptr, 0);
        constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
        std::printf("%" PRId64 "\n", before.tv_sec * nanosecondsPerSecond + before.tv_nsec);
        std::fflush(stdout);
    }
}
