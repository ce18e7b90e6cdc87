#include "fuzz/MenuSource.h"
#include "fuzz/Target.h"
#include "platform/linux/tray/MenuExport.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quillbar::testing {
namespace {

using platform::Menu;
using platform::MenuExport;
using platform::MenuItem;

/// A host that remembers what each row was, and asks for anything.
class Host {
public:
    void setMenu(std::vector<MenuItem> items)
    {
        auto menu = std::make_shared<Menu const>(Menu { {}, std::move(items) });
        auto const revision = export_.revision();
        auto const isSame = platform::isSameMenu(*menu_, *menu);
        menu_ = menu;
        auto const changes = export_.setMenu(std::move(menu));
        require(isSame == !changes, "a difference is a change");
        require(export_.revision() - revision == (isSame ? 0U : 1U), "a change is counted once");
        for (auto const& row : changes ? changes->updated : QList<platform::MenuRowProperties>())
            require(export_.row(row.id) != nullptr, "only rows that are there change");
    }

    void readAll()
    {
        std::size_t shown = 0;
        read(MenuExport::rootId, shown);
        require(shown == export_.rows().size(), "every row has its place");
    }

    void ask(int id, QString const& name)
    {
        auto const* row = export_.row(id);
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
                                   .replace(QChar::Null, QChar::ReplacementCharacter)
                                   .replace(u'\n', QChar::Space);
            auto label = properties.value(QStringLiteral("label")).toString();
            label.replace(QLatin1String("__"), QLatin1String("_"));
            require(label == title, "a label shows the name on one line");
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
            host.setMenu(menuItems(source));
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
