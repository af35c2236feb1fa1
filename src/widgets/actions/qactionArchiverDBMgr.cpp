#include "widgets/actions/qactionArchiverDBMgr.h"

#include "widgets/dialogs/ArchiverDBMgrDialog.h"
#include "widgets/windows/Access.h"

#include "nodes/actions/actionArchiverDBMgr.h"

#include <QGuiApplication>
#include <QScreen>

namespace Widgets {

void qactionArchiverDBMgr::Execute()
{
    auto *node = nodeAs<Nodes::actionArchiverDBMgr>();
    if (!node)
        return;
    if (const Nodes::Result access = node->Demand(); !access)
        return ShowActionResult(access, node->GetName());
    ArchiverDBMgrDialog dialog(node, QStringLiteral("ArchiverDBMgrDialog"));
    const QSize available = QGuiApplication::primaryScreen()->availableGeometry().size();
    if (dialog.width() > available.width() || dialog.height() > available.height())
        dialog.showMaximized();
    dialog.exec();
}

} // namespace Widgets
