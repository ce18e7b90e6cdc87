#pragma once

namespace quillbar::platform {

/// Names the program everywhere on the desktop: its desktop file, its icon and its bus name.
inline constexpr char const* applicationId = "com.quillbar.Quillbar";

} // namespace quillbar::platform
