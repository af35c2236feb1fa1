#pragma once

#include "utils/UtilsExport.h"

#include <QtGlobal>

class QAction;
class QObject;

namespace Utils {

/// Standard actions of editors, the same title and shortcut everywhere.
class UTILS_EXPORT ActionFactory
{
public:
    enum enActionType {
        ActionCopy = 0,
        ActionCut = 1,
        ActionPaste = 2,
        ActionDelete = 3,
        ActionUndo = 4,
        ActionRedo = 5,
        ActionSelectAll = 6
    };

    static ActionFactory &getInstance();
    /// New action owned by `owner`; null for a type that is not in the table.
    QAction *createAction(enActionType type, QObject *owner) const;

private:
    ActionFactory() = default;
};

} // namespace Utils
