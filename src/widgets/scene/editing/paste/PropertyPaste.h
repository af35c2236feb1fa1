#pragma once

#include "widgets/WidgetsExport.h"

class QUndoCommand;

namespace Nodes {
class ConfigNode;
}

namespace Widgets {

struct EditedElements;

/// Giving elements the looks of another one. GUI thread.
namespace PropertyPaste {

enum enWhat {
    Looks,        ///< all but place, order, flags of the editor, words and references
    LooksAndLinks ///< the same with what the element refers to: signal, actions, ...
};

/// Step that gives the elements what `source` has of each property that they have too. Null when
/// nothing would change. The caller's.
WIDGETS_EXPORT QUndoCommand *apply(const EditedElements &edited, const Nodes::ConfigNode &source,
                                   enWhat what);
/// The same from the first element on the clipboard; null without one.
WIDGETS_EXPORT QUndoCommand *fromClipboard(const EditedElements &edited, enWhat what);

} // namespace PropertyPaste

} // namespace Widgets
