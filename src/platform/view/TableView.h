#pragma once

#include "platform/view/View.h"

#include <cstddef>
#include <functional>
#include <string_view>

namespace quillbar::platform {

enum class SelectionMode : std::uint8_t { None, Single };
enum class RowMove : std::int8_t { Up = -1, Down = 1 };

/// One column of rows of equal height, the document of a scroll view, whose content width it
/// takes. Asks for the views of the rows that show, and of one more on either side, and keeps
/// those that went out of sight for reuse.
///
/// Set the callbacks, then call reloadData(), and again whenever the rows have changed.
class TableView : public View {
public:
    TableView()
        : View(ViewKind::TableView)
    {
    }

    void setRowHeight(double height) { rowHeight_ = height; }
    void setSelectionMode(SelectionMode mode) { selectionMode_ = mode; }
    [[nodiscard]] double rowHeight() const { return rowHeight_; }
    [[nodiscard]] SelectionMode selectionMode() const { return selectionMode_; }

    std::function<std::size_t()> rowCount;
    /// Returns the row's view, taken with takeReusableView() or made anew, with everything set
    /// that differs from row to row.
    std::function<std::shared_ptr<View>(std::size_t row)> viewForRow;
    /// The text that stands for the row while it is dragged; nothing when it cannot be. Without
    /// this callback no row can.
    std::function<std::optional<std::string>(std::size_t row)> dragTextForRow;
    /// A row's drag text was dropped above row `gap`, or below the last row; whether it is taken.
    /// May destroy the table.
    std::function<bool(std::string const& text, std::size_t gap)> acceptDrop;
    /// The row changes places with the next one up or down, which exists; without this callback no
    /// row can be moved by keyboard.
    std::function<void(std::size_t row, std::size_t target)> moveRow;
    /// The row is clickedRow(). May destroy the table.
    std::function<void()> onDoubleClick;

    /// Asks anew for the number of rows and for their views; nothing stays selected. The scroll
    /// position stays within the new rows.
    void reloadData();
    /// A view of that identifier that no row uses, or null.
    [[nodiscard]] std::shared_ptr<View> takeReusableView(std::string_view identifier);

    [[nodiscard]] std::size_t numberOfRows() const { return numberOfRows_; }
    /// Null for a row that is out of sight.
    [[nodiscard]] std::shared_ptr<View> viewAtRow(std::size_t row) const;
    /// The row whose view is `view` or stands above it.
    [[nodiscard]] std::optional<std::size_t> rowOf(View const& view) const;
    [[nodiscard]] Rect rectOfRow(std::size_t row) const;
    [[nodiscard]] std::optional<std::size_t> rowAt(double y) const;
    /// The gap between rows that is nearest to `y`, counted by the row below it.
    [[nodiscard]] std::size_t gapAt(double y) const;
    [[nodiscard]] std::optional<std::string> dragText(std::size_t row) const;

    /// Selects that row alone; a row that does not exist clears the selection.
    void selectRow(std::size_t row);
    void clearSelection() { set(selectedRow_, {}); }
    [[nodiscard]] std::optional<std::size_t> selectedRow() const { return selectedRow_; }
    void scrollRowToVisible(std::size_t row);
    /// The row that was clicked last; nothing for the background below the rows.
    [[nodiscard]] std::optional<std::size_t> clickedRow() const { return clickedRow_; }

    void userClicked(std::optional<std::size_t> row);
    void userDoubleClicked(std::optional<std::size_t> row);
    /// Whether the drop was taken.
    bool userDropped(std::string const& text, std::size_t gap);
    /// A person moved the row by keyboard. The focus goes along.
    void userMoved(std::size_t row, RowMove move);

    [[nodiscard]] std::vector<std::shared_ptr<View>> keyOrder() const override;
    /// From the focused control the up and down arrows go to the same one of the next row; with
    /// Option they take the row along.
    KeyEventResult keyDown(KeyEvent const& event) override;

protected:
    void layout() override;
    void visibleRectChanged(Rect const& visibleRect) override;

private:
    struct Row {
        std::size_t index = 0;
        std::shared_ptr<View> view;
    };

    void fitContent();
    void tile();
    [[nodiscard]] std::optional<std::size_t> neighbour(std::size_t row, RowMove move) const;
    /// By its place in the row; nothing when the focus is elsewhere.
    [[nodiscard]] std::optional<std::vector<std::size_t>> focusedControlOf(std::size_t row) const;
    void focusControl(std::size_t row, std::vector<std::size_t> const& place);
    void retireRows(std::size_t first, std::size_t last);
    void showRow(std::size_t row);

    double rowHeight_ = 17;
    SelectionMode selectionMode_ = SelectionMode::Single;
    std::size_t numberOfRows_ = 0;
    std::optional<std::size_t> selectedRow_;
    std::optional<std::size_t> clickedRow_;
    // What the scroll view shows; without one, all.
    std::optional<Rect> visibleRect_;
    // Ordered by index.
    std::vector<Row> rows_;
    // Hidden subviews, those retired first in front.
    std::vector<std::shared_ptr<View>> spareViews_;
};

/// Whether the view stands in a selected row of a table, whose highlight it is drawn on.
[[nodiscard]] bool isInSelectedRow(View const& view);

} // namespace quillbar::platform
