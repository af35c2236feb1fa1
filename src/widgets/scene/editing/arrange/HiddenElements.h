#pragma once

#include "widgets/WidgetsExport.h"

#include <vector>

class QUndoCommand;

namespace Nodes {
class BasicWidget;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

/// Elements that their own property hides: nothing in their scene can be clicked to get them back.
/// GUI thread.
namespace HiddenElements {

/// Those of a composition, window or layer, in tree order.
WIDGETS_EXPORT std::vector<Nodes::BasicWidget *> in(const Nodes::ConfigNode &document);
/// Step that shows them again; null for none. The caller's.
WIDGETS_EXPORT QUndoCommand *show(const std::vector<Nodes::BasicWidget *> &hidden);

} // namespace HiddenElements

} // namespace Widgets
