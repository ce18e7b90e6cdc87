#pragma once

namespace quillbar::platform {

/// In points, as KDE begins with it.
inline constexpr double usualKdeFontSize = 10;

/// How many times as large as usual the person wants texts, from the text size of the desktop: 1 or
/// more. What a desktop tells X11 clients as a resolution (Xft.dpi) is not in it, for Qt scales by
/// that itself. To be called before there is an application object.
[[nodiscard]] double textScale();

} // namespace quillbar::platform
