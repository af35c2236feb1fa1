#pragma once

#include "widgets/WidgetsExport.h"

#include <vector>

class QUndoCommand;

namespace Nodes {
class BasicLayer;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

struct EditedElements;

/// Moving elements between the layers of a composition. GUI thread.
namespace LayerEdits {

/// Lowest first; none of what is no composition.
WIDGETS_EXPORT std::vector<Nodes::BasicLayer *> layersOf(const Nodes::ConfigNode *document);
/// Step that moves the elements there, each above those of its order; an element whose name is
/// taken there gets a free one. Null when all stand there already. The caller's.
WIDGETS_EXPORT QUndoCommand *moveTo(const EditedElements &edited, const Nodes::BasicLayer &layer);
/// To the next layer of the composition, above (1) or below (-1) that of the key element. Null when
/// there is none.
WIDGETS_EXPORT QUndoCommand *moveToNext(const EditedElements &edited, int step);

} // namespace LayerEdits

} // namespace Widgets
