#include "platform/linux/system/AddressHandlers.h"

#include "platform/linux/system/KeyFile.h"
#include "platform/linux/system/XdgFolders.h"

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>
#include <vector>

namespace quillbar::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longestAssociations = std::size_t { 8 } * 1024 * 1024;

std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> pieces;
    while (!text.empty()) {
        auto const end = text.find(separator);
        if (auto const piece = text.substr(0, end); !piece.empty())
            pieces.emplace_back(piece);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return pieces;
}

/// The file names of association lists, that of the running desktop first.
std::vector<std::string> listNames()
{
    std::vector<std::string> names;
    auto const* const desktops = std::getenv("XDG_CURRENT_DESKTOP");
    for (auto desktop : split(desktops ? desktops : "", ':')) {
        for (auto& character : desktop)
            character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        names.push_back(desktop + "-mimeapps.list");
    }
    names.emplace_back("mimeapps.list");
    return names;
}

/// A desktop file's id spells its subfolders with dashes.
bool isInstalled(std::string const& id, std::vector<fs::path> const& folders)
{
    if (id.find('/') != std::string::npos || id.starts_with('.'))
        return false;
    std::error_code error;
    for (auto const& folder : folders) {
        auto name = id;
        for (auto dash = name.find('-');; dash = name.find('-', dash + 1)) {
            if (fs::exists(folder / name, error))
                return true;
            if (dash == std::string::npos)
                break;
            name[dash] = '/';
        }
    }
    return false;
}

class Associations {
public:
    explicit Associations(std::string type)
        : type_(std::move(type))
    {
    }

    void add(fs::path const& file)
    {
        auto const text = readSmallFile(file, longestAssociations);
        for (auto const& line : parseKeyFile(text)) {
            if (line.key != type_)
                continue;
            auto& ids = line.group == "Removed Associations" ? removed_ : added_;
            for (auto& id : split(line.value, ';'))
                ids.insert(std::move(id));
        }
    }

    [[nodiscard]] bool holdInstalled(std::vector<fs::path> const& folders) const
    {
        for (auto const& id : added_) {
            if (!removed_.contains(id) && isInstalled(id, folders))
                return true;
        }
        return false;
    }

private:
    std::string type_;
    std::set<std::string> added_;
    std::set<std::string> removed_;
};

} // namespace

bool hasAddressHandler(std::string const& scheme)
{
    std::vector<fs::path> applications;
    for (auto const& folder : dataFolders())
        applications.push_back(folder / "applications");
    auto folders = configFolders();
    folders.insert(folders.end(), applications.begin(), applications.end());

    Associations associations("x-scheme-handler/" + scheme);
    for (auto const& folder : folders) {
        for (auto const& name : listNames())
            associations.add(folder / name);
    }
    for (auto const& folder : applications)
        associations.add(folder / "mimeinfo.cache");
    return associations.holdInstalled(applications);
}

} // namespace quillbar::platform
