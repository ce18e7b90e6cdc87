#include "platform/Workspace.h"

#include "platform/ChildProcess.h"
#include "platform/linux/system/AddressHandlers.h"
#include "platform/linux/system/DesktopOpener.h"
#include "platform/linux/system/XdgFolders.h"

#include <QFile>
#include <QStandardPaths>
#include <QString>
#include <QUrl>

#include <filesystem>
#include <sys/stat.h>
#include <system_error>

namespace quillbar::platform {

namespace {

void openShortcutsFolder()
{
    auto const parent = dataHome();
    if (parent.empty())
        return;
    std::error_code error;
    std::filesystem::create_directories(parent, error);
    auto const folder = parent / "shortcuts";
    // What lies in it is run: nobody else may look in or write there.
    ::mkdir(folder.c_str(), S_IRWXU);
    auto const url = QUrl::fromLocalFile(QFile::decodeName(folder.c_str()));
    openWithDesktop(url.toEncoded().toStdString());
}

} // namespace

void openWithDesktop(std::string const& address)
{
    auto const opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    runChild({ QFile::encodeName(opener).toStdString(), address }, {});
}

void openAddress(std::string const& address)
{
    auto const scheme = QUrl(QString::fromStdString(address)).scheme();
    // Without a scheme it would be a file name or even an option to the opener.
    if (scheme.isEmpty())
        return;
    // With no handler, openers hand the address to a browser or show an error.
    if (scheme == QLatin1String("shortcuts") && !hasAddressHandler("shortcuts"))
        openShortcutsFolder();
    else
        openWithDesktop(address);
}

} // namespace quillbar::platform
