#include "platform/linux/views/Memory.h"

#include <QGuiApplication>
#include <QPixmapCache>
#include <QWindow>

#include <algorithm>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace quillbar::platform {

namespace {

// The style draws each control once for each palette, and every new window brings palettes.
constexpr int pictureKilobytes = 1024;

bool isAnyWindowShown()
{
    auto const windows = QGuiApplication::topLevelWindows();
    return std::any_of(
        windows.begin(), windows.end(), [](auto* window) { return window->isVisible(); });
}

} // namespace

void limitDrawnPictures()
{
    QPixmapCache::setCacheLimit(pictureKilobytes);
}

void giveBackMemory()
{
    if (isAnyWindowShown())
        return;
    QPixmapCache::clear();
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

} // namespace quillbar::platform
