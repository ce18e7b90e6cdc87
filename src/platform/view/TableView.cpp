#include "platform/view/TableView.h"

#include "platform/view/ScrollView.h"
#include "platform/view/Window.h"

#include <algorithm>
#include <cmath>

namespace quillbar::platform {

namespace {

// The indices among the subviews that lead from a view down to one inside it.
std::vector<std::size_t> pathBetween(View const& ancestor, View const& descendant)
{
    std::vector<std::size_t> path;
    for (View const* view = &descendant; view != &ancestor; view = view->superview()) {
        auto const& siblings = view->superview()->subviews();
        auto const place = std::ranges::find(siblings, view, &std::shared_ptr<View>::get);
        path.insert(path.begin(), static_cast<std::size_t>(place - siblings.begin()));
    }
    return path;
}

std::shared_ptr<View> follow(std::shared_ptr<View> view, std::vector<std::size_t> const& path)
{
    for (auto const place : path) {
        if (place >= view->subviews().size())
            return nullptr;
        view = view->subviews()[place];
    }
    return view;
}

} // namespace

void TableView::reloadData()
{
    numberOfRows_ = rowCount ? rowCount() : 0;
    selectedRow_.reset();
    clickedRow_.reset();
    for (auto& row : rows_)
        spareViews_.push_back(std::move(row.view));
    rows_.clear();
    fitContent();
    tile();
    sync();
}

std::shared_ptr<View> TableView::takeReusableView(std::string_view identifier)
{
    auto const found = std::ranges::find(
        spareViews_, identifier, [](auto const& view) -> auto& { return view->identifier(); });
    if (found == spareViews_.end())
        return nullptr;
    auto view = std::move(*found);
    spareViews_.erase(found);
    return view;
}

std::shared_ptr<View> TableView::viewAtRow(std::size_t row) const
{
    auto const found = std::ranges::find(rows_, row, &Row::index);
    return found == rows_.end() ? nullptr : found->view;
}

std::optional<std::size_t> TableView::rowOf(View const& view) const
{
    for (auto const& row : rows_) {
        if (view.isDescendantOf(*row.view))
            return row.index;
    }
    return std::nullopt;
}

Rect TableView::rectOfRow(std::size_t row) const
{
    return { 0, static_cast<double>(row) * rowHeight_, frame().width, rowHeight_ };
}

std::optional<std::size_t> TableView::rowAt(double y) const
{
    double const row = std::floor(y / rowHeight_);
    if (row < 0 || row >= static_cast<double>(numberOfRows_))
        return std::nullopt;
    return static_cast<std::size_t>(row);
}

std::size_t TableView::gapAt(double y) const
{
    return static_cast<std::size_t>(
        std::clamp(std::round(y / rowHeight_), 0.0, static_cast<double>(numberOfRows_)));
}

std::optional<std::string> TableView::dragText(std::size_t row) const
{
    return dragTextForRow ? dragTextForRow(row) : std::nullopt;
}

void TableView::selectRow(std::size_t row)
{
    set(selectedRow_, row < numberOfRows_ ? std::optional(row) : std::nullopt);
}

void TableView::scrollRowToVisible(std::size_t row)
{
    if (superview() && superview()->kind() == ViewKind::ScrollView)
        static_cast<ScrollView*>(superview())->scrollToVisible(rectOfRow(row));
}

void TableView::userClicked(std::optional<std::size_t> row)
{
    clickedRow_ = row;
    if (row && selectionMode_ == SelectionMode::Single)
        selectRow(*row);
}

void TableView::userDoubleClicked(std::optional<std::size_t> row)
{
    userClicked(row);
    if (auto const callback = onDoubleClick)
        callback();
}

bool TableView::userDropped(std::string const& text, std::size_t gap)
{
    auto const callback = acceptDrop;
    return callback && gap <= numberOfRows_ && callback(text, gap);
}

void TableView::userMoved(std::size_t row, RowMove move)
{
    auto const self = weak_from_this().lock();
    auto const target = neighbour(row, move);
    if (!target || !moveRow)
        return;
    auto const focused = focusedControlOf(row);
    auto const callback = moveRow;
    callback(row, *target);
    if (focused)
        focusControl(*target, *focused);
    else
        scrollRowToVisible(*target);
}

std::optional<std::size_t> TableView::neighbour(std::size_t row, RowMove move) const
{
    if (move == RowMove::Up)
        return row > 0 ? std::optional(row - 1) : std::nullopt;
    return row + 1 < numberOfRows_ ? std::optional(row + 1) : std::nullopt;
}

std::optional<std::vector<std::size_t>> TableView::focusedControlOf(std::size_t row) const
{
    auto const view = viewAtRow(row);
    auto const focused = window() ? window()->firstResponder() : nullptr;
    if (!view || !focused || !focused->isDescendantOf(*view))
        return std::nullopt;
    return pathBetween(*view, *focused);
}

void TableView::focusControl(std::size_t row, std::vector<std::size_t> const& place)
{
    scrollRowToVisible(row);
    auto const view = viewAtRow(row);
    if (view && window())
        window()->makeFirstResponder(follow(view, place));
}

std::vector<std::shared_ptr<View>> TableView::keyOrder() const
{
    std::vector<std::shared_ptr<View>> views;
    for (auto const& row : rows_)
        views.push_back(row.view);
    return views;
}

KeyEventResult TableView::keyDown(KeyEvent const& event)
{
    bool const isArrow = event.keyCode == key::upArrow || event.keyCode == key::downArrow;
    auto const focused = window() ? window()->firstResponder() : nullptr;
    auto const row = isArrow && focused ? rowOf(*focused) : std::nullopt;
    if (!row || (event.modifiers & ~optionKey) != 0)
        return KeyEventResult::Pass;
    auto const move = event.keyCode == key::upArrow ? RowMove::Up : RowMove::Down;
    if (event.modifiers == optionKey)
        userMoved(*row, move);
    else if (auto const target = neighbour(*row, move))
        focusControl(*target, *focusedControlOf(*row));
    return KeyEventResult::Consume;
}

void TableView::layout()
{
    tile();
}

void TableView::visibleRectChanged(Rect const& visibleRect)
{
    visibleRect_ = visibleRect;
    fitContent();
    tile();
}

void TableView::fitContent()
{
    double const height = static_cast<double>(numberOfRows_) * rowHeight_;
    if (visibleRect_)
        setFrame({ 0, 0, visibleRect_->width, std::max(height, visibleRect_->height) });
}

void TableView::tile()
{
    Rect const visible = visibleRect_.value_or(Rect { 0, 0, frame().width, frame().height });
    double const top = std::floor(visible.y / rowHeight_) - 1;
    double const bottom = std::ceil((visible.y + visible.height) / rowHeight_) + 1;
    auto const count = static_cast<double>(numberOfRows_);
    auto const first = static_cast<std::size_t>(std::clamp(top, 0.0, count));
    auto const last = static_cast<std::size_t>(std::clamp(bottom, 0.0, count));
    retireRows(first, last);
    for (auto row = first; row < last; ++row)
        showRow(row);
    for (auto const& row : rows_)
        row.view->setFrame(rectOfRow(row.index));
    for (auto const& spare : spareViews_)
        spare->setHidden(true);
}

void TableView::retireRows(std::size_t first, std::size_t last)
{
    auto const focused = window() ? window()->firstResponder() : nullptr;
    // A row with the focus keeps its view, or the focus would move to another row.
    auto const stays = [&](Row const& row) {
        return (row.index >= first && row.index < last)
            || (focused && focused->isDescendantOf(*row.view));
    };
    for (auto const& row : rows_) {
        if (!stays(row))
            spareViews_.push_back(row.view);
    }
    std::erase_if(rows_, [&](Row const& row) { return !stays(row); });
}

void TableView::showRow(std::size_t row)
{
    auto const place = std::ranges::lower_bound(rows_, row, {}, &Row::index);
    if ((place != rows_.end() && place->index == row) || !viewForRow)
        return;
    auto const view = viewForRow(row);
    if (!view)
        return;
    view->setFrame(rectOfRow(row));
    if (view->superview() != this)
        addSubview(view);
    view->setHidden(false);
    rows_.insert(std::ranges::lower_bound(rows_, row, {}, &Row::index), { row, view });
}

bool isInSelectedRow(View const& view)
{
    for (View const* row = &view; row->superview(); row = row->superview()) {
        if (row->superview()->kind() != ViewKind::TableView)
            continue;
        auto const& table = static_cast<TableView const&>(*row->superview());
        return table.selectedRow() && table.rowOf(*row) == table.selectedRow();
    }
    return false;
}

} // namespace quillbar::platform
