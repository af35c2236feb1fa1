#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/groups/GroupScope.h"

#include <vector>

namespace Nodes {
class BasicWidget;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

/// What an edit of a whole selection works on. None is null, none is owned; good until the tree
/// changes. GUI thread.
struct WIDGETS_EXPORT EditedElements
{
    std::vector<Nodes::BasicWidget *> elements; ///< in the order they were selected
    Nodes::BasicWidget *key = nullptr;          ///< others are brought in line with it; may be null
    Nodes::ConfigNode *document = nullptr;      ///< what the scene stands for; may be null
    GroupScope scope;                           ///< what of them is taken as one

    /// Index of the key element; the first when it is none of them, -1 without any.
    int keyIndex() const;
};

} // namespace Widgets
