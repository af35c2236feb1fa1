#pragma once

#include "nodes/model/NodeType.h"
#include "nodes/model/links/NodeLink.h"

#include <QWidget>

class QMenu;
class QPoint;
class QPushButton;

namespace Editor {

class NodeEdits;
class ProjectTreeModel;
class ProjectTreeView;
class TreeFilterView;
class Workspace;
struct TreeCommand;

/// The project's tree: shows, finds, selects and edits its nodes. GUI thread.
class ProjectTreePanel : public QWidget
{
    Q_OBJECT

public:
    ProjectTreePanel(Workspace &workspace, QWidget *parent);
    ~ProjectTreePanel() override;

    TreeFilterView &tree() const { return *m_tree; }
    ProjectTreeModel &model() const { return *m_model; }
    /// Selects the node and begins to rename it.
    void startRenaming(const Nodes::NodeLink &node);

    // What TreeCommands has, on the nodes selected.
    void openCurrent();
    void renameCurrent();
    void duplicate();
    void cut();
    void copy();
    /// A line for each of the nodes, as scripts and reports name them.
    void copyPath();
    void paste();
    void remove();
    void moveUp();
    void moveDown();
    void findUsages();
    void replaceLinks();
    void startSearch();

private:
    void takeProject();
    void letProjectGo();
    void onSelected();
    void shareSelection();
    bool isLosing() const;
    void takeLoss();
    void onSelectedElsewhere(const Nodes::NodeLinks &nodes, QObject *by);
    void onKeys(const QKeySequence &keys, bool isRun, bool &isTaken);
    void openMenu(const QPoint &point);
    void fillCreateMenu();
    void fillKinds(QMenu &menu, const Nodes::NodeLink &parent);
    void create(const Nodes::NodeType &type, const Nodes::NodeLink &parent);
    bool isPossible(const TreeCommand &command) const;
    void run(const TreeCommand &command);

    Workspace &m_workspace;
    NodeEdits *m_edits; ///< all are children
    ProjectTreeModel *m_model;
    ProjectTreeView *m_view;
    TreeFilterView *m_tree;
    QPushButton *m_create;
    QMenu *m_createMenu;
    Nodes::NodeLinks m_cut; ///< are moved by the next paste
    QString m_cutText;      ///< the clipboard's while that is so
    bool m_isSelecting = false;
};

} // namespace Editor
