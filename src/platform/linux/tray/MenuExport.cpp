#include "platform/linux/tray/MenuExport.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"
#include "platform/linux/input/ModifierTable.h"

#include <QGuiApplication>
#include <QList>
#include <QScreen>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

// The colour of the host's menu is not known here: this grey reads well on black and on white.
constexpr QRgb symbolColor = qRgb(0x80, 0x80, 0x80);

bool isSameImage(std::optional<Image> const& left, std::optional<Image> const& right)
{
    if (!left || !right)
        return left.has_value() == right.has_value();
    return isSameImage(*left, *right);
}

// Hosts make a menu as wide as its widest row, or show the end of that row only.
QString cutToLength(QString const& label, QString const& keptEnding)
{
    constexpr qsizetype mostCharacters = 80;
    if (label.size() <= mostCharacters)
        return label;
    auto const room = mostCharacters - keptEnding.size();
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, label);
    characters.setPosition(room);
    if (!characters.isAtBoundary())
        characters.toPreviousBoundary();
    auto const end = characters.position() > 0 ? characters.position() : room;
    return label.left(end) + QChar(0x2026) + keptEnding;
}

bool isHeading(MenuItem const& item)
{
    return !item.action && item.command == StandardCommand::None;
}

/// Whether a host shows the two alike; what their actions do is not compared.
bool isSameItem(MenuItem const& left, MenuItem const& right)
{
    return left.kind == right.kind && left.isEnabled == right.isEnabled && left.title == right.title
        && left.representedObject == right.representedObject
        && left.keyEquivalent == right.keyEquivalent
        && left.attributedTitle == right.attributedTitle && isHeading(left) == isHeading(right)
        && isSameImage(left.image, right.image)
        && std::ranges::equal(left.submenu, right.submenu, isSameItem);
}

std::string nameOf(MenuItem const& item, int parent)
{
    auto name = std::to_string(parent);
    if (item.kind == MenuItemKind::Separator)
        return name + " separator";
    name += isHeading(item) ? " heading " : " command ";
    // What a pinned row runs is its name; the title also tells its hotkey, which may change.
    return name + (item.representedObject ? "= " + *item.representedObject : "- " + item.title);
}

// GTK's reader of menus knows a comma only by its X key symbol's name, Qt's only as the character.
QString nameOfComma()
{
    auto const desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':'_L1);
    return desktops.contains("KDE"_L1) || desktops.contains("LXQt"_L1) ? u","_s : u"comma"_s;
}

QByteArray pngOf(Image const& image)
{
    // Not every host scales icons: mate-panel shows each of their pixels as one of the screen's. A
    // session may have no screen for a while.
    auto const* const screen = QGuiApplication::primaryScreen();
    return encodePng(renderImage(image,
        { .symbolSize = { 16, 16 },
            .devicePixelRatio = screen ? screen->devicePixelRatio() : 1,
            .foreground = symbolColor,
            .palette = {} }));
}

} // namespace

QString exportedLabel(MenuItem const& item)
{
    auto label
        = cutToLength(toQString(item.attributedTitle ? item.attributedTitle->text : item.title),
            toQString(item.keptEnding));
    label.replace('\n'_L1, QChar::Space).replace(QChar::Null, QChar::ReplacementCharacter);
    return label.replace('_'_L1, "__"_L1);
}

QStringList exportedShortcut(KeyEquivalent const& equivalent)
{
    if (equivalent.key.empty())
        return {};
    auto const key = toQString(equivalent.key);
    QStringList keys;
    for (auto const& row : modifierTable) {
        if ((equivalent.allModifiers() & row.modifier) != 0)
            keys << QString::fromLatin1(row.name);
    }
    return keys << (key == ","_L1 ? nameOfComma() : key.toLower());
}

std::optional<MenuChanges> MenuExport::setMenu(std::shared_ptr<Menu const> menu)
{
    auto const isSame = std::ranges::equal(menu_->items, menu->items, isSameItem);
    // The rows point into the menu, so it lives until they are made anew.
    auto const oldMenu = std::exchange(menu_, std::move(menu));
    auto const oldRows = std::exchange(rows_, {});
    auto changes = oldRows.empty() ? MenuChanges {} : changesSince(oldRows);
    if (isSame)
        return std::nullopt;
    ++revision_;
    return changes;
}

std::map<int, MenuExport::Row> const& MenuExport::rows()
{
    if (rows_.empty()) {
        IdsByName ids;
        rows_[rootId].children = appendRows(menu_->items, rootId, ids);
        idsByName_ = std::move(ids);
    }
    return rows_;
}

MenuExport::Row const* MenuExport::row(int id)
{
    auto const found = rows().find(id);
    return found == rows_.end() ? nullptr : &found->second;
}

QVariantMap MenuExport::properties(Row const& row, QStringList const& names)
{
    QVariantMap result;
    auto const isWanted
        = [&](QString const& name) { return names.isEmpty() || names.contains(name); };
    auto const add = [&](QString const& name, auto const& value) {
        if (isWanted(name))
            result.insert(name, QVariant::fromValue(value));
    };
    if (row.item == nullptr || !row.item->submenu.empty())
        add(u"children-display"_s, u"submenu"_s);
    if (row.item == nullptr)
        return result;
    if (row.item->kind == MenuItemKind::Separator) {
        add(u"type"_s, u"separator"_s);
        return result;
    }
    if (isWanted(u"label"_s))
        result.insert(u"label"_s, exportedLabel(*row.item));
    if (!row.item->isEnabled)
        add(u"enabled"_s, false);
    if (!row.item->keyEquivalent.key.empty())
        add(u"shortcut"_s, QList<QStringList> { exportedShortcut(row.item->keyEquivalent) });
    if (row.item->image && isWanted(u"icon-data"_s))
        result.insert(u"icon-data"_s, icons_.get(*row.item->image, pngOf));
    return result;
}

std::vector<int> MenuExport::appendRows(
    std::vector<MenuItem> const& items, int parent, IdsByName& ids)
{
    std::vector<int> children;
    children.reserve(items.size());
    for (auto const& item : items) {
        auto const name = nameOf(item, parent);
        auto& sameName = ids[name];
        auto const old = idsByName_.find(name);
        auto const isKnown = old != idsByName_.end() && sameName.size() < old->second.size();
        auto const id = isKnown ? old->second[sameName.size()] : nextId_++;
        sameName.push_back(id);
        children.push_back(id);
        auto childrenOfRow = appendRows(item.submenu, id, ids);
        rows_[id] = { .id = id, .item = &item, .children = std::move(childrenOfRow) };
    }
    return children;
}

MenuChanges MenuExport::changesSince(std::map<int, Row> const& oldRows)
{
    MenuChanges changes;
    for (auto const& [id, row] : rows()) {
        auto const old = oldRows.find(id);
        if (old == oldRows.end() || row.item == nullptr || isSameItem(*row.item, *old->second.item))
            continue;
        auto const now = properties(row);
        QStringList removed;
        for (auto const& name : properties(old->second).keys()) {
            if (!now.contains(name))
                removed << name;
        }
        changes.updated << MenuRowProperties { id, now };
        if (!removed.isEmpty())
            changes.removed << MenuRowRemovals { id, removed };
    }
    return changes;
}

} // namespace quillbar::platform
