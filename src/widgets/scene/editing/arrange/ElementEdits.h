#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/arrange/Arrangement.h"

#include <QString>

class QUndoCommand;

namespace Widgets {

struct EditedElements;

/// Steps that change place, size, order and flags of whole selections. The caller owns the command;
/// null when nothing would change. GUI thread.
namespace ElementEdits {

/// Elements that are not movable stay where they are: they are spread with no others, and align
/// others, not themselves.
WIDGETS_EXPORT QUndoCommand *arrange(const EditedElements &edited, Arrangement::enKind kind,
                                     const QString &text);

/// In front of, or behind, all others of their layers, in their own order.
WIDGETS_EXPORT QUndoCommand *toFront(const EditedElements &edited);
WIDGETS_EXPORT QUndoCommand *toBack(const EditedElements &edited);
/// Adds to the order of each.
WIDGETS_EXPORT QUndoCommand *moveOrder(const EditedElements &edited, int step);

WIDGETS_EXPORT QUndoCommand *setMovable(const EditedElements &edited, bool isMovable);
/// Hidden elements are hidden at run time too.
WIDGETS_EXPORT QUndoCommand *hide(const EditedElements &edited);

} // namespace ElementEdits

} // namespace Widgets
