#include "widgets/actions/kinds/qactionShowProblems.h"

#include "widgets/dialogs/Dialogs.h"
#include "widgets/tools/problems/ProblemsDialog.h"

#include "nodes/model/NodesCollection.h"

#include <QApplication>

namespace Widgets {

void qactionShowProblems::Execute()
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
    request.parent = QApplication::activeWindow();
    request.node = node->GetNodesCollection()->GetRoot(); // says whose users
    request.display = targetDisplay(0);
    auto *dialog = Dialogs::make<ProblemsDialog>(request);
    if (!dialog)
        return;
    dialog->check(node->GetCore());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

} // namespace Widgets
