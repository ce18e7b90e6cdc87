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

bool isAnyWindowShown()
{
    auto const windows = QGuiApplication::topLevelWindows();
    return std::any_of(
        windows.begin(), windows.end(), [](auto* window) { return window->isVisible(); });
}

} // namespace

// Only the first heap is ever given back whole.
void useOneHeap()
{
#ifdef __GLIBC__
    ::mallopt(M_ARENA_MAX, 1);
#endif
}

// Controls and icons are kept under names that hold their palette or picture, which every window
// and every menu make anew; and Qt 6.4 never forgets the name of what it dropped.
void keepNoDrawnPictures()
{
    QPixmapCache::setCacheLimit(0);
}

void giveBackMemory()
{
    if (isAnyWindowShown())
        return;
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

} // namespace quillbar::platform
