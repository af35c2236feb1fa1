#pragma once

#include "widgets/WidgetsExport.h"

#include <QPoint>

class QUndoCommand;

namespace Widgets {

struct EditedElements;

/// Copies of elements without the clipboard. GUI thread.
namespace ElementCopies {

/// Step that puts a copy of each beside it, into its own layer, `offset` away (scene pixels); links
/// among them follow, others stay. Null without elements. The caller's.
WIDGETS_EXPORT QUndoCommand *duplicate(const EditedElements &edited, QPoint offset = {16, 16});

} // namespace ElementCopies

} // namespace Widgets
