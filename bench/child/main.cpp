#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <unistd.h>

/// Stands where Quillbar expects the shortcuts tool. For `run` it notes when it began, as one line
/// of nanoseconds of the monotonic clock, in the file that QUILLBAR_BENCH_STARTS names; for
/// everything else it becomes the real tool.
int main(int argumentCount, char** arguments)
{
    timespec start {};
    clock_gettime(CLOCK_MONOTONIC, &start);
    auto const* const path = std::getenv("QUILLBAR_BENCH_STARTS");
    if (argumentCount < 2 || std::strcmp(arguments[1], "run") != 0 || path == nullptr) {
        execv(QUILLBAR_BENCH_TOOL, arguments);
        return EXIT_FAILURE;
    }
    auto* const file = std::fopen(path, "a");
    if (file == nullptr)
        return EXIT_FAILURE;
    constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
    std::fprintf(file, "%" PRId64 "\n", start.tv_sec * nanosecondsPerSecond + start.tv_nsec);
    return std::fclose(file) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
