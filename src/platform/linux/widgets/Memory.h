#pragma once

namespace quillbar::platform {

/// Has all threads take their memory from one heap; before the first of them starts.
void useOneHeap();

/// Has controls draw themselves each time, instead of keeping pictures that pile up.
void keepNoDrawnPictures();

/// Gives the system back what closed windows held, unless one is still shown.
void giveBackMemory();

} // namespace quillbar::platform
