#include "platform/linux/tray/IconFiles.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/SymbolSvg.h"
#include "platform/linux/x11/WindowActivation.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <utility>
#include <vector>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

int percent(double alpha)
{
    return static_cast<int>(std::lround(std::clamp(alpha, 0.0, 1.0) * 100));
}

// Panels recolour files whose names end in "-symbolic", so a tint needs another name.
QString fileName(IconAppearance const& appearance)
{
    auto symbol = toQString(appearance.symbol);
    symbol.replace('-'_L1, "_"_L1).replace('.'_L1, "-"_L1);
    QString name = "quillbar-"_L1 + symbol;
    if (auto const opacity = percent(appearance.alpha); opacity < 100)
        name += "-dim"_L1 + QString::number(opacity);
    if (appearance.tint)
        return name + '-'_L1 + appearance.tint->name().mid(1);
    return appearance.isSymbolic ? name + "-symbolic"_L1 : name;
}

/// Removes the folders that no owner removes. When the X server goes, Qt calls exit(), which
/// destroys only static objects. When a Wayland compositor goes, Qt logs it and calls _exit(), on
/// several threads at once.
class RemovedAtExit {
public:
    RemovedAtExit()
    {
        if (isWaylandSession())
            passOn_ = qInstallMessageHandler(hear);
    }
    RemovedAtExit(RemovedAtExit const&) = delete;
    RemovedAtExit& operator=(RemovedAtExit const&) = delete;
    ~RemovedAtExit()
    {
        if (passOn_)
            qInstallMessageHandler(passOn_);
        remove();
    }

    void add(std::weak_ptr<QTemporaryDir> folder)
    {
        std::lock_guard const lock(mutex_);
        folders_.push_back(std::move(folder));
    }

private:
    static void hear(QtMsgType type, QMessageLogContext const& context, QString const& text);

    void remove()
    {
        std::lock_guard const lock(mutex_);
        for (auto const& folder : std::exchange(folders_, {})) {
            if (auto const alive = folder.lock())
                alive->remove();
        }
    }

    QtMessageHandler passOn_ = nullptr;
    std::mutex mutex_;
    std::vector<std::weak_ptr<QTemporaryDir>> folders_;
};

RemovedAtExit& removedAtExit()
{
    static RemovedAtExit removed;
    return removed;
}

void RemovedAtExit::hear(QtMsgType type, QMessageLogContext const& context, QString const& text)
{
    auto& removed = removedAtExit();
    if (text.startsWith("The Wayland connection"_L1))
        removed.remove();
    removed.passOn_(type, context, text);
}

std::shared_ptr<QTemporaryDir> makeFolder(QString const& parent)
{
    auto folder = std::make_shared<QTemporaryDir>(parent + "/quillbar-XXXXXX"_L1);
    removedAtExit().add(folder);
    return folder;
}

} // namespace

QString IconFiles::iconName(IconAppearance const& appearance)
{
    auto name = fileName(appearance);
    if (written_.contains(name))
        return name;
    if (!write(name, appearance))
        return {};
    written_.insert(name);
    return name;
}

QString IconFiles::folder()
{
    if (!folder_) {
        auto const runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
        if (QDir::isAbsolutePath(runtime))
            folder_ = makeFolder(runtime);
        if (!folder_ || !folder_->isValid())
            folder_ = makeFolder(QDir::tempPath());
    }
    return folder_->isValid() ? folder_->path() : QString();
}

bool IconFiles::write(QString const& name, IconAppearance const& appearance)
{
    // Symbolic icons have a margin of 1 by custom. Where others are shown larger, it takes more to
    // be as large as those.
    auto const margin = appearance.isSymbolic ? 1 : 2.5;
    SymbolSvgStyle style;
    style.rect = QRectF({}, style.canvas).adjusted(margin, margin, -margin, -margin);
    style.opacity = percent(appearance.alpha) / 100.0;
    if (appearance.tint)
        style.color = appearance.tint->name().toLatin1();
    auto const svg = symbolSvg(appearance.symbol, style);
    auto const path = folder();
    if (!svg || path.isEmpty())
        return false;
    QFile file(path + '/'_L1 + name + ".svg"_L1);
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly) && file.write(*svg) == svg->size()
        && file.flush();
}

} // namespace quillbar::platform
