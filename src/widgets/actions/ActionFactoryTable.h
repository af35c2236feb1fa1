#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/actions/running/ActionKinds.h"

namespace Widgets {

/// Which class runs which kind of action node. A new action is its own files and one line in the
/// table of ActionFactoryTable.cpp.
class WIDGETS_EXPORT ActionFactoryTable : public ActionKinds
{
public:
    qBasicAction *create(Nodes::BasicAction *copy) const override;
    bool knows(const Nodes::NodeType &type) const override;
};

} // namespace Widgets
