#pragma once

#include <QIcon>

namespace quillbar::platform {

/// For windows with a title bar. Main thread.
[[nodiscard]] QIcon& applicationIcon();

} // namespace quillbar::platform
