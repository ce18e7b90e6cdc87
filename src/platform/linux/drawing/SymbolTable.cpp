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

// Symbols whose file has another name, and those whose own name would find another shape.
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

// A name comes from the settings file and becomes part of a path, which must stay in its folder.
bool isPlausible(std::string_view name)
{
    constexpr std::size_t longestName = 100;
    return !name.empty() && name.size() <= longestName && std::ranges::all_of(name, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
            || c == '.' || c == '-' || c == '_';
    });
}

std::optional<QString> existing(QString path)
{
    return QFile::exists(path) ? std::optional(std::move(path)) : std::nullopt;
}

std::optional<QString> inIconSet(QString const& fileName)
{
    return existing("/usr/share/bootstrap-icons/svg/"_L1 + fileName + ".svg"_L1);
}

QString withWordsReplaced(QString const& dashed)
{
    QString padded = u'-' + dashed + u'-';
    for (auto const& [word, replacement] : wordReplacements)
        padded.replace(latin1(word), latin1(replacement));
    return padded.mid(1, padded.size() - 2);
}

std::optional<QString> bySpelling(QString const& dashed)
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

std::optional<QString> inIconTheme(QString const& dashed)
{
    constexpr std::array folders { "actions"_L1, "apps"_L1, "categories"_L1, "devices"_L1,
        "emblems"_L1, "emotes"_L1, "mimetypes"_L1, "places"_L1, "status"_L1, "ui"_L1 };
    auto const themes = { QIcon::themeName(), u"Adwaita"_s, u"hicolor"_s };
    for (auto const& root : QIcon::themeSearchPaths()) {
        for (auto const& theme : themes) {
            for (auto const folder : folders) {
                if (auto found = existing(root + '/'_L1 + theme + "/symbolic/"_L1 + folder + '/'_L1
                        + dashed + "-symbolic.svg"_L1))
                    return found;
            }
        }
    }
    return std::nullopt;
}

std::optional<QString> lookUp(std::string_view name)
{
    if (!isPlausible(name))
        return std::nullopt;
    // These first: the launcher's icon is made from the heart among them.
    if (auto own = existing(":/symbols/"_L1 + latin1(name) + ".svg"_L1))
        return own;
    if (auto const file = findIn(fileNames, name)) {
        if (auto found = inIconSet(latin1(*file)))
            return found;
    }
    auto const dashed = QString(latin1(name)).replace(u'.', u'-');
    if (auto found = bySpelling(dashed))
        return found;
    return inIconTheme(dashed);
}

} // namespace

std::optional<QString> findSymbol(std::string_view name)
{
    // A menu asks for the same name once for every heading. Only hits are kept: the
    // icon set may be installed while the program runs.
    static QHash<QByteArray, QString> known;
    constexpr qsizetype mostKnown = 256;
    auto const key = QByteArray::fromRawData(name.data(), static_cast<qsizetype>(name.size()));
    if (auto const found = known.constFind(key); found != known.constEnd())
        return *found;
    auto path = lookUp(name);
    if (path && known.size() < mostKnown)
        known.insert(QByteArray(key.constData(), key.size()), *path);
    return path;
}

bool symbolExists(std::string_view name)
{
    return findSymbol(name).has_value();
}

// Linux programs have no bundle; the caller draws the application's icon itself.
std::optional<Image> bundleImage(std::string_view /*name*/, Size /*size*/)
{
    return std::nullopt;
}

} // namespace quillbar::platform
