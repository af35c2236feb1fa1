#include "nodes/actions/actionShowWindow.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionShowWindow::Kind()
{
    return KindBuilder::For<actionShowWindow>(NodeType::enNodeSubtype(0x10003), "actionShowWindow",
                                              "Show window", "Открытие окна")
        .Inherit<BasicPlacingAction>()
        .Property<&actionShowWindow::m_openMode>(16010, "open", "Open mode", "Режим открытия")
        .Choice(OpenAlways, "always", "Всегда новое")
        .Choice(OpenReuseOnDisplay, "display", "Открытое на дисплее")
        .Choice(OpenReuseAnywhere, "anywhere", "Открытое где угодно");
}

} // namespace Nodes
