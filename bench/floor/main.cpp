#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

/// The least that a Qt program with a tray icon and a menu can be; what Quillbar is measured by.
int main(int argumentCount, char** arguments)
{
    QApplication const application { argumentCount, arguments };
    QApplication::setQuitOnLastWindowClosed(false);

    QPixmap picture { 22, 22 };
    picture.fill(Qt::darkGray);
    QMenu menu;
    menu.addAction(QStringLiteral("One"));
    menu.addAction(QStringLiteral("Two"));
    QSystemTrayIcon icon { QIcon { picture } };
    icon.setContextMenu(&menu);
    icon.show();
    return QApplication::exec();
}
