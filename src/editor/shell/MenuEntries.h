#pragma once

#include <QString>
#include <QVector>

class QAction;
class QMainWindow;
class QMenu;

namespace Editor {

/// One entry of the menus of a window.
struct MenuEntry
{
    QAction *action;
    QString place; ///< titles of the menus above: "Размещение/Выровнять"
    QString text;  ///< without the mark of its letter
};

/// All entries that do something, in the order of the menus. Menus that are filled as they open
/// have what they had then. GUI thread.
QVector<MenuEntry> MenuEntries(const QMainWindow &window);
/// Text of an action or menu without the mark of its letter and without keys.
QString PlainMenuText(QString text);

} // namespace Editor
