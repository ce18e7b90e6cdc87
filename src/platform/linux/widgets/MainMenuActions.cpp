#include "platform/Application.h"
#include "platform/linux/drawing/Conversions.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QKeySequence>
#include <QList>
#include <QWidget>

#include <utility>
#include <vector>

namespace quillbar::platform {

namespace {

QKeySequence keySequence(KeyEquivalent const& equivalent)
{
    auto const key = QKeySequence::fromString(toQString(equivalent.key).toUpper());
    return QKeyCombination(toQtModifiers(equivalent.allModifiers()), key[0].key());
}

/// Gives every window the commands of the main menu when it is shown.
class MainMenu : public QObject {
public:
    explicit MainMenu(QObject* parent)
        : QObject(parent)
    {
        parent->installEventFilter(this);
    }

    void setMenu(Menu menu)
    {
        qDeleteAll(std::exchange(actions_, {}));
        menu_ = std::move(menu);
        addActions(menu_.items);
        for (auto* const widget : QApplication::topLevelWidgets())
            equip(*widget);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && watched->isWidgetType())
            equip(static_cast<QWidget&>(*watched));
        return false;
    }

private:
    // The editing commands are left out: text fields have the toolkit's own keys for them.
    void addActions(std::vector<MenuItem> const& items)
    {
        for (auto const& item : items) {
            addActions(item.submenu);
            if (item.keyEquivalent.key.empty()
                || (item.command != StandardCommand::Terminate && !item.action))
                continue;
            auto* const action = new QAction(this);
            QList<QKeySequence> sequences { keySequence(item.keyEquivalent) };
            if (item.command == StandardCommand::Terminate)
                sequences.append(QKeySequence(Qt::CTRL | Qt::Key_Q));
            action->setShortcuts(sequences);
            connect(action, &QAction::triggered, this, [&item] { performAction(MenuItem(item)); });
            actions_.append(action);
        }
    }

    void equip(QWidget& widget) const
    {
        // A menu would show the actions as rows.
        auto const type = widget.windowType();
        if (type == Qt::Window || type == Qt::Dialog || type == Qt::Tool)
            widget.addActions(actions_);
    }

    Menu menu_;
    QList<QAction*> actions_;
};

} // namespace

void installMainMenu(Menu menu)
{
    static MainMenu* const mainMenu = new MainMenu(QApplication::instance());
    mainMenu->setMenu(std::move(menu));
}

} // namespace quillbar::platform
