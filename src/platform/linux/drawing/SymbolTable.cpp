#include "platform/linux/drawing/SymbolTable.h"

#include "platform/Symbols.h"

#include <QFile>
#include <QHash>
#include <QIcon>

#include <algorithm>
#include <array>
#include <utility>

namespace quillbar::platform {

namespace {

using namespace std::string_view_literals;
using namespace Qt::StringLiterals;

struct NamedText {
    std::string_view name;
    std::string_view text;
};

// Names whose file is called otherwise, and those whose own spelling would find another shape.
constexpr std::array fileNames {
    NamedText { "bolt"sv, "lightning"sv },
    NamedText { "bolt.fill"sv, "lightning-fill"sv },
    NamedText { "sparkles"sv, "stars"sv },
    NamedText { "forward.fill"sv, "fast-forward-fill"sv },
    NamedText { "forward"sv, "fast-forward"sv },
    NamedText { "flame.fill"sv, "fire"sv },
    NamedText { "flame"sv, "fire"sv },
    NamedText { "sun.max.fill"sv, "sun-fill"sv },
    NamedText { "sun.max"sv, "sun"sv },
    NamedText { "snowflake"sv, "snow"sv },
    NamedText { "paperplane.fill"sv, "send-fill"sv },
    NamedText { "paperplane"sv, "send"sv },
    NamedText { "checkmark.seal.fill"sv, "patch-check-fill"sv },
    NamedText { "checkmark.seal"sv, "patch-check"sv },
    NamedText { "rectangle.grid.2x2.fill"sv, "grid-fill"sv },
    NamedText { "rectangle.grid.2x2"sv, "grid"sv },
    NamedText { "desktopcomputer"sv, "pc-display-horizontal"sv },
    NamedText { "laptopcomputer"sv, "laptop"sv },
    NamedText { "apple.logo"sv, "apple"sv },
    NamedText { "square.and.pencil"sv, "pencil-square"sv },
    NamedText { "magnifyingglass"sv, "search"sv },
    NamedText { "line.3.horizontal"sv, "list"sv },
    NamedText { "xmark.circle.fill"sv, "x-circle-fill"sv },
    NamedText { "exclamationmark.triangle.fill"sv, "exclamation-triangle-fill"sv },
    NamedText { "phone.fill"sv, "telephone-fill"sv },
    NamedText { "phone"sv, "telephone"sv },
};

constexpr auto heart
    = "M8 14.9C-2.2 8.6.2 1.3 4.3 1.3c1.7 0 3.1 1 3.7 2.4.6-1.4 2-2.4 3.7-2.4 4.1 0 "
      "6.5 7.3-3.7 13.6z"sv;

constexpr std::array ownPaths {
    NamedText { "heart.circle.fill"sv,
        "M8 0a8 8 0 1 0 0 16A8 8 0 0 0 8 0zM8 12.5C2.2 8.9 3.4 4.7 5.8 4.7c1 0 1.8.6 2.2 1.4.4-.8 "
        "1.2-1.4 2.2-1.4 2.4 0 3.6 4.2-2.2 7.8z"sv },
    NamedText { "bolt.circle.fill"sv,
        "M8 0a8 8 0 1 0 0 16A8 8 0 0 0 8 0zM9.3 2.6 4.7 8.8h2.8l-1 4.6 4.8-6.2H8.4z"sv },
    NamedText { "star.circle.fill"sv,
        "M8 0a8 8 0 1 0 0 16A8 8 0 0 0 8 0zM8 3.4 9.18 6.58 12.57 6.72 9.9 8.82 10.82 12.08 8 10.2 "
        "5.18 12.08 6.1 8.82 3.43 6.72 6.82 6.58z"sv },
    NamedText { "exclamationmark.triangle.fill"sv,
        "M8 1 15.8 15H.2zM7.1 5.6V10.6h1.8V5.6zM7.1 11.6v1.8h1.8v-1.8z"sv },
    NamedText { "leaf.fill"sv,
        "M14.6 1.4C7.6 1.2 1.8 3.9 1.8 9.3c0 1.2.3 2.2.9 3.1l-1.6 1.6a.65.65 0 0 0 .92.92l1.6-1.6c."
        "9.6 1.9.9 3.1.9 5.4 0 8.1-5.8 7.9-12.8zM3.9 12.8l-.7-.7 7.3-7.3.7.7z"sv },
    NamedText { "square.split.2x2.fill"sv,
        "M4 1h3.5v6.5H1V4a3 3 0 0 1 3-3zM8.5 1H12a3 3 0 0 1 3 3v3.5H8.5zM1 8.5h6.5V15H4a3 3 0 0 "
        "1-3-3zM8.5 8.5H15V12a3 3 0 0 1-3 3H8.5z"sv },
    NamedText { "circle.grid.2x2.fill"sv,
        "M4.25 1.25a3 3 0 1 0 0 6 3 3 0 0 0 0-6zM11.75 1.25a3 3 0 1 0 0 6 3 3 0 0 0 0-6zM4.25 "
        "8.75a3 "
        "3 0 1 0 0 6 3 3 0 0 0 0-6zM11.75 8.75a3 3 0 1 0 0 6 3 3 0 0 0 0-6z"sv },
    NamedText { "scope"sv,
        "M8 0a.6.6 0 0 1 .6.6v1.43A6 6 0 0 1 13.97 7.4h1.43a.6.6 0 0 1 0 1.2h-1.43a6 6 0 0 1-5.37 "
        "5.37v1.43a.6.6 0 0 1-1.2 0v-1.43A6 6 0 0 1 2.03 8.6H.6a.6.6 0 0 1 0-1.2h1.43A6 6 0 0 1 "
        "7.4 "
        "2.03V.6A.6.6 0 0 1 8 0zM7.4 3.24A4.8 4.8 0 0 0 3.24 7.4H5a.6.6 0 0 1 0 1.2H3.24a4.8 4.8 0 "
        "0 "
        "0 4.16 4.16V11a.6.6 0 0 1 1.2 0v1.76a4.8 4.8 0 0 0 4.16-4.16H11a.6.6 0 0 1 "
        "0-1.2h1.76A4.8 4.8 0 0 0 8.6 3.24V5a.6.6 0 0 1-1.2 0z"sv },
    NamedText { "cursorarrow.click.2"sv,
        "M6.2 6.2 15 9.4l-3.7 1.5L9.8 14.6zM6.1 1.2a.55.55 0 0 1 1.08-.2l.4 2.1a.55.55 0 0 "
        "1-1.08.2zM1.3 2.1a.55.55 0 0 1 .78 0l1.7 1.7a.55.55 0 0 1-.78.78L1.3 2.88a.55.55 0 0 1 "
        "0-.78zM.9 6.3a.55.55 0 0 1 .65-.43l2.1.42a.55.55 0 0 1-.22 1.08l-2.1-.42A.55.55 0 0 1 .9 "
        "6.3z"sv },
    NamedText { "sparkle"sv,
        "M8 0c.55 4.7 3.3 7.45 8 8-4.7.55-7.45 3.3-8 8-.55-4.7-3.3-7.45-8-8 4.7-.55 7.45-3.3 8-8z"sv },
};

// Words of symbol names and what the icon set calls the same thing, longest phrase first.
constexpr std::array wordReplacements {
    NamedText { "-speaker-wave-1-"sv, "-volume-down-"sv },
    NamedText { "-speaker-wave-2-"sv, "-volume-up-"sv },
    NamedText { "-speaker-wave-3-"sv, "-volume-up-"sv },
    NamedText { "-speaker-slash-"sv, "-volume-mute-"sv },
    NamedText { "-speaker-"sv, "-volume-off-"sv },
    NamedText { "-chart-bar-"sv, "-bar-chart-"sv },
    NamedText { "-list-bullet-"sv, "-list-ul-"sv },
    NamedText { "-bolt-"sv, "-lightning-"sv },
    NamedText { "-gearshape-"sv, "-gear-"sv },
    NamedText { "-magnifyingglass-"sv, "-search-"sv },
    NamedText { "-checkmark-"sv, "-check-"sv },
    NamedText { "-xmark-"sv, "-x-"sv },
    NamedText { "-exclamationmark-"sv, "-exclamation-"sv },
    NamedText { "-doc-"sv, "-file-earmark-"sv },
    NamedText { "-photo-"sv, "-image-"sv },
    NamedText { "-video-"sv, "-camera-video-"sv },
    NamedText { "-bubble-"sv, "-chat-"sv },
    NamedText { "-message-"sv, "-chat-"sv },
    NamedText { "-location-"sv, "-geo-alt-"sv },
    NamedText { "-creditcard-"sv, "-credit-card-"sv },
    NamedText { "-drop-"sv, "-droplet-"sv },
    NamedText { "-car-"sv, "-car-front-"sv },
    NamedText { "-bus-"sv, "-bus-front-"sv },
    NamedText { "-gamecontroller-"sv, "-controller-"sv },
    NamedText { "-puzzlepiece-"sv, "-puzzle-"sv },
    NamedText { "-paintbrush-"sv, "-brush-"sv },
    NamedText { "-backward-"sv, "-rewind-"sv },
};

QLatin1StringView latin1(std::string_view text)
{
    return { text.data(), static_cast<qsizetype>(text.size()) };
}

template <typename Table>
std::optional<std::string_view> findIn(Table const& table, std::string_view name)
{
    auto const found = std::ranges::find(table, name, &NamedText::name);
    return found == table.end() ? std::nullopt : std::optional(found->text);
}

// Names come from a file that anybody may write: no name may lead out of the icon folders.
bool isPlausible(std::string_view name)
{
    constexpr std::size_t longestName = 100;
    return !name.empty() && name.size() <= longestName && std::ranges::all_of(name, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
            || c == '.' || c == '-' || c == '_';
    });
}

std::optional<SymbolSource> inIconSet(QString const& fileName)
{
    QString path = "/usr/share/bootstrap-icons/svg/"_L1 + fileName + ".svg"_L1;
    if (!QFile::exists(path))
        return std::nullopt;
    return SymbolFile { std::move(path) };
}

QString withWordsReplaced(QString const& dashed)
{
    QString padded = u'-' + dashed + u'-';
    for (auto const& [word, replacement] : wordReplacements)
        padded.replace(latin1(word), latin1(replacement));
    return padded.mid(1, padded.size() - 2);
}

std::optional<SymbolSource> bySpelling(QString const& dashed)
{
    if (auto found = inIconSet(dashed))
        return found;
    auto name = withWordsReplaced(dashed);
    if (name != dashed) {
        if (auto found = inIconSet(name))
            return found;
    }
    if (!name.endsWith("-fill"_L1))
        return std::nullopt;
    name.chop(5);
    return inIconSet(name);
}

std::optional<SymbolSource> inIconTheme(QString const& dashed)
{
    constexpr std::array folders { "actions"_L1, "apps"_L1, "categories"_L1, "devices"_L1,
        "emblems"_L1, "emotes"_L1, "mimetypes"_L1, "places"_L1, "status"_L1, "ui"_L1 };
    auto const themes = { QIcon::themeName(), u"Adwaita"_s, u"hicolor"_s };
    for (auto const& root : QIcon::themeSearchPaths()) {
        for (auto const& theme : themes) {
            for (auto const folder : folders) {
                QString path = root + '/'_L1 + theme + "/symbolic/"_L1 + folder + '/'_L1 + dashed
                    + "-symbolic.svg"_L1;
                if (QFile::exists(path))
                    return SymbolFile { std::move(path) };
            }
        }
    }
    return std::nullopt;
}

std::optional<SymbolSource> lookUp(std::string_view name)
{
    if (!isPlausible(name))
        return std::nullopt;
    if (auto const file = findIn(fileNames, name)) {
        if (auto found = inIconSet(latin1(*file)))
            return found;
    }
    if (auto const path = findIn(ownPaths, name))
        return SymbolPath { *path };
    auto const dashed = QString(latin1(name)).replace(u'.', u'-');
    if (auto found = bySpelling(dashed))
        return found;
    if (name == "heart.fill"sv)
        return SymbolPath { heart };
    return inIconTheme(dashed);
}

} // namespace

std::optional<SymbolSource> findSymbol(std::string_view name)
{
    // A menu asks for the same name once for every heading. Misses are asked again: the icon set
    // may be installed while the program runs.
    static QHash<QByteArray, SymbolSource> known;
    constexpr qsizetype mostKnown = 256;
    auto const key = QByteArray::fromRawData(name.data(), static_cast<qsizetype>(name.size()));
    if (auto const found = known.constFind(key); found != known.constEnd())
        return *found;
    auto source = lookUp(name);
    if (source && known.size() < mostKnown)
        known.insert(QByteArray(key.constData(), key.size()), *source);
    return source;
}

bool symbolExists(std::string_view name)
{
    return findSymbol(name).has_value();
}

// Programs carry no icon of their own here; the drawn one is the same as the theme's.
std::optional<Image> bundleImage(std::string_view /*name*/, Size /*size*/)
{
    return std::nullopt;
}

} // namespace quillbar::platform
