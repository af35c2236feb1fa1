#include "widgets/actions/kinds/qactionArchiverDBMgr.h"

#include "widgets/dialogs/ArchiverDBMgrDialog.h"
#include "widgets/windows/WindowManager.h"
#include "widgets/windows/desktop/DesktopPlacement.h"

#include "nodes/actions/kinds/actionArchiverDBMgr.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

namespace Widgets {

void qactionArchiverDBMgr::Execute()
{
    auto *node = nodeAs<Nodes::actionArchiverDBMgr>();
    if (!node)
        return;
    const auto demand = [this, node] {
        const Nodes::ActingScope acting = act();
        return node->Demand();
    };
    if (const Nodes::Result access = demand(); !access)
        return report(access);
    static QPointer<ArchiverDBMgrDialog> open;
    if (open)
        return DesktopPlacement::present(*open);
    if (g_pWindowManager && g_pWindowManager->isEnding())
        return;
    ArchiverDBMgrDialog dialog(node, QStringLiteral("ArchiverDBMgrDialog"));
    open = &dialog;
    const QSize available = QGuiApplication::primaryScreen()->availableGeometry().size();
    if (dialog.width() > available.width() || dialog.height() > available.height())
        dialog.showMaximized();
    dialog.exec();
}

} // namespace Widgets
