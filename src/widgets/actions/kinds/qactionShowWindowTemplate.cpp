#include "widgets/actions/kinds/qactionShowWindowTemplate.h"

#include "widgets/actions/kinds/TemplateOpening.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/templates/windowTemplate.h"

namespace Widgets {

void qactionShowWindowTemplate::Execute()
{
    const auto *node = nodeAs<Node>();
    Nodes::windowTemplate *window = node ? node->GetWindowTemplate() : nullptr;
    if (!window || !g_pWindowManager)
        return;
    const int display = targetDisplay(node->GetDisplay());
    if (!TemplateOpening::run(*node, *window, display, *this))
        return;
    log("Действие \"открытие окна\"");
    g_pWindowManager->letEventsRun();
}

} // namespace Widgets
