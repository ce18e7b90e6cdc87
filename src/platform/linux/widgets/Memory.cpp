#include "platform/linux/widgets/Memory.h"

#include <QGuiApplication>
#include <QPixmapCache>
#include <QWindow>

#include <algorithm>
#include <malloc.h>

namespace quillbar::platform {

namespace {

bool isAnyWindowShown()
{
    return std::ranges::any_of(
        QGuiApplication::topLevelWindows(), [](auto* window) { return window->isVisible(); });
}

} // namespace

// Only the first arena is ever given back whole.
void useOneArena()
{
    ::mallopt(M_ARENA_MAX, 1);
}

// The cache's keys of controls and icons contain the palette or the pixmap, which are new for every
// window and menu, so that nothing is found again; and Qt 6.4 keeps the keys of what it dropped.
void disablePixmapCache()
{
    QPixmapCache::setCacheLimit(0);
}

void trimMemory()
{
    if (isAnyWindowShown())
        return;
    ::malloc_trim(0);
}

} // namespace quillbar::platform
