#pragma once

#include "utils/UtilsExport.h"

#include <QVector>

class QAction;
class QMenu;

namespace Utils {

/// Appends the actions as a group set off by separators; null actions are left out, and an empty
/// group adds nothing. The menu does not take the actions over.
UTILS_EXPORT void createGroupInMenu(QMenu &menu, QVector<QAction *> actions);
/// The same; nothing happens without a menu.
UTILS_EXPORT void createGroupInMenu(QMenu *menu, QVector<QAction *> actions);

} // namespace Utils
