#include "widgets/actions/kinds/qactionArchiverDBMgr.h"

#include "widgets/dialogs/Dialogs.h"
#include "widgets/tools/ArchiverDBMgrDialog.h"
#include "widgets/windows/desktop/Screens.h"

#include "nodes/actions/kinds/actionArchiverDBMgr.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

namespace Widgets {

void qactionArchiverDBMgr::Execute()
{
    auto *node = nodeAs<Node>();
    if (!node)
        return;
    const auto demand = [this, node] {
        const Nodes::ActingScope acting = act();
        return node->Demand();
    };
    if (const Nodes::Result access = demand(); !access)
        return report(access);
    DialogRequest request;
    request.node = node;
    request.display = targetDisplay(0);
    const OwnedDialog<ArchiverDBMgrDialog> dialog(request);
    if (!dialog)
        return;
    const QScreen *screen = ScreenAt(*request.display);
    const QSize available = screen ? screen->availableSize() : dialog->size();
    if (dialog->width() > available.width() || dialog->height() > available.height())
        dialog->showMaximized();
    dialog->exec();
}

} // namespace Widgets
