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

// Only the first heap is ever given back whole.
void useOneHeap()
{
    ::mallopt(M_ARENA_MAX, 1);
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
    ::malloc_trim(0);
}

} // namespace quillbar::platform
