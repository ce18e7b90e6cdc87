#include "platform/linux/drawing/SymbolSvg.h"

#include "platform/linux/drawing/SymbolTable.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>

namespace quillbar::platform {

namespace {

using namespace Qt::StringLiterals;

/// What stands within the root element of a symbol's file.
struct Body {
    QRectF viewBox;
    QByteArray content;
    QByteArray namespaces;
};

std::optional<QRectF> parseViewBox(QStringView text)
{
    auto const parts = text.split(u' ', Qt::SkipEmptyParts);
    if (parts.size() != 4)
        return std::nullopt;
    QRectF const box(
        parts[0].toDouble(), parts[1].toDouble(), parts[2].toDouble(), parts[3].toDouble());
    return box.isEmpty() ? std::nullopt : std::optional(box);
}

bool readRoot(QByteArray const& document, Body& body)
{
    QXmlStreamReader reader(document);
    if (!reader.readNextStartElement() || reader.name() != "svg"_L1)
        return false;
    auto const attributes = reader.attributes();
    QRectF const plain(
        0, 0, attributes.value("width"_L1).toDouble(), attributes.value("height"_L1).toDouble());
    body.viewBox = parseViewBox(attributes.value("viewBox"_L1)).value_or(plain);
    for (auto const& declaration : reader.namespaceDeclarations()) {
        if (!declaration.prefix().isEmpty())
            body.namespaces += " xmlns:" + declaration.prefix().toUtf8() + "=\""
                + declaration.namespaceUri().toString().toHtmlEscaped().toUtf8() + '"';
    }
    return !body.viewBox.isEmpty();
}

// Icon themes write their grey into the shapes, where it overrides the colour of the group around.
QByteArray withoutFixedColors(QByteArray const& content)
{
    static QRegularExpression const color(
        QStringLiteral(R"(\b(fill|stroke)(\s*[:=]\s*["']?)(#[0-9a-fA-F]{3,8}|black|gray|grey)\b)"));
    return QString::fromUtf8(content).replace(color, QStringLiteral("\\1\\2currentColor")).toUtf8();
}

std::optional<Body> readBody(QString const& path)
{
    constexpr qint64 largestFile = 262'144;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile)
        return std::nullopt;
    auto const document = file.readAll();
    Body body;
    auto const root = document.indexOf("<svg");
    auto const start = root < 0 ? root : document.indexOf('>', root);
    auto const end = document.lastIndexOf("</svg>");
    if (start < 0 || end <= start || !readRoot(document, body))
        return std::nullopt;
    body.content = document.mid(start + 1, end - start - 1).trimmed();
    if (body.content.contains('#'))
        body.content = withoutFixedColors(body.content);
    return body;
}

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

// Panels recolour an icon for its "-symbolic" file name or by this style sheet and its classes.
// Some recolour none: white with a dark rim can be seen on every background.
QByteArray recolorableContent(Body const& body, SymbolSvgStyle const& style)
{
    constexpr double rimWidth = 0.75;
    auto const stroke = 2 * rimWidth / scaleInto(style.rect, body.viewBox);
    return "><g class=\"ColorScheme-Background\" fill=\"none\" stroke=\"currentColor\" "
           "stroke-linejoin=\"round\" stroke-width=\""
        + number(stroke) + "\">" + body.content
        + "</g><g class=\"ColorScheme-Text\" fill=\"currentColor\">" + body.content + "</g>";
}

QByteArray documentOf(Body const& body, SymbolSvgStyle const& style)
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
        return svg + recolorableContent(body, style) + "</g></svg>\n";
    auto content = body.content;
    content.replace("currentColor", style.color);
    return svg + '>' + content + "</g></svg>\n";
}

} // namespace

std::optional<QByteArray> symbolSvg(std::string_view name, SymbolSvgStyle const& style)
{
    auto const path = findSymbol(name);
    auto const body = path ? readBody(*path) : std::nullopt;
    return body ? std::optional(documentOf(*body, style)) : std::nullopt;
}

} // namespace quillbar::platform
