#include "model/PrivateFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbar {

namespace {

constexpr off_t maximumSize = 256 << 20;

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
    [[nodiscard]] std::optional<off_t> size() const
    {
        struct stat status { };
        if (value_ < 0 || fstat(value_, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return status.st_size;
    }

private:
    int value_;
};

} // namespace

std::optional<std::string> readFile(std::filesystem::path const& path)
{
    Descriptor const file(path, O_RDONLY);
    auto const size = file.size();
    if (!size || *size > maximumSize)
        return std::nullopt;

    std::string text(static_cast<std::size_t>(*size), '\0');
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
    Descriptor const file(path, O_WRONLY | O_CREAT | O_TRUNC);
    if (!file.size())
        return false;

    while (!text.empty()) {
        auto const count = write(file.value(), text.data(), text.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
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
