#include "widgets/elements/qwidgetButton.h"

namespace Widgets {

qwidgetButton::qwidgetButton(Nodes::BasicWidget *node, QWidget *parent,
                             const SceneContextPtr &context)
    : qbuttonBasic(node, parent, context)
{
}

qwidgetButton::~qwidgetButton() = default;

} // namespace Widgets
