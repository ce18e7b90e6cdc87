#pragma once

namespace quillbar::platform {

/// Keeps the pictures that controls draw themselves with from piling up.
void limitDrawnPictures();

/// Gives the system back what closed windows held, unless one is still shown.
void giveBackMemory();

} // namespace quillbar::platform
