// What the project panel does with the nodes selected in it.
#include "editor/project/ProjectSession.h"
#include "editor/tables/DocumentTable.h"
#include "editor/tree/NodeEdits.h"
#include "editor/tree/ProjectTreeModel.h"
#include "editor/tree/ProjectTreePanel.h"
#include "editor/tree/ProjectTreeView.h"
#include "editor/tree/TreeFilterView.h"
#include "editor/usages/ReplaceDialog.h"
#include "editor/usages/UsagesPanel.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "widgets/scene/editing/ElementClipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace Editor {

void ProjectTreePanel::openCurrent()
{
    const Nodes::NodeLinks nodes = m_tree->selected();
    if (nodes.empty() || !nodes.front().isValid())
        return;
    const Nodes::ConfigNode &node = *nodes.front().GetNode();
    const QModelIndex index = m_model->indexOf(nodes.front());
    if (!FindDocument(node) && m_model->hasChildren(index)) {
        m_view->setExpanded(index, !m_view->isExpanded(index));
        return;
    }
    if (!FindDocument(node) && node.GetNodeType().GetFamily() == Nodes::NodeType::TypeFolder)
        return m_workspace.tell(Workspace::Info,
                                tr("Папка «%1» пуста. Что в ней завести, предложит «Создать».")
                                    .arg(QString::fromStdString(node.GetName())));
    m_workspace.open(nodes.front());
    if (!FindDocument(node))
        m_workspace.reveal(nodes.front());
}

void ProjectTreePanel::duplicate()
{
    const Nodes::NodeLinks copies = m_edits->duplicate(m_tree->selectedInOrder());
    if (!copies.empty())
        m_tree->select(copies, true);
}

void ProjectTreePanel::copy()
{
    Nodes::NodesCollection *project = m_workspace.session().project();
    if (project)
        Widgets::ElementClipboard::put(*project, m_tree->selectedInOrder());
    m_cut.clear();
    m_model->setCut({});
}

void ProjectTreePanel::copyPath()
{
    QStringList paths;
    for (const Nodes::NodeLink &node : m_tree->selectedInOrder())
        paths << QString::fromStdString(node.GetLinkName(true));
    QGuiApplication::clipboard()->setText(paths.join(QLatin1Char('\n')));
}

void ProjectTreePanel::cut()
{
    copy();
    m_cut = m_tree->selectedInOrder();
    m_cutText = QGuiApplication::clipboard()->text();
    m_model->setCut(m_cut);
}

void ProjectTreePanel::paste()
{
    const Nodes::NodeLinks nodes = m_tree->selected();
    if (nodes.empty() || !nodes.front().isValid())
        return;
    const bool isCut = !m_cut.empty() && QGuiApplication::clipboard()->text() == m_cutText;
    const Nodes::NodeLinks pasted =
        isCut ? m_edits->moveNear(m_cut, nodes.front()) : m_edits->pasteNear(nodes.front());
    if (pasted.empty())
        return;
    m_cut.clear();
    m_model->setCut({});
    m_tree->select(pasted, true);
}

void ProjectTreePanel::remove()
{
    m_edits->remove(m_tree->selectedInOrder());
}

void ProjectTreePanel::moveUp()
{
    m_edits->shift(m_tree->selectedInOrder(), true);
}

void ProjectTreePanel::moveDown()
{
    m_edits->shift(m_tree->selectedInOrder(), false);
}

void ProjectTreePanel::findUsages()
{
    UsagesPanel::showFor(m_workspace, m_tree->selectedInOrder());
}

void ProjectTreePanel::replaceLinks()
{
    ReplaceDialog dialog(m_workspace, ReplaceDialog::ModeNode, m_tree->selected().front(), {});
    dialog.exec();
}

} // namespace Editor
