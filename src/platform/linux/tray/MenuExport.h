#pragma once

#include "platform/linux/drawing/ImageCache.h"
#include "platform/view/Menu.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace quillbar::platform {

/// The text as menus on the bus show it exactly: there a single underscore marks a mnemonic. On one
/// line, and cut with an ellipsis before its kept ending where it is so long that no menu could
/// show it.
[[nodiscard]] QString exportedLabel(MenuItem const& item);

/// For example { "Super", "Alt", "t" }; empty when the item has no key equivalent.
[[nodiscard]] QStringList exportedShortcut(KeyEquivalent const& equivalent);

struct MenuRowProperties {
    int id = 0;
    QVariantMap properties;

    static auto fields(auto& self) { return std::tie(self.id, self.properties); }
};

struct MenuRowRemovals {
    int id = 0;
    QStringList names;

    static auto fields(auto& self) { return std::tie(self.id, self.names); }
};

/// The rows that are in the menu before and after a change and appear different: all properties
/// that they have now, and the names of those that they had.
struct MenuChanges {
    QList<MenuRowProperties> updated;
    QList<MenuRowRemovals> removed;
};

/// A menu as rows with ids, the way hosts on the bus see it. A row keeps its id as long as the menu
/// has one of its kind and name, and no id is used for another row later: a late click can never
/// hit a wrong one. Rows and ids are made when a host first asks for them.
class MenuExport {
public:
    struct Row {
        int id = 0;
        /// Null for the root.
        MenuItem const* item = nullptr;
        std::vector<int> children;
    };

    static constexpr int rootId = 0;

    /// Nothing when the menu looks as before; no rows when no host has read it.
    std::optional<MenuChanges> setMenu(std::shared_ptr<Menu const> menu);

    /// Counts the menus that looked different from the one before.
    [[nodiscard]] unsigned revision() const { return revision_; }
    /// Null when no row has that id. Valid until the next setMenu().
    [[nodiscard]] Row const* row(int id);
    /// All rows by id, the root first.
    [[nodiscard]] std::map<int, Row> const& rows();
    /// The properties that differ from their defaults; an empty list of names asks for all.
    [[nodiscard]] QVariantMap properties(Row const& row, QStringList const& names = {});

private:
    using IdsByName = std::unordered_map<std::string, std::vector<int>>;

    std::vector<int> appendRows(std::vector<MenuItem> const& items, int parent, IdsByName& ids);
    MenuChanges changesSince(std::map<int, Row> const& oldRows);

    std::shared_ptr<Menu const> menu_ = std::make_shared<Menu const>();
    unsigned revision_ = 1;
    int nextId_ = rootId + 1;
    /// Empty until a host asks.
    std::map<int, Row> rows_;
    IdsByName idsByName_;
    ImageCache<QByteArray> icons_;
};

} // namespace quillbar::platform
