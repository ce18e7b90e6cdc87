#include "ui/PaletteWindowController.h"

#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "platform/view/EffectView.h"
#include "platform/view/ScrollView.h"
#include "platform/view/Separator.h"
#include "platform/view/TextSize.h"
#include "ui/Texts.h"

#include <algorithm>
#include <utility>

namespace quillbar {

using platform::KeyEventResult;
using platform::Rect;
using platform::SystemColor;

namespace {

constexpr platform::Size contentSize { .width = 400, .height = 244 };
constexpr auto rowIdentifier = "PaletteCell";
constexpr double inset = 12;
constexpr double gap = 8;
constexpr platform::Font nameFont { .size = 14 };
constexpr platform::Font groupFont { .size = 11 };

Rect centredVertically(double x, double width, double height, double rowHeight)
{
    return { x, (rowHeight - height) / 2, std::max(width, 0.0), height };
}

/// One row of the palette: a shortcut's name with its group at the right edge, or a message.
class PaletteRowView : public platform::View {
public:
    enum class Role : std::uint8_t { Shortcut, Message };

    PaletteRowView();

    /// Sets everything that differs from row to row. A message never shows a group.
    void setRole(Role role, std::string name, std::string group);

protected:
    void layout() override;

private:
    std::shared_ptr<platform::Label> const nameLabel_;
    std::shared_ptr<platform::Label> const groupLabel_;
};

PaletteRowView::PaletteRowView()
    : nameLabel_(addText(*this, {}, "", { .font = nameFont }))
    , groupLabel_(addText(*this, {}, "",
          { .font = groupFont,
              .color = SystemColor::SecondaryLabel,
              .alignment = platform::TextAlignment::Right }))
{
}

void PaletteRowView::setRole(Role role, std::string name, std::string group)
{
    auto const isShortcut = role == Role::Shortcut;
    if (!isShortcut)
        group.clear();
    nameLabel_->setText(std::move(name));
    nameLabel_->setColor(isShortcut ? SystemColor::Label : SystemColor::SecondaryLabel);
    groupLabel_->setHidden(group.empty());
    groupLabel_->setText(std::move(group));
    layout();
}

void PaletteRowView::layout()
{
    auto const width = frame().width;
    auto const height = frame().height;
    auto nameEnd = width - inset;
    if (!groupLabel_->isHidden()) {
        auto const size = platform::textSize(groupLabel_->text(), groupFont);
        // A long group gets at most half of the row.
        auto const groupWidth = std::min(size.width, (width - 2 * inset - gap) / 2);
        groupLabel_->setFrame(
            centredVertically(width - inset - groupWidth, groupWidth, size.height, height));
        nameEnd -= groupWidth + gap;
    }
    auto const nameHeight = platform::textSize(nameLabel_->text(), nameFont).height;
    nameLabel_->setFrame(centredVertically(inset, nameEnd - inset, nameHeight, height));
}

/// A borderless window that may become the key window, which by default none may.
class PalettePanel : public platform::Panel {
public:
    using Panel::Panel;

