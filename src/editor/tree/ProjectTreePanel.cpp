#include "editor/tree/ProjectTreePanel.h"

#include "editor/project/ProjectSession.h"
#include "editor/shell/MenuLetters.h"
#include "editor/tables/DocumentTable.h"
#include "editor/tree/KindIcons.h"
#include "editor/tree/NodeEdits.h"
#include "editor/tree/ProjectTreeModel.h"
#include "editor/tree/ProjectTreeView.h"
#include "editor/tree/TreeCommands.h"
#include "editor/tree/TreeFilterView.h"
#include "editor/tree/TreeMemory.h"
#include "editor/workspace/DockRaise.h"
#include "editor/workspace/KeyboardAccess.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "utils/models/SortNodeTypes.h"

#include <QIcon>
#include <QItemSelectionModel>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

ProjectTreePanel::ProjectTreePanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_edits(new NodeEdits(workspace, this)),
      m_model(new ProjectTreeModel(this)),
      m_view(new ProjectTreeView),
      m_tree(new TreeFilterView(*m_model, m_view, this)),
      m_create(new QPushButton(this)),
      m_createMenu(new QMenu(this))
{
    m_model->setEdits(m_edits);
    m_create->setText(QStringLiteral("Создать"));
    m_create->setToolTip(QStringLiteral("Новый узел под выделенным"));
    m_create->setMenu(m_createMenu);
    m_tree->addToLine(m_create);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_tree);
    KeyboardAccess::followLayouts(*this);
    setFocusProxy(m_tree);

    ProjectSession &session = workspace.session();
    connect(&session, &ProjectSession::opened, this, &ProjectTreePanel::takeProject);
    connect(&session, &ProjectSession::aboutToClose, this, &ProjectTreePanel::letProjectGo);
    connect(&workspace.selection(), &Selection::changed, this,
            &ProjectTreePanel::onSelectedElsewhere);
    connect(&workspace, &Workspace::revealRequested, this, [this](const Nodes::NodeLink &node) {
        raiseDock(*this);
        m_tree->reveal(node);
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ProjectTreePanel::onSelected);
    connect(m_view, &QTreeView::doubleClicked, this, &ProjectTreePanel::openCurrent);
    connect(m_view, &QWidget::customContextMenuRequested, this, &ProjectTreePanel::openMenu);
    connect(m_view, &ProjectTreeView::keyAsked, this, &ProjectTreePanel::onKeys);
    connect(m_createMenu, &QMenu::aboutToShow, this, &ProjectTreePanel::fillCreateMenu);
    takeProject();
}

ProjectTreePanel::~ProjectTreePanel() = default;

void ProjectTreePanel::takeProject()
{
    Nodes::NodesCollection *project = m_workspace.session().project();
    m_model->setProject(project);
    setEnabled(project != nullptr);
    if (project)
        m_tree->setExpanded(TreeMemory().recall(QString::fromStdString(project->GetUuid())));
}

void ProjectTreePanel::letProjectGo()
{
    if (const Nodes::NodesCollection *project = m_model->project())
        TreeMemory().keep(QString::fromStdString(project->GetUuid()), m_tree->expanded());
    m_cut.clear();
    m_model->setProject(nullptr);
    setEnabled(false);
}

void ProjectTreePanel::onSelected()
{
    if (m_isSelecting)
        return;
    if (isLosing())
        QTimer::singleShot(0, this, &ProjectTreePanel::takeLoss);
    else
        shareSelection();
}

void ProjectTreePanel::shareSelection()
{
    m_isSelecting = true;
    m_workspace.selection().select(m_tree->selected(), this);
    m_isSelecting = false;
}

// Whether rows go whose nodes were selected: nobody has chosen what is left.
bool ProjectTreePanel::isLosing() const
{
    const Nodes::NodeLinks &nodes = m_workspace.selection().nodes();
    return std::any_of(nodes.begin(), nodes.end(),
                       [](const Nodes::NodeLink &node) { return !node.isValid(); });
}

// What was only moved to another place is back by now.
void ProjectTreePanel::takeLoss()
{
    if (isLosing())
        shareSelection();
    else
        onSelectedElsewhere(m_workspace.selection().nodes(), nullptr);
}

void ProjectTreePanel::onSelectedElsewhere(const Nodes::NodeLinks &nodes, QObject *by)
{
    if (by == this || m_isSelecting)
        return;
    m_isSelecting = true;
    m_tree->select(nodes, true);
    m_isSelecting = false;
}

