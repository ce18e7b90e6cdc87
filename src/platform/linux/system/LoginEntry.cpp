#include "platform/LoginEntry.h"

#include "platform/linux/system/AutostartEntry.h"
#include "platform/linux/system/KeyFile.h"
#include "platform/linux/system/XdgFolders.h"

#include <QByteArray>
#include <QFile>
#include <QSaveFile>

#include <filesystem>
#include <system_error>

namespace quillbar::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longestEntry = std::size_t { 64 } * 1024;

fs::path entryFile(std::string const& label)
{
    auto const folder = configHome();
    if (folder.empty() || label.empty() || label.find('/') != std::string::npos)
        return {};
    return folder / "autostart" / (label + ".desktop");
}

} // namespace

void writeLoginEntry(LoginEntry const& entry, LoginSwitch loginSwitch)
{
    auto const file = entryFile(entry.label);
    if (file.empty())
        return;
    auto const previous = readSmallFile(file, longestEntry);
    auto const text = autostartEntry(entry, loginSwitch, previous);
    if (text == previous)
        return;
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    // Written aside and renamed: a session that reads the folder now never sees half an entry.
    QSaveFile output(QFile::decodeName(file.c_str()));
    if (!output.open(QIODevice::WriteOnly))
        return;
    output.write(text.data(), static_cast<qint64>(text.size()));
    output.commit();
}

void removeLoginEntry(std::string const& label)
{
    auto const file = entryFile(label);
    std::error_code error;
    if (!file.empty() && !fs::is_directory(file, error))
        fs::remove(file, error);
}

} // namespace quillbar::platform
