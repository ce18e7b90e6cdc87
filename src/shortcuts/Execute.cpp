#include "shortcuts/Execute.h"

#include "shortcuts/Commands.h"
#include "shortcuts/Names.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
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

} // namespace

void report(std::string const& message)
{
    std::fprintf(stderr, "shortcuts: %s\n", message.c_str());
}

int print(std::string_view text)
{
    auto const isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (isWritten && std::fflush(stdout) == 0)
        return status::success;
    report("cannot write the output");
    return status::outputFailed;
}

std::string quoted(std::string_view name)
{
    return "\"" + printable(name) + "\"";
}

std::string beginningOf(std::string const& path)
{
    std::string text(1024, '\0');
    auto const file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return {};
    auto const count = read(file, text.data(), text.size());
    close(file);
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return text;
}

int execute(std::string const& program, std::vector<std::string> const& arguments)
{
    execv(program.c_str(), pointers(arguments).data());
    // Programs for other machines have zero bytes at their start, no script does.
    if (errno == ENOEXEC && beginningOf(program).find('\0') == std::string::npos) {
        auto throughShell = arguments;
        throughShell.front() = program;
        throughShell.insert(throughShell.begin(), "sh");
        execv("/bin/sh", pointers(throughShell).data());
    }

    auto const error = errno;
    auto const isMissing = error == ENOENT;
    report("cannot start " + printable(program) + ": "
        + (isMissing ? "the interpreter that it asks for is not installed" : std::strerror(error)));
    return isMissing ? status::notFound : status::cannotExecute;
}

} // namespace quillbar::shortcuts
