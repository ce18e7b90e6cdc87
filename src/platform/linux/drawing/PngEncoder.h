#pragma once

#include <QByteArray>
#include <QImage>

namespace quillbar::platform {

/// The picture as a PNG file. Qt's own writer would load every image plugin first, more memory than
/// all pictures of the menu together.
[[nodiscard]] QByteArray encodePng(QImage const& image);

} // namespace quillbar::platform
