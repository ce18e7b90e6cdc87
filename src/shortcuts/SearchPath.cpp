#include "shortcuts/SearchPath.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar::shortcuts {

namespace {

bool isExecutableFile(std::string const& path)
{
    struct stat status { };
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)
        && faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

} // namespace

std::string findProgram(std::string_view program, std::string_view searchPath)
{
    if (program.find('/') != std::string_view::npos) {
        std::string path(program);
        return isExecutableFile(path) ? path : std::string();
    }
    while (!program.empty() && !searchPath.empty()) {
        auto const end = searchPath.find(':');
        auto path = std::string(searchPath.substr(0, end));
        searchPath.remove_prefix(end == std::string_view::npos ? searchPath.size() : end + 1);
        path.append("/").append(program);
        if (path.front() == '/' && isExecutableFile(path))
            return path;
    }
    return {};
}

} // namespace quillbar::shortcuts
