#pragma once

#include "widgets/scene/editing/paste/PasteReport.h"

#include <QPoint>

namespace Nodes {
class ConfigNode;
}

namespace Utils {
class IUndo;
}

namespace Widgets {

class SceneSelection;

/// Puts the clipboard's elements into a layer as one step, the upper left corner of their group to
/// `point` (scene pixels), and selects them. GUI thread.
PasteReport pasteElements(const Nodes::ConfigNode &layer, QPoint point, SceneSelection &selection,
                          Utils::IUndo &undo);

} // namespace Widgets
