#include "platform/linux/drawing/SymbolBody.h"

#include "platform/linux/drawing/SymbolTable.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

namespace quillbar::platform {

namespace {

using namespace Qt::StringLiterals;

SymbolBody bodyOf(SymbolPath const& path)
{
    SymbolBody body;
    body.content = "<path fill-rule=\"evenodd\" d=\""
        + QByteArray(path.data.data(), static_cast<qsizetype>(path.data.size())) + "\"/>";
    return body;
}

std::optional<QRectF> parseViewBox(QStringView text)
{
    auto const parts = text.split(u' ', Qt::SkipEmptyParts);
    if (parts.size() != 4)
        return std::nullopt;
    QRectF const box(
        parts[0].toDouble(), parts[1].toDouble(), parts[2].toDouble(), parts[3].toDouble());
    return box.isEmpty() ? std::nullopt : std::optional(box);
}

bool readRoot(QByteArray const& document, SymbolBody& body)
{
    QXmlStreamReader reader(document);
    if (!reader.readNextStartElement() || reader.name() != "svg"_L1)
        return false;
    auto const attributes = reader.attributes();
    auto box = parseViewBox(attributes.value("viewBox"_L1));
    if (!box) {
        QRectF const plain(0, 0, attributes.value("width"_L1).toDouble(),
            attributes.value("height"_L1).toDouble());
        if (plain.isEmpty())
            return false;
        box = plain;
    }
    body.viewBox = *box;
    for (auto const& declaration : reader.namespaceDeclarations()) {
        if (!declaration.prefix().isEmpty())
            body.namespaces += " xmlns:" + declaration.prefix().toUtf8() + "=\""
                + declaration.namespaceUri().toString().toHtmlEscaped().toUtf8() + '"';
    }
    return true;
}

// The icon themes' own grey would win over the colour that is asked for.
QByteArray withoutFixedColors(QByteArray const& content)
{
    static QRegularExpression const color(
        QStringLiteral(R"(\b(fill|stroke)(\s*[:=]\s*["']?)(#[0-9a-fA-F]{3,8}|black|gray|grey)\b)"));
    return QString::fromUtf8(content).replace(color, QStringLiteral("\\1\\2currentColor")).toUtf8();
}

std::optional<SymbolBody> bodyOf(SymbolFile const& symbol)
{
    constexpr qint64 largestFile = 262'144;
    QFile file(symbol.path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile)
        return std::nullopt;
    auto const document = file.readAll();
    SymbolBody body;
    auto const root = document.indexOf("<svg");
    auto const start = root < 0 ? root : document.indexOf('>', root);
    auto const end = document.lastIndexOf("</svg>");
    if (start < 0 || end <= start || !readRoot(document, body))
        return std::nullopt;
    body.content = document.mid(start + 1, end - start - 1).trimmed();
    if (!body.content.contains('#'))
        return body;
    body.content = withoutFixedColors(body.content);
    return body;
}

} // namespace

std::optional<SymbolBody> symbolBody(std::string_view name)
{
    auto const source = findSymbol(name);
    if (!source)
        return std::nullopt;
    if (auto const* path = std::get_if<SymbolPath>(&*source))
        return bodyOf(*path);
    return bodyOf(std::get<SymbolFile>(*source));
}

} // namespace quillbar::platform