bool ProjectTreePanel::isPossible(const TreeCommand &command) const
{
    const Nodes::NodeLinks nodes = m_tree->selected();
    return (!command.isEdit || m_edits->isAllowed()) &&
           (!command.isPossible || command.isPossible(nodes));
}

void ProjectTreePanel::run(const TreeCommand &command)
{
    if (isPossible(command))
        (this->*command.run)();
}

void ProjectTreePanel::onKeys(const QKeySequence &keys, bool isRun, bool &isTaken)
{
    for (const TreeCommand &command : TreeCommands()) {
        if (!command.run || keys != QKeySequence(QString::fromLatin1(command.keys)))
            continue;
        isTaken = true;
        if (isRun)
            run(command);
        return;
    }
    if (keys == QKeySequence(Qt::Key_Escape) && !m_cut.empty() && isRun) {
        m_cut.clear();
        m_model->setCut({});
        isTaken = true;
    }
}

void ProjectTreePanel::openMenu(const QPoint &point)
{
    QMenu menu(this);
    QMenu *creation =
        menu.addMenu(QIcon(QStringLiteral(":/editor/icons/create.svg")), QStringLiteral("Создать"));
    const Nodes::NodeLinks nodes = m_tree->selected();
    if (nodes.size() == 1 && m_edits->isAllowed())
        fillKinds(*creation, nodes.front());
    creation->setEnabled(!creation->isEmpty());
    menu.addSeparator();
    for (const TreeCommand &command : TreeCommands()) {
        if (!command.run) {
            menu.addSeparator();
            continue;
        }
        QAction *action = menu.addAction(QIcon(QString::fromLatin1(command.icon)),
                                         QString::fromUtf8(command.text));
        // Shown only: the keys come through the view.
        action->setShortcut(QKeySequence(QString::fromLatin1(command.keys)));
        action->setShortcutContext(Qt::WidgetShortcut);
        action->setShortcutVisibleInContextMenu(true);
        action->setEnabled(isPossible(command));
        connect(action, &QAction::triggered, this, [this, &command] { run(command); });
    }
    MenuLetters::assign(menu);
    menu.exec(m_view->viewport()->mapToGlobal(point));
}

void ProjectTreePanel::fillCreateMenu()
{
    m_createMenu->clear();
    const Nodes::NodeLinks nodes = m_tree->selected();
    const Nodes::NodeLink parent =
        nodes.empty() ? Nodes::NodeLink(m_workspace.session().root()) : nodes.front();
    if (m_edits->isAllowed())
        fillKinds(*m_createMenu, parent);
    if (m_createMenu->isEmpty())
        m_createMenu->addAction(QStringLiteral("Здесь ничего не создать"))->setEnabled(false);
}

void ProjectTreePanel::fillKinds(QMenu &menu, const Nodes::NodeLink &parent)
{
    if (!parent.isValid())
        return;
    const auto groups = Utils::SortNodeTypes(parent->GetAvailableChildNodes());
    for (const auto &group : groups) {
        QMenu *kinds = &menu;
        if (groups.size() > 1 && group.size() > 1) {
            kinds = menu.addMenu(QString::fromStdString(group.front().GetTypeNameTranslated()));
            kinds->setIcon(KindIcons::of(Nodes::NodeType(group.front().GetFamily())));
        }
        for (const Nodes::NodeType &type : group) {
            QAction *action = kinds->addAction(
                KindIcons::of(type), QString::fromStdString(type.GetSubtypeNameTranslated()));
            connect(action, &QAction::triggered, this,
                    [this, type, parent] { create(type, parent); });
        }
    }
}

void ProjectTreePanel::create(const Nodes::NodeType &type, const Nodes::NodeLink &parent)
{
    const Nodes::NodeLink made = m_edits->create(type, parent);
    if (made.isValid())
        startRenaming(made);
}

void ProjectTreePanel::startRenaming(const Nodes::NodeLink &node)
{
    m_tree->reveal(node);
    const QModelIndex index = m_model->indexOf(node);
    if (!index.isValid())
        return;
    m_view->setFocus(Qt::OtherFocusReason);
    m_view->edit(index);
}

void ProjectTreePanel::renameCurrent()
{
    startRenaming(m_tree->selected().front());
}

void ProjectTreePanel::startSearch()
{
    m_tree->startSearch();
}

} // namespace Editor
