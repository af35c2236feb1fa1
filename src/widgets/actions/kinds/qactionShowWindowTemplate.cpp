#include "widgets/actions/kinds/qactionShowWindowTemplate.h"

#include "widgets/actions/kinds/TemplateOpening.h"
#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/templates/windowTemplate.h"

namespace Widgets {

void qactionShowWindowTemplate::Execute()
{
    const auto *node = nodeAs<Node>();
    Nodes::windowTemplate *window = node ? node->GetWindowTemplate() : nullptr;
    if (!window || !DesktopContext::current())
        return;
    const int display = targetDisplay(node->GetDisplay());
    if (!TemplateOpening::run(*node, *window, display, *this))
        return;
    log("Действие \"открытие окна\"");
    DesktopContext::current()->dispatcher().letEventsRun();
}

} // namespace Widgets
