#include "utils/editing/MenuGroup.h"

#include <QMenu>

namespace Utils {

void createGroupInMenu(QMenu &menu, QVector<QAction *> actions)
{
    actions.removeAll(nullptr);
    if (actions.isEmpty())
        return;
    const QList<QAction *> present = menu.actions();
    if (!present.isEmpty() && !present.last()->isSeparator())
        menu.addSeparator();
    for (QAction *action : qAsConst(actions))
        menu.addAction(action);
    menu.addSeparator();
}

void createGroupInMenu(QMenu *menu, QVector<QAction *> actions)
{
    if (menu)
        createGroupInMenu(*menu, std::move(actions));
}

} // namespace Utils
