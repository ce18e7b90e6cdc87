#include "fuzz/Target.h"
#include "platform/linux/tray/MenuExport.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quillbar::testing {
namespace {

using platform::ChangedRow;
using platform::Menu;
using platform::MenuExport;
using platform::MenuItem;

/// Takes what a menu and the calls of hosts are made of from the bytes; zeros at their end.
class Source {
public:
    Source(std::uint8_t const* data, std::size_t size)
        : rest_(data, size)
    {
    }

    [[nodiscard]] bool isAtEnd() const { return rest_.empty(); }

    std::uint8_t byte()
    {
        if (rest_.empty())
            return 0;
        auto const value = rest_.front();
        rest_.remove_prefix(1);
        return value;
    }

    std::string text()
    {
        auto const length = byte() % 16U;
        auto const taken = rest_.substr(0, length);
        rest_.remove_prefix(taken.size());
        return { taken.begin(), taken.end() };
    }

    int number()
    {
        std::uint32_t value = 0;
        for (auto index = 0; index < 4; ++index)
            value = value << 8 | byte();
        return static_cast<int>(value);
    }

private:
    std::basic_string_view<std::uint8_t> rest_;
};

MenuItem item(Source& source, int depth);

std::vector<MenuItem> items(Source& source, int depth)
{
    std::vector<MenuItem> result;
    for (auto count = source.byte() % 6; count > 0; --count)
        result.push_back(item(source, depth));
    return result;
}

MenuItem item(Source& source, int depth)
{
    constexpr int deepest = 4;
    auto const flags = source.byte();
    if ((flags & 0xF) == 0xF)
        return MenuItem::separator();
    MenuItem result;
    result.title = source.text();
    result.isEnabled = (flags & 1) == 0;
    if ((flags & 2) != 0)
        result.action = [](MenuItem const&) {};
    if ((flags & 4) != 0)
        result.representedObject = source.text();
    if ((flags & 8) != 0)
        result.keyEquivalent = { source.text(), source.byte() * 256U };
    if ((flags & 0x10) != 0)
        result.attributedTitle = platform::AttributedText { result.title, {}, {} };
    if ((flags & 0x20) != 0)
        result.image = platform::SymbolImage { "heart.fill", {}, {}, {} };
    if ((flags & 0x40) != 0 && depth < deepest)
        result.submenu = items(source, depth + 1);
    return result;
}

/// A host that remembers what each row was, and asks for anything.
class Host {
public:
    void setMenu(std::vector<MenuItem> items)
    {
        auto menu = std::make_shared<Menu const>(Menu { {}, std::move(items) });
        auto const revision = export_.revision();
        auto const isSame = platform::isSameMenu(*menu_, *menu);
        menu_ = menu;
        std::vector<ChangedRow> changed;
        auto const change = export_.setMenu(std::move(menu), changed);
        require(isSame == (change == MenuExport::Change::None), "a difference is a change");
        require(export_.revision() - revision == (isSame ? 0U : 1U), "a change is counted once");
        for (auto const& row : changed)
            require(export_.row(row.id) != nullptr, "only rows that are there change");
    }

    void readAll()
    {
        auto const ids = export_.ids();
        std::set<int> const distinct(ids.begin(), ids.end());
        require(distinct.size() == ids.size(), "an id stands for one row");
        std::size_t shown = 0;
        read(MenuExport::rootId, shown);
        require(shown == ids.size(), "every row has its place");
    }

    void ask(int id, QString const& name)
    {
        auto const ids = export_.ids();
        auto const* row = export_.row(id);
        require((row != nullptr) == (std::ranges::find(ids, id) != ids.end()),
            "a row is known by its id alone");
        if (row == nullptr)
            return;
        auto const all = export_.properties(*row);
        auto const some = export_.properties(*row, { name });
        require(some.size() <= 1 && some.value(name) == all.value(name),
            "a property is the same however it is asked for");
    }

private:
    using Meaning = std::pair<bool, std::string>;

    void read(int id, std::size_t& shown)
    {
        auto const* row = export_.row(id);
        require(row != nullptr && row->id == id, "a child is a row");
        ++shown;
        auto const properties = export_.properties(*row);
        if (row->item != nullptr)
            requireMeaning(id, *row->item);
        if (properties.contains(QStringLiteral("label"))) {
            auto const title = QString::fromStdString(row->item->title)
                                   .replace(QChar::Null, QChar::ReplacementCharacter);
            auto label = properties.value(QStringLiteral("label")).toString();
            label.replace(QLatin1String("__"), QLatin1String("_"));
            require(label == title, "a label shows the name exactly");
        }
        for (auto const child : row->children)
            read(child, shown);
    }

    void requireMeaning(int id, MenuItem const& item)
    {
        auto const isSeparator = item.kind == platform::MenuItemKind::Separator;
        Meaning const meaning { isSeparator, item.representedObject.value_or(item.title) };
        auto const [known, isNew] = meanings_.emplace(id, meaning);
        require(isNew || known->second == meaning, "an id never gets another meaning");
    }

    MenuExport export_;
    std::shared_ptr<Menu const> menu_ = std::make_shared<Menu const>();
    std::map<int, Meaning> meanings_;
};

} // namespace
} // namespace quillbar::testing

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace quillbar::testing;
    Source source(data, size);
    Host host;
    while (!source.isAtEnd()) {
        switch (source.byte() % 4) {
        case 0:
            host.setMenu(items(source, 0));
            break;
        case 1:
            host.readAll();
            break;
        case 2:
            host.ask(source.byte(), QString::fromStdString(source.text()));
            break;
        default:
            host.ask(source.number(), QStringLiteral("label"));
        }
    }
    return 0;
}
