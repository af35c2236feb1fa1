#include "widgets/elements/qwidgetButton.h"

namespace Widgets {

qwidgetButton::qwidgetButton(Nodes::BasicWidget *node, QWidget *parent) : qbuttonBasic(node, parent)
{
}

qwidgetButton::~qwidgetButton() = default;

} // namespace Widgets
