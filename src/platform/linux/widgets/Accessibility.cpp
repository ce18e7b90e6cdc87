#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/widgets/NativeView.h"
#include "platform/linux/widgets/WindowPeer.h"
#include "platform/view/Label.h"
#include "platform/view/TableView.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>

#include <algorithm>
#include <optional>

namespace quillbar::platform {

namespace {

constexpr auto moveUp = "Move up";
constexpr auto moveDown = "Move down";

/// What Qt does not know of a widget that draws itself.
std::optional<QAccessible::Role> roleOf(View const& view)
{
    switch (view.kind()) {
    case ViewKind::View:
    case ViewKind::ScrollView:
    case ViewKind::EffectView:
        return QAccessible::Pane;
    case ViewKind::Label:
        return QAccessible::StaticText;
    case ViewKind::ImageView:
        return QAccessible::Graphic;
    case ViewKind::Separator:
        return QAccessible::Separator;
    case ViewKind::TableView:
    case ViewKind::Button:
    case ViewKind::PopUpButton:
    case ViewKind::TextField:
        return std::nullopt;
    }
    return std::nullopt;
}

/// A row of a table, named after its first label; where rows can be reordered it can be told to
/// move.
class RowAccessible final : public QAccessibleWidget {
public:
    RowAccessible(QWidget& widget, NativeView& native)
        : QAccessibleWidget(&widget, QAccessible::ListItem)
        , native_(native)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        auto ownText = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Name || !ownText.isEmpty() || !native_.portable)
            return ownText;
        auto const& subviews = native_.portable->subviews();
        auto const label = std::ranges::find(subviews, ViewKind::Label, &View::kind);
        return label == subviews.end() ? ownText : toQString((*label)->visibleText());
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.selectable = table() && table()->selectionMode() == SelectionMode::Single;
        state.selected = native_.portable && isInSelectedRow(*native_.portable);
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        if (!table() || !table()->moveRow)
            return QAccessibleWidget::actionNames();
        return { QString::fromLatin1(moveUp), QString::fromLatin1(moveDown) };
    }

    void doAction(QString const& name) override
    {
        auto const row = table() ? table()->rowOf(*native_.portable) : std::nullopt;
        if (row && name == QLatin1String(moveUp))
            table()->userMoved(*row, RowMove::Up);
        else if (row && name == QLatin1String(moveDown))
            table()->userMoved(*row, RowMove::Down);
        else
            QAccessibleWidget::doAction(name);
    }

private:
    [[nodiscard]] TableView* table() const
    {
        auto* const superview = native_.portable ? native_.portable->superview() : nullptr;
        return static_cast<TableView*>(superview);
    }

    NativeView& native_;
};

/// A table, whose rows are read from top to bottom whatever order their reused widgets came in.
class TableAccessible final : public QAccessibleWidget {
public:
    explicit TableAccessible(QWidget& widget)
        : QAccessibleWidget(&widget, QAccessible::List)
    {
    }

    [[nodiscard]] int childCount() const override { return static_cast<int>(rows().size()); }

    [[nodiscard]] QAccessibleInterface* child(int index) const override
    {
        return QAccessible::queryAccessibleInterface(rows().value(index));
    }

    [[nodiscard]] int indexOfChild(QAccessibleInterface const* child) const override
    {
        return child ? static_cast<int>(rows().indexOf(child->object())) : -1;
    }

private:
    [[nodiscard]] QObjectList rows() const
    {
        QObjectList rows;
        for (auto* const child : widget()->children()) {
            auto const* const native
                = child->isWidgetType() ? nativeViewOf(static_cast<QWidget*>(child)) : nullptr;
            if (native && native->portable)
                rows.append(child);
        }
        std::ranges::sort(
            rows, {}, [](QObject const* row) { return static_cast<QWidget const*>(row)->y(); });
        return rows;
    }
};

/// Qt names a pop-up after its value and lists every item of the closed menu. Here the name says
/// what is chosen, the description which, and the open list is the child.
class PopUpAccessible final : public QAccessibleWidget {
public:
    explicit PopUpAccessible(QComboBox& widget)
        : QAccessibleWidget(&widget, QAccessible::ComboBox)
        , popUp_(widget)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        bool const isValue = kind == QAccessible::Description || kind == QAccessible::Value;
        return isValue ? popUp_.currentText() : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] int childCount() const override { return openList() ? 1 : 0; }

    [[nodiscard]] QAccessibleInterface* child(int index) const override
    {
        return index == 0 ? QAccessible::queryAccessibleInterface(openList()) : nullptr;
    }

    [[nodiscard]] int indexOfChild(QAccessibleInterface const* child) const override
    {
        return child && openList() && child->object() == openList() ? 0 : -1;
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.hasPopup = true;
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList { showMenuAction() } + QAccessibleWidget::actionNames();
    }

    void doAction(QString const& name) override
    {
        if (name == showMenuAction())
            popUp_.showPopup();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    [[nodiscard]] QAbstractItemView* openList() const
    {
        // Asking the pop-up for its list would make one.
        auto* const list = popUp_.findChild<QAbstractItemView*>();
        return list && list->isVisible() ? list : nullptr;
    }

    QComboBox& popUp_;
};

QAccessibleInterface* makeInterface(QString const&, QObject* object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    auto& widget = static_cast<QWidget&>(*object);
    if (nativeWindowOf(&widget) == &widget)
        return new QAccessibleWidget(&widget, QAccessible::Window);
    auto* const native = nativeViewOf(&widget);
    if (!native || !native->portable)
        return nullptr;
    auto const& view = *native->portable;
    if (view.superview() && view.superview()->kind() == ViewKind::TableView)
        return new RowAccessible(widget, *native);
    if (view.kind() == ViewKind::TableView)
        return new TableAccessible(widget);
    if (view.kind() == ViewKind::PopUpButton)
        return new PopUpAccessible(static_cast<QComboBox&>(widget));
    auto const role = roleOf(view);
    return role ? new QAccessibleWidget(&widget, *role) : nullptr;
}

} // namespace

void installAccessibility()
{
    static bool isInstalled = false;
    if (!std::exchange(isInstalled, true))
        QAccessible::installFactory(makeInterface);
}

} // namespace quillbar::platform
