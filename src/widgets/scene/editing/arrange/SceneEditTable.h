#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

#include <vector>

class QUndoCommand;

namespace Widgets {

struct EditedElements;

/// One edit of a whole selection.
struct SceneEditRow
{
    const char *id;       ///< of actions, shortcuts and icons (":/icons/arrange/<id>.svg")
    const char *group;    ///< Russian title of the submenu; "" stands in the menu itself
    const char *text;     ///< Russian
    const char *shortcut; ///< portable text; "" for none
    int minimum;          ///< of elements selected
    /// The caller's; null when nothing would change.
    QUndoCommand *(*make)(const EditedElements &edited);
    /// What it adds is to be the selection afterwards.
    bool addsElements = false;
    /// What it asks of them beside their number; null for nothing.
    bool (*isPossible)(const EditedElements &edited) = nullptr;
};

/// Every edit of a whole selection, in the order of menus: those of the scene and of its host are
/// made from it. A new one is a line here.
class WIDGETS_EXPORT SceneEditTable
{
public:
    static const std::vector<SceneEditRow> &rows();
    /// Null when no row has that id.
    static const SceneEditRow *find(const QString &id);
    /// Whether what is selected is fit for it.
    static bool isPossible(const SceneEditRow &row, const EditedElements &edited);
};

} // namespace Widgets
