#include "platform/linux/drawing/SymbolOutline.h"

#include "platform/linux/drawing/PathData.h"
#include "platform/linux/drawing/SymbolBody.h"

#include <QXmlStreamReader>

#include <algorithm>

namespace quillbar::platform {

namespace {

using namespace Qt::StringLiterals;

bool isPlain(QXmlStreamAttribute const& attribute)
{
    auto const name = attribute.qualifiedName();
    return name == "d"_L1 || name == "fill-rule"_L1
        || (name == "fill"_L1 && attribute.value() == "currentColor"_L1);
}

std::optional<QPainterPath> readPath(QXmlStreamReader& reader)
{
    auto const attributes = reader.attributes();
    if (reader.name() != "path"_L1 || !std::ranges::all_of(attributes, isPlain))
        return std::nullopt;
    auto const data = attributes.value("d"_L1).toUtf8();
    auto path = parsePathData({ data.data(), static_cast<std::size_t>(data.size()) });
    if (path && attributes.value("fill-rule"_L1) != "evenodd"_L1)
        path->setFillRule(Qt::WindingFill);
    reader.skipCurrentElement();
    return path;
}

} // namespace

std::optional<SymbolOutline> symbolOutline(std::string_view name)
{
    auto const body = symbolBody(name);
    if (!body)
        return std::nullopt;
    SymbolOutline outline { .viewBox = body->viewBox, .paths = {} };
    QXmlStreamReader reader("<g" + body->namespaces + '>' + body->content + "</g>");
    reader.readNextStartElement();
    while (reader.readNextStartElement()) {
        auto path = readPath(reader);
        if (!path)
            return std::nullopt;
        outline.paths.push_back(std::move(*path));
    }
    return reader.hasError() || outline.paths.empty() ? std::nullopt : std::optional(outline);
}

} // namespace quillbar::platform
