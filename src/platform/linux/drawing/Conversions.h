#pragma once

#include "platform/KeyModifiers.h"
#include "platform/view/Color.h"
#include "platform/view/Font.h"
#include "platform/view/Geometry.h"

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRectF>
#include <QString>

#include <string_view>

namespace quillbar::platform {

/// Reads UTF-8, shortened to what can be laid out at once; a malformed sequence becomes U+FFFD.
[[nodiscard]] QString toQString(std::string_view text);

/// With wide gaps for tabs: menus and lists of choices would take what follows one for a key.
[[nodiscard]] QString withoutTabs(QString text);

[[nodiscard]] QRectF toQRectF(Rect const& rect);

/// A system colour is mixed for the palette, so that it reads well on a light and on a dark one.
[[nodiscard]] QColor toQColor(Color const& color, QPalette const& palette);

/// The desktop's font in the size of the layout: one point of a frame is one pixel at scale 1.
[[nodiscard]] QFont toQFont(Font const& font);

[[nodiscard]] bool isDark(QPalette const& palette);

/// Command is Super, which Qt calls Meta; Option is Alt.
[[nodiscard]] Qt::KeyboardModifiers toQtModifiers(KeyModifiers modifiers);
[[nodiscard]] KeyModifiers toKeyModifiers(Qt::KeyboardModifiers modifiers);

} // namespace quillbar::platform
