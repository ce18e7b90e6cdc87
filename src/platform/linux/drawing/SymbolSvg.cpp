#include "platform/linux/drawing/SymbolSvg.h"

#include "platform/linux/drawing/SymbolBody.h"

#include <algorithm>

namespace quillbar::platform {

namespace {

QByteArray number(double value)
{
    return QByteArray::number(value, 'g', 8);
}

double scaleInto(QRectF const& rect, QRectF const& viewBox)
{
    return std::min(rect.width() / viewBox.width(), rect.height() / viewBox.height());
}

QByteArray transformInto(QRectF const& rect, QRectF const& viewBox)
{
    auto const scale = scaleInto(rect, viewBox);
    auto const offset = rect.center() - viewBox.center() * scale;
    if (scale == 1 && offset.isNull())
        return {};
    return " transform=\"translate(" + number(offset.x()) + ' ' + number(offset.y()) + ") scale("
        + number(scale) + ")\"";
}

// Panels recolour a document of one of two kinds: by its "-symbolic" file name, or by this style
// sheet and its classes. Some recolour none: white with a dark rim is seen on every ground.
QByteArray leftToThePanel(SymbolBody const& body, SymbolSvgStyle const& style)
{
    constexpr double rimWidth = 0.75;
    auto const stroke = 2 * rimWidth / scaleInto(style.rect, body.viewBox);
    return "><g class=\"ColorScheme-Background\" fill=\"none\" stroke=\"currentColor\" "
           "stroke-linejoin=\"round\" stroke-width=\""
        + number(stroke) + "\">" + body.content
        + "</g><g class=\"ColorScheme-Text\" fill=\"currentColor\">" + body.content + "</g>";
}

QByteArray document(SymbolBody const& body, SymbolSvgStyle const& style)
{
    auto const width = number(style.canvas.width());
    auto const height = number(style.canvas.height());
    QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\"" + body.namespaces + " width=\""
        + width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + ' ' + height + "\">";
    if (style.color.isEmpty())
        svg += "<style id=\"current-color-scheme\" type=\"text/css\">.ColorScheme-Text { color: "
               "#ffffff; } .ColorScheme-Background { color: #202020; }</style><g";
    else
        svg += "<g color=\"" + style.color + "\" fill=\"" + style.color + '"';
    if (style.opacity < 1)
        svg += " opacity=\"" + number(std::max(0.0, style.opacity)) + '"';
    svg += transformInto(style.rect, body.viewBox);
    if (style.color.isEmpty())
        return svg + leftToThePanel(body, style) + "</g></svg>\n";
    auto content = body.content;
    content.replace("currentColor", style.color);
    return svg + '>' + content + "</g></svg>\n";
}

} // namespace

std::optional<QByteArray> symbolSvg(std::string_view name, SymbolSvgStyle const& style)
{
    auto const body = symbolBody(name);
    if (!body)
        return std::nullopt;
    return document(*body, style);
}

} // namespace quillbar::platform
