#pragma once

#include "platform/Token.h"
#include "platform/view/Geometry.h"

#include <QBasicTimer>
#include <QPixmap>
#include <QWidget>

#include <optional>
#include <string>

namespace quillbar::platform {

class ScrollView;
class TableView;

/// One row of a table under the mouse, from the first move of the drag to its end: shows the row
/// beside the pointer and a line in the gap where it would land, and scrolls at the edges. It
/// stays within its table, so nothing foreign can be dropped there. Escape ends it.
class RowDrag final : public QWidget {
public:
    RowDrag(QWidget& tableWidget, TableView& table, std::size_t row, std::string text, double grip);

    /// The pointer is at `y` of the table.
    void moveTo(QPointF position);
    /// Where the row would land; nothing when it is dropped outside or was given up.
    [[nodiscard]] std::optional<std::size_t> gap() const;
    [[nodiscard]] std::string const& text() const { return text_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    [[nodiscard]] ScrollView* scrollView() const;
    [[nodiscard]] Rect visibleRect() const;
    [[nodiscard]] double scrollSpeed() const;
    void placeOver();

    TableView& table_;
    std::string text_;
    QPixmap image_;
    double grip_;
    QPointF position_;
    bool isGivenUp_ = false;
    QBasicTimer scrolling_;
    Token escape_;
};

} // namespace quillbar::platform
