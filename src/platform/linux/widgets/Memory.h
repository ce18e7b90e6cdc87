#pragma once

namespace quillbar::platform {

/// Has all threads allocate from one arena of malloc; before the first of them starts.
void useOneArena();

/// Switches off QPixmapCache, which would grow with every window and menu.
void disablePixmapCache();

/// Returns the memory of closed windows to the system, unless one is still shown.
void trimMemory();

} // namespace quillbar::platform
