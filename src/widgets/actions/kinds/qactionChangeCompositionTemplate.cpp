#include "widgets/actions/kinds/qactionChangeCompositionTemplate.h"

#include "widgets/actions/kinds/TemplateOpening.h"
#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/visual/windows/windowComposed.h"

namespace Widgets {

void qactionChangeCompositionTemplate::Execute()
{
    const auto *node = nodeAs<Node>();
    Nodes::windowComposed *window = node ? node->GetComposedWindow() : nullptr;
    if (!window || !DesktopContext::current())
        return;
    const int display = targetDisplay(node->GetDisplay());
    if (!TemplateOpening::run(*node, *window, display, *this))
        return;
    log("Открытие шаблонной композиции");
    DesktopContext::current()->dispatcher().letEventsRun();
}

} // namespace Widgets
