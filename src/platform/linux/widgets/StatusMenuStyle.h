#pragma once

#include <QProxyStyle>

namespace quillbar::platform {

/// Gives the status menu's rows room to breathe: icon and text in columns, keys flush right in a
/// quieter colour, very long names cut with an ellipsis before their kept endings, a long menu in
/// one column that scrolls. Panel and scrollers are the desktop's.
class StatusMenuStyle : public QProxyStyle {
public:
    void drawControl(ControlElement element, QStyleOption const* option, QPainter* painter,
        QWidget const* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, QStyleOption const* option,
        QSize const& size, QWidget const* widget) const override;
    [[nodiscard]] int pixelMetric(
        PixelMetric metric, QStyleOption const* option, QWidget const* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, QStyleOption const* option, QWidget const* widget,
        QStyleHintReturn* returnData) const override;
};

} // namespace quillbar::platform
