#include "shortcuts/Execute.h"

#include "shortcuts/Names.h"
#include "shortcuts/Report.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace {

std::vector<char*> pointers(std::vector<std::string> const& arguments)
{
    std::vector<char*> result;
    result.reserve(arguments.size() + 1);
    for (auto const& argument : arguments)
        result.push_back(const_cast<char*>(argument.c_str()));
    result.push_back(nullptr);
    return result;
}

/// Programs for other machines have zero bytes at their start, no script does.
bool looksLikeText(std::string const& path)
{
    auto const file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    std::array<char, 256> start {};
    auto const count = read(file, start.data(), start.size());
    close(file);
    return count >= 0
        && std::memchr(start.data(), '\0', static_cast<std::size_t>(count)) == nullptr;
}

void start(std::string const& program, std::vector<std::string> const& arguments)
{
    execv(program.c_str(), pointers(arguments).data());
}

} // namespace

int execute(std::string const& program, std::vector<std::string> const& arguments)
{
    start(program, arguments);
    if (errno == ENOEXEC && looksLikeText(program)) {
        auto throughShell = arguments;
        throughShell.front() = program;
        throughShell.insert(throughShell.begin(), "sh");
        start("/bin/sh", throughShell);
    }

    auto const error = errno;
    auto const isMissing = error == ENOENT;
    report("cannot start " + printable(program) + ": "
        + (isMissing ? "the interpreter that it asks for is not installed" : std::strerror(error)));
    return isMissing ? status::notFound : status::cannotExecute;
}

} // namespace quillbar::shortcuts
