#pragma once

#include "widgets/windows/WindowBasic.h"

namespace Widgets {

/// A plain window: shows the elements of its own node.
class WIDGETS_EXPORT WindowForm : public WindowBasic
{
    Q_OBJECT

public:
    WindowForm(Nodes::BasicWindow *node, QWidget *parent);
};

} // namespace Widgets