    [[nodiscard]] bool canBecomeKeyWindow() const override { return true; }
};

std::shared_ptr<PalettePanel> makePanel()
{
    auto panel = std::make_shared<PalettePanel>(contentSize, platform::WindowStyle::Borderless);
    panel->setTitle("Quillbar");
    panel->setLevel(platform::WindowLevel::Floating);
    panel->setBackground(platform::WindowBackground::Clear);
    panel->setHasShadow(true);
    panel->setMovableByBackground(true);
    return panel;
}

} // namespace

PaletteWindowController::PaletteWindowController(
    std::shared_ptr<PaletteList const> list, std::function<void(std::string const&)> onSelect)
    : WindowController(makePanel())
    , list_(std::move(list))
    , filtered_(list_)
    , onSelect_(std::move(onSelect))
    , searchField_(std::make_shared<platform::TextField>(platform::TextFieldStyle::Plain))
    , table_(std::make_shared<platform::TableView>())
{
}

void PaletteWindowController::buildUserInterface()
{
    auto& content = window().contentView();
    auto const background = content.addSubview(std::make_shared<platform::EffectView>());
    background->setFrame({ 0, 0, contentSize.width, contentSize.height });
    background->setCornerRadius(12);
    background->setBorderWidth(0.5);
    background->setBorderColor(SystemColor::Separator);

    buildSearchField();
    buildTable();
    addText(content, { 16, 218, 368, 16 }, "↑↓ move · ⏎ run · esc close",
        { .font = { .size = 10 },
            .color = SystemColor::TertiaryLabel,
            .alignment = platform::TextAlignment::Right });
    reloadTable();
}

void PaletteWindowController::buildSearchField()
{
    auto& content = window().contentView();
    content.addSubview(searchField_);
    searchField_->setFrame({ 22, 14, 356, 30 });
    searchField_->setPlaceholder("Type to jump…");
    searchField_->setFont({ .size = 16, .weight = platform::FontWeight::Medium });
    searchField_->setFocusRing(platform::FocusRing::None);
    searchField_->setAccessibilityLabel("Search pinned shortcuts");
    searchField_->onTextChange
        = weakly(*this, [](PaletteWindowController& self) { self.controlTextDidChange(); });
    content.addSubview(std::make_shared<platform::Separator>())->setFrame({ 18, 52, 364, 1 });
}

void PaletteWindowController::buildTable()
{
    table_->setRowHeight(32);
    table_->setAccessibilityLabel("Pinned shortcuts");
    using Self = PaletteWindowController;
    table_->rowCount = weakly(
        *this, [](Self const& self) { return std::max<std::size_t>(self.filtered_.count(), 1); });
    table_->viewForRow
        = weakly(*this, [](Self& self, std::size_t row) { return self.viewForRow(row); });
    table_->onDoubleClick = weakly(*this, [](Self& self) { self.doubleClicked(); });
    auto const scrollView
        = window().contentView().addSubview(std::make_shared<platform::ScrollView>());
    scrollView->setFrame({ 8, 60, 384, 150 });
    scrollView->setVerticalScroller(platform::VerticalScroller::None);
    scrollView->setDrawsBackground(false);
    scrollView->setDocumentView(table_);
}

void PaletteWindowController::show()
{
    window().center();
    window().makeKeyAndOrderFront();
    platform::activateIgnoringOtherApps();
    platform::post(weakly(*this, [](PaletteWindowController& self) {
        if (!self.window().isVisible())
            return;
        self.window().makeKeyAndOrderFront();
        self.window().makeFirstResponder(self.searchField_);
    }));
    if (monitor_)
        return;
    monitor_ = platform::addKeyDownMonitor(
        weakly(*this, [](PaletteWindowController& self, platform::KeyEvent const& event) {
            return self.window().isVisible() ? self.keyDown(event) : KeyEventResult::Pass;
        }));
}

KeyEventResult PaletteWindowController::keyDown(platform::KeyEvent const& event)
{
    switch (event.keyCode) {
    case platform::key::returnKey:
    case platform::key::keypadEnter:
        runSelected();
        return KeyEventResult::Consume;
    case platform::key::escape:
        closePalette();
        return KeyEventResult::Consume;
    case platform::key::downArrow:
        moveSelection(+1);
        return KeyEventResult::Consume;
    case platform::key::upArrow:
        moveSelection(-1);
        return KeyEventResult::Consume;
    default:
        return KeyEventResult::Pass;
    }
}

void PaletteWindowController::runSelected()
{
    auto const row = table_->selectedRow().value_or(0);
    if (row < filtered_.count())
        choose(row);
}

void PaletteWindowController::doubleClicked()
{
    auto const row = table_->clickedRow();
    if (row && *row < filtered_.count())
        choose(*row);
}

void PaletteWindowController::choose(std::size_t row)
{
    auto const name = filtered_.name(row);
    auto const keepAlive = shared_from_this();
    closePalette();
    if (onSelect_)
        onSelect_(name);
}

void PaletteWindowController::closePalette()
{
    monitor_.reset();
    window().orderOut();
    window().close();
}

void PaletteWindowController::moveSelection(int step)
{
    if (filtered_.isEmpty())
        return;
    auto const selected = table_->selectedRow();
    auto target = std::size_t { 0 };
    if (selected)
        target = step < 0 ? *selected - std::min<std::size_t>(*selected, 1) : *selected + 1;
    target = std::min(target, filtered_.count() - 1);
    table_->selectRow(target);
    table_->scrollRowToVisible(target);
}

void PaletteWindowController::controlTextDidChange()
{
    filtered_.setQuery(searchField_->text());
    reloadTable();
}

void PaletteWindowController::reloadTable()
{
    table_->reloadData();
    if (filtered_.isEmpty())
        return;
    table_->selectRow(0);
    table_->scrollRowToVisible(0);
}

std::shared_ptr<platform::View> PaletteWindowController::viewForRow(std::size_t row)
{
    auto view = std::dynamic_pointer_cast<PaletteRowView>(table_->takeReusableView(rowIdentifier));
    if (!view) {
        view = std::make_shared<PaletteRowView>();
        view->setIdentifier(rowIdentifier);
    }
    if (!filtered_.isEmpty()) {
        auto const& name = filtered_.name(row);
        view->setRole(PaletteRowView::Role::Shortcut, name, list_->groupOf(name));
    } else {
        view->setRole(PaletteRowView::Role::Message,
            list_->shortcuts().empty() ? "No shortcuts pinned" : "No shortcuts match", "");
    }
    return view;
}

} // namespace quillbar
