#pragma once

#include "platform/linux/drawing/ImageCache.h"
#include "platform/view/Menu.h"

#include <QIcon>
#include <QMenu>

#include <memory>
#include <vector>

namespace quillbar::platform {

/// The status menu as a widget: made when it is opened, deleted when it closes. It shows the menu
/// that was current then, whatever replaces it meanwhile. While it is open the key equivalents
/// work, and letters select the next row that begins with them.
class StatusMenuWidget : public QMenu {
public:
    explicit StatusMenuWidget(std::shared_ptr<Menu const> menu);
    StatusMenuWidget(StatusMenuWidget const&) = delete;
    StatusMenuWidget& operator=(StatusMenuWidget const&) = delete;
    ~StatusMenuWidget() override = default;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void initStyleOption(QStyleOptionMenuItem* option, QAction const* action) const override;

private:
    void addItems(QMenu& target, std::vector<MenuItem> const& items);
    QAction* makeAction(QMenu& target, MenuItem const& item);
    QIcon makeIcon(Image const& image) const;
    void holdInput();
    void activateFirst();
    /// Selects the next row that begins with what was typed. False when the key types nothing.
    bool activateByName(QKeyEvent const& press);
    void choose(MenuItem const& item);

    std::shared_ptr<Menu const> menu_;
    ImageCache<QIcon> icons_;
    // Letters that were typed without a pause, and when the last of them was.
    QString typed_;
    quint64 lastTyped_ = 0;
};

} // namespace quillbar::platform
