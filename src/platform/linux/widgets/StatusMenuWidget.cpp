#include "platform/linux/widgets/StatusMenuWidget.h"

#include "platform/Text.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"
#include "platform/linux/input/UserAction.h"
#include "platform/linux/widgets/MenuKeys.h"
#include "platform/linux/widgets/StatusMenuStyle.h"
#include "platform/linux/x11/X11Window.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QStyleHints>
#include <QStyleOptionMenuItem>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace quillbar::platform {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

bool isChoosable(MenuItem const& item)
{
    return item.isEnabled && (item.action || item.command != StandardCommand::None);
}

MenuItem const* itemOf(QAction const* action)
{
    return static_cast<MenuItem const*>(action->data().value<void const*>());
}

bool isModifier(int key)
{
    constexpr std::array modifiers { Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_AltGr,
        Qt::Key_Meta, Qt::Key_Super_L, Qt::Key_Super_R };
    return std::ranges::find(modifiers, key) != modifiers.end();
}

// QMenu takes "&" for a mnemonic and a tab for the start of the key column.
QString menuText(std::string const& title)
{
    auto text = toQString(title);
    text.replace('&'_L1, "&&"_L1);
    return withoutTabs(text)
        .replace('\n'_L1, QChar::Space)
        .replace(QChar::Null, QChar::ReplacementCharacter);
}

} // namespace

StatusMenuWidget::StatusMenuWidget(std::shared_ptr<Menu const> menu)
    : menu_(std::move(menu))
{
    setAttribute(Qt::WA_DeleteOnClose);
    auto* style = new StatusMenuStyle;
    style->setParent(this);
    setStyle(style);
    addItems(*this, menu_->items);
    connect(this, &QMenu::triggered, this, [this](QAction* action) {
        if (auto const* item = itemOf(action))
            choose(*item);
    });
}

void StatusMenuWidget::showEvent(QShowEvent* event)
{
    QMenu::showEvent(event);
    if (QGuiApplication::platformName() == "xcb"_L1)
        holdInput();
}

/// While another client holds mouse or keyboard, a panel for the click itself say, a pop-up gets
/// neither, and then nothing but its own rows would close it.
void StatusMenuWidget::holdInput()
{
    auto* const window = windowHandle();
    if (!isVisible() || !window)
        return;
    bool const hasKeyboard = window->setKeyboardGrabEnabled(true);
    bool const hasMouse = takeMouse(*this);
    if (!hasKeyboard || !hasMouse)
        QTimer::singleShot(50ms, this, &StatusMenuWidget::holdInput);
}

void StatusMenuWidget::keyPressEvent(QKeyEvent* event)
{
    // QMenu takes the Alt that begins a combination for the wish to close it.
    if (isModifier(event->key()))
        return;
    noteUserAction(static_cast<std::uint32_t>(event->timestamp()));
    auto const found = std::ranges::find_if(menu_->items, [event](MenuItem const& item) {
        return isChoosable(item) && isKeyEquivalent(*event, item.keyEquivalent);
    });
    if (found == menu_->items.end()) {
        if (activateByName(*event))
            return;
        // From nothing QMenu goes up to the last row without scrolling to it; from the first row it
        // does scroll.
        if (event->key() == Qt::Key_Up && activeAction() == nullptr)
            activateFirst();
        QMenu::keyPressEvent(event);
        return;
    }
    choose(*found);
    close();
}

void StatusMenuWidget::mouseReleaseEvent(QMouseEvent* event)
{
    noteUserAction(static_cast<std::uint32_t>(event->timestamp()));
    QMenu::mouseReleaseEvent(event);
}

void StatusMenuWidget::initStyleOption(QStyleOptionMenuItem* option, QAction const* action) const
{
    QMenu::initStyleOption(option, action);
    auto const* item = action == nullptr ? nullptr : itemOf(action);
    if (item == nullptr)
        return;
    if (item->submenu.empty()) {
        auto const ending = menuText(item->keptEnding);
        option->text = action->text().chopped(ending.size()) + '\t'_L1 + ending + '\t'_L1
            + keyText(item->keyEquivalent);
    }
    if (!item->attributedTitle)
        return;
    auto const color = toQColor(item->attributedTitle->color, palette());
    for (auto const role : { QPalette::Text, QPalette::WindowText, QPalette::ButtonText })
        option->palette.setColor(QPalette::Disabled, role, color);
}

