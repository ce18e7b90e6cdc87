#include "model/PrivateFile.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar {

namespace fs = std::filesystem;

namespace {

bool writeAll(int file, std::string_view text)
{
    while (!text.empty()) {
        auto const count = write(file, text.data(), text.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return fsync(file) == 0;
}

bool writeNewFile(fs::path const& path, mode_t mode, std::string_view text)
{
    // A process that was killed while writing left it there.
    unlink(path.c_str());
    auto const file
        = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        return false;
    bool const isWritten = fchmod(file, mode) == 0 && writeAll(file, text);
    close(file);
    return isWritten;
}

} // namespace

std::optional<std::string> readFile(fs::path const& path)
{
    constexpr std::uintmax_t largest = 256 << 20;
    std::error_code error;
    // Opening a named pipe would wait for a writer.
    if (!fs::is_regular_file(path, error))
        return std::nullopt;
    auto const size = fs::file_size(path, error);
    if (error || size > largest)
        return std::nullopt;
    std::string text(size, '\0');
    std::ifstream file(path, std::ios::binary);
    if (!file.read(text.data(), static_cast<std::streamsize>(size)))
        return std::nullopt;
    return text;
}

bool writePrivateFile(fs::path const& path, std::string_view text)
{
    std::error_code error;
    auto target = fs::canonical(path, error);
    if (error)
        target = path;
    struct stat old { };
    mode_t const mode = stat(target.c_str(), &old) == 0 ? old.st_mode & 0777 : 0;
    auto aside = target;
    aside += ".new";
    bool const isReplaced = writeNewFile(aside, mode | S_IRUSR | S_IWUSR, text)
        && rename(aside.c_str(), target.c_str()) == 0;
    if (!isReplaced)
        unlink(aside.c_str());
    return isReplaced;
}

void createPrivateFolder(fs::path const& path)
{
    fs::path folder;
    for (auto const& component : path) {
        folder /= component;
        mkdir(folder.c_str(), S_IRWXU);
    }
}

} // namespace quillbar
