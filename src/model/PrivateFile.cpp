#include "model/PrivateFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar {

namespace {

constexpr off_t maximumSize = 256 << 20;

/// The kernel copies this much into a file in one piece, also for a process that is being killed.
constexpr off_t undivided = 4096;

class Descriptor {
public:
    /// Does not wait for the other end of a pipe that lies where a file should be.
    Descriptor(std::filesystem::path const& path, int flags)
        : value_(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR))
    {
    }
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    ~Descriptor()
    {
        if (value_ >= 0)
            close(value_);
    }

    [[nodiscard]] int value() const { return value_; }

    /// Nothing for anything but a regular file.
    [[nodiscard]] std::optional<struct stat> status() const
    {
        struct stat status { };
        if (value_ < 0 || fstat(value_, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return status;
    }

private:
    int value_;
};

bool writeAt(Descriptor const& file, off_t offset, std::string_view text)
{
    while (!text.empty()) {
        auto const count = pwrite(file.value(), text.data(), text.size(), offset);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        offset += count;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Where there is no room for the new text the old one has to stay, so that room is taken first,
/// behind the old text; and what is cut off in the end is only ever blanks.
bool overwrite(Descriptor const& file, off_t oldSize, std::string text)
{
    auto const size = static_cast<off_t>(text.size());
    auto const room = std::max(size, oldSize + 1);
    if (!writeAt(file, oldSize, std::string(static_cast<std::size_t>(room - oldSize), ' '))) {
        static_cast<void>(ftruncate(file.value(), oldSize));
        return false;
    }
    text.resize(static_cast<std::size_t>(room), ' ');
    return writeAt(file, 0, text) && ftruncate(file.value(), size) == 0;
}

enum class Replacement { Done, Impossible, NoRoom };

/// Makes the descriptor's file one that can take the place of the other unnoticed.
bool takeAfter(Descriptor const& file, struct stat const& other)
{
    auto const made = file.status();
    return made && made->st_uid == other.st_uid
        && (made->st_gid == other.st_gid || fchown(file.value(), made->st_uid, other.st_gid) == 0)
        && fchmod(file.value(), other.st_mode & ~S_IFMT) == 0;
}

Replacement replace(
    std::filesystem::path const& path, struct stat const& old, std::string_view text)
{
    std::error_code error;
    auto const target = std::filesystem::canonical(path, error);
    // A second hard link would keep the old text.
    if (error || old.st_nlink != 1)
        return Replacement::Impossible;
    auto aside = target;
    aside += ".new";
    unlink(aside.c_str());
    Descriptor const file(aside, O_WRONLY | O_CREAT | O_EXCL);
    if (!takeAfter(file, old)) {
        if (file.value() >= 0)
            unlink(aside.c_str());
        return Replacement::Impossible;
    }
    auto result = Replacement::NoRoom;
    if (writeAt(file, 0, text) && fsync(file.value()) == 0)
        result = rename(aside.c_str(), target.c_str()) == 0 ? Replacement::Done
                                                            : Replacement::Impossible;
    if (result != Replacement::Done)
        unlink(aside.c_str());
    return result;
}

} // namespace

std::optional<std::string> readFile(std::filesystem::path const& path)
{
    Descriptor const file(path, O_RDONLY);
    auto const status = file.status();
    if (!status || status->st_size > maximumSize)
        return std::nullopt;

    std::string text(static_cast<std::size_t>(status->st_size), '\0');
    std::size_t used = 0;
    while (used < text.size()) {
        auto const count = read(file.value(), text.data() + used, text.size() - used);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        used += static_cast<std::size_t>(count);
    }
    text.resize(used);
    return text;
}

bool writePrivateFile(std::filesystem::path const& path, std::string_view text)
{
    Descriptor const file(path, O_WRONLY | O_CREAT);
    auto const old = file.status();
    if (!old)
        return false;
    if (std::max(old->st_size + 1, static_cast<off_t>(text.size())) > undivided) {
        auto const replacement = replace(path, *old, text);
        if (replacement != Replacement::Impossible)
            return replacement == Replacement::Done;
    }
    return old->st_size <= maximumSize && overwrite(file, old->st_size, std::string(text));
}

bool setAsideForbiddenFile(std::filesystem::path const& path, std::filesystem::path const& aside)
{
    std::error_code error;
    auto const file = std::filesystem::canonical(path, error);
    if (error || !std::filesystem::is_regular_file(file, error))
        return true;
    if (faccessat(AT_FDCWD, file.c_str(), R_OK, AT_EACCESS) == 0)
        return false;
    std::filesystem::rename(file, aside, error);
    return !error;
}

void createPrivateFolder(std::filesystem::path const& path)
{
    std::filesystem::path folder;
    for (auto const& component : path) {
        folder /= component;
        mkdir(folder.c_str(), S_IRWXU);
    }
}

} // namespace quillbar
