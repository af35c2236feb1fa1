#include "widgets/actions/kinds/qactionChangeCompositionTemplate.h"

#include "widgets/actions/kinds/TemplateOpening.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/visual/windows/windowComposed.h"

namespace Widgets {

void qactionChangeCompositionTemplate::Execute()
{
    const auto *node = nodeAs<Node>();
    Nodes::windowComposed *window = node ? node->GetComposedWindow() : nullptr;
    if (!window || !g_pWindowManager)
        return;
    const int display = targetDisplay(node->GetDisplay());
    if (!TemplateOpening::run(*node, *window, display, *this))
        return;
    log("Открытие шаблонной композиции");
    g_pWindowManager->letEventsRun();
}

} // namespace Widgets