void StatusMenuWidget::addItems(QMenu& target, std::vector<MenuItem> const& items)
{
    QList<QAction*> actions;
    actions.reserve(static_cast<qsizetype>(items.size()));
    for (auto const& item : items)
        actions << makeAction(target, item);
    target.addActions(actions);
}

QAction* StatusMenuWidget::makeAction(QMenu& target, MenuItem const& item)
{
    auto* action = new QAction(&target);
    if (item.kind == MenuItemKind::Separator) {
        action->setSeparator(true);
        return action;
    }
    // The row draws its keys itself, so that its text is a name. The shortcut is for assistive
    // programs: Qt does not act on it here.
    action->setText(menuText(item.attributedTitle ? item.attributedTitle->text : item.title));
    action->setShortcut(keyText(item.keyEquivalent).replace("Super"_L1, "Meta"_L1));
    action->setData(QVariant::fromValue(static_cast<void const*>(&item)));
    action->setMenuRole(QAction::NoRole);
    if (item.image)
        action->setIcon(
            icons_.get(*item.image, [this](Image const& image) { return makeIcon(image); }));
    action->setIconVisibleInMenu(true);
    if (item.attributedTitle)
        action->setFont(toQFont(item.attributedTitle->font));
    if (!item.submenu.empty()) {
        auto* submenu = new QMenu(&target);
        addItems(*submenu, item.submenu);
        action->setMenu(submenu);
    } else {
        action->setEnabled(isChoosable(item));
    }
    return action;
}

QIcon StatusMenuWidget::makeIcon(Image const& image) const
{
    auto const paint = [&](QColor const& foreground) {
        return QPixmap::fromImage(renderImage(image,
            { .symbolSize = { 16, 16 },
                .devicePixelRatio = devicePixelRatioF(),
                .foreground = foreground,
                .palette = palette() }));
    };
    QIcon icon(paint(toQColor(SystemColor::Label, palette())));
    auto const selected = paint(palette().color(QPalette::Active, QPalette::HighlightedText));
    icon.addPixmap(selected, QIcon::Active);
    icon.addPixmap(paint(toQColor(SystemColor::SecondaryLabel, palette())), QIcon::Disabled);
    return icon;
}

void StatusMenuWidget::activateFirst()
{
    auto const rows = actions();
    auto const first = std::ranges::find_if(
        rows, [](QAction const* row) { return row->isEnabled() && !row->isSeparator(); });
    if (first != rows.end())
        setActiveAction(*first);
}

bool StatusMenuWidget::activateByName(QKeyEvent const& press)
{
    auto const text = press.text();
    bool const isCombination
        = (press.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    if (isCombination || text.isEmpty() || !text.front().isPrint())
        return false;
    auto const pause = static_cast<quint64>(QGuiApplication::styleHints()->keyboardInputInterval());
    if (press.timestamp() - lastTyped_ > pause)
        typed_.clear();
    // Space alone chooses the active row.
    if (typed_.isEmpty() && text.front().isSpace())
        return false;
    lastTyped_ = press.timestamp();
    // The same letter again goes on to the next row.
    if (typed_ != text)
        typed_ += text;
    auto const rows = actions();
    auto const start = rows.indexOf(activeAction()) + (typed_ == text ? 1 : 0);
    auto const after = rows.begin() + std::max(qsizetype(0), start);
    auto const begins = [beginning = searchForm(typed_.toStdString())](QAction const* row) {
        auto const* item = row->isEnabled() ? itemOf(row) : nullptr;
        return item
            && searchForm(item->representedObject.value_or(item->title)).starts_with(beginning);
    };
    auto found = std::find_if(after, rows.end(), begins);
    if (found == rows.end())
        found = std::find_if(rows.begin(), rows.end(), begins);
    if (found != rows.end())
        setActiveAction(*found);
    return true;
}

void StatusMenuWidget::choose(MenuItem const& item)
{
    // Afterwards, when the menu no longer holds keyboard and pointer. The item is a copy, because
    // this menu may be gone by then.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [item] { performAction(item); }, Qt::QueuedConnection);
}

} // namespace quillbar::platform
