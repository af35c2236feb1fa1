#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/NodesArray.h"

#include <string>
#include <vector>

class QUndoCommand;

namespace Nodes {
class BasicWidget;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

struct EditedElements;
class EditGroup;

/// Steps that bind elements of a layer together and take them apart. The caller owns the command;
/// null when nothing would change. GUI thread.
namespace GroupEdits {

/// Whether two or more of the elements stand in one layer and are not one group yet.
WIDGETS_EXPORT bool canGroup(const EditedElements &edited);
/// Whether one of them stands in a group inside of the one that is entered.
WIDGETS_EXPORT bool canUngroup(const EditedElements &edited);
/// The elements and groups of each layer become one group, inside of the one that is entered.
WIDGETS_EXPORT QUndoCommand *group(const EditedElements &edited);
/// The outermost of their groups go, inside of the one that is entered; those inside of them stay.
WIDGETS_EXPORT QUndoCommand *ungroup(const EditedElements &edited);

/// Gives copies that are in no tree yet groups of their own in that layer. Of the path of each
/// `stripped`, where it is in it, goes; what is left stands inside of `outer`.
WIDGETS_EXPORT void renew(const Nodes::NodesArray &copies, const Nodes::ConfigNode &layer,
                          const std::string &stripped, const std::string &outer = {});
/// Gives equally named groups of copies different names, where their originals stood in different
/// layers: `layers` holds the id of each copy's. Of another length it says nothing.
WIDGETS_EXPORT void tellApart(const Nodes::NodesArray &copies,
                              const std::vector<unsigned long> &layers);
/// The elements are about to move to that layer: a name of a group that is taken there becomes
/// another one, as a part of the step.
void giveWay(EditGroup &step, const std::vector<Nodes::BasicWidget *> &elements,
             const Nodes::ConfigNode &layer);

} // namespace GroupEdits

} // namespace Widgets
