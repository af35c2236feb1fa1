#include "widgets/windows/WindowForm.h"

namespace Widgets {

WindowForm::WindowForm(Nodes::BasicWindow *node, QWidget *parent) : WindowBasic(node, parent)
{
    if (!node)
        return;
    setScene(node);
    updateGeometryWindow();
    onUpdateProperties();
}

} // namespace Widgets
