#include "platform/linux/tray/MenuExport.h"

#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"

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
QString cutToLength(QString const& label)
{
    constexpr qsizetype mostCharacters = 80;
    if (label.size() <= mostCharacters)
        return label;
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, label);
    characters.setPosition(mostCharacters);
    if (!characters.isAtBoundary())
        characters.toPreviousBoundary();
    auto const end = characters.position() > 0 ? characters.position() : mostCharacters;
    return label.left(end) + QChar(0x2026);
}

bool isHeading(MenuItem const& item)
{
    return !item.action && item.command == StandardCommand::None;
}

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

// GTK's importer takes the names of X key symbols only, Qt's a sign only as itself.
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
        = cutToLength(toQString(item.attributedTitle ? item.attributedTitle->text : item.title));
    label.replace('\n'_L1, QChar::Space).replace(QChar::Null, QChar::ReplacementCharacter);
    return label.replace('_'_L1, "__"_L1);
}

QStringList exportedShortcut(KeyEquivalent const& equivalent)
{
    if (equivalent.key.empty())
        return {};
    auto const key = toQString(equivalent.key);
    auto const modifiers = toQtModifiers(equivalent.allModifiers());
    QStringList keys;
    if (modifiers.testFlag(Qt::ControlModifier))
        keys << u"Control"_s;
    if (modifiers.testFlag(Qt::AltModifier))
        keys << u"Alt"_s;
    if (modifiers.testFlag(Qt::ShiftModifier))
        keys << u"Shift"_s;
    if (modifiers.testFlag(Qt::MetaModifier))
        keys << u"Super"_s;
    return keys << (key == ","_L1 ? nameOfComma() : key.toLower());
}

bool isSameMenu(Menu const& left, Menu const& right)
{
    return std::ranges::equal(left.items, right.items, isSameItem);
}

MenuExport::Change MenuExport::setMenu(
    std::shared_ptr<Menu const> menu, std::vector<ChangedRow>& changed)
{
    auto const isSame = isSameMenu(*menu_, *menu);
    // The rows point into the menu, so it lives until they are made anew.
    auto const oldMenu = std::exchange(menu_, std::move(menu));
    if (!isSame)
        ++revision_;
    if (!isBuilt_)
        return isSame ? Change::None : Change::Layout;
    auto const oldRows = std::move(rows_);
    auto const oldPositions = std::move(positions_);
    buildRows();
    if (isSame)
        return Change::None;
    changed = changedRows(oldRows, oldPositions);
    return Change::Layout;
}

MenuExport::Row const* MenuExport::row(int id)
{
    if (!isBuilt_)
        buildRows();
    auto const found = positions_.find(id);
    return found == positions_.end() ? nullptr : &rows_[found->second];
}

std::vector<int> MenuExport::ids()
{
    if (!isBuilt_)
        buildRows();
    std::vector<int> ids;
    ids.reserve(rows_.size());
    for (auto const& row : rows_)
        ids.push_back(row.id);
    return ids;
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
        result.insert(u"icon-data"_s, icon(*row.item->image));
    return result;
}

void MenuExport::buildRows()
{
    isBuilt_ = true;
    rows_.clear();
    positions_.clear();
    rows_.emplace_back().id = rootId;
    IdsByName ids;
    auto children = appendRows(menu_->items, rootId, ids);
    rows_.front().children = std::move(children);
    idsByName_ = std::move(ids);
    for (std::size_t i = 0; i < rows_.size(); ++i)
        positions_.emplace(rows_[i].id, i);
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
        auto const position = rows_.size();
        rows_.push_back({ .id = id, .item = &item, .children = {} });
        if (!item.submenu.empty())
            rows_[position].children = appendRows(item.submenu, id, ids);
    }
    return children;
}

std::vector<ChangedRow> MenuExport::changedRows(
    std::vector<Row> const& oldRows, std::unordered_map<int, std::size_t> const& oldPositions)
{
    std::vector<ChangedRow> changed;
    for (auto const& row : rows_) {
        auto const old = oldPositions.find(row.id);
        if (old == oldPositions.end() || row.item == nullptr)
            continue;
        auto const& oldRow = oldRows[old->second];
        if (isSameItem(*row.item, *oldRow.item))
            continue;
        ChangedRow change { .id = row.id, .properties = properties(row), .removed = {} };
        for (auto const& name : properties(oldRow).keys()) {
            if (!change.properties.contains(name))
                change.removed << name;
        }
        changed.push_back(std::move(change));
    }
    return changed;
}

QByteArray const& MenuExport::icon(Image const& image)
{
    return icons_.get(image, pngOf);
}

} // namespace quillbar::platform
