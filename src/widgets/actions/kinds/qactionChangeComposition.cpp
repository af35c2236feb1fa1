#include "widgets/actions/kinds/qactionChangeComposition.h"

#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/WindowComposite.h"

#include "nodes/visual/windows/BasicComposition.h"

#include <QPointer>

namespace Widgets {

void qactionChangeComposition::Execute()
{
    const auto *node = nodeAs<Node>();
    const Nodes::BasicWindow *target = node ? node->GetWindow() : nullptr;
    Nodes::BasicComposition *composition = node ? node->GetComposition() : nullptr;
    if (!target || !composition || !DesktopContext::current())
        return;
    const int display = targetDisplay(node->GetDisplay());
    QVector<QPointer<WindowComposite>> windows;
    for (QWidget *widget :
         DesktopContext::current()->openWindows().findAll(target->GetId(), display))
        windows.append(qobject_cast<WindowComposite *>(widget));
    for (const QPointer<WindowComposite> &window : qAsConst(windows)) {
        if (!window)
            continue;
        const QPoint position = window->pos();
        window->LoadComposition(composition);
        window->move(position);
        log("Действие \"смена композиции\"");
    }
}

} // namespace Widgets
