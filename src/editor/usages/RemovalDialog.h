#pragma once

#include "editor/usages/Usage.h"

#include <QDialog>

#include <map>
#include <utility>

class QTreeWidget;
class QTreeView;

namespace Editor {

class UsagesModel;
class Workspace;

/// Says who refers to nodes that are to go, and lets the user give each of them one that takes its
/// place in those links; the other links go with the nodes. GUI thread.
class RemovalDialog : public QDialog
{
    Q_OBJECT

public:
    /// `usages` are the links from outside to the nodes and to what stands below them.
    RemovalDialog(Workspace &workspace, const Nodes::NodeLinks &nodes, const Usages &usages);
    ~RemovalDialog() override;

    /// A node that goes, and the one that takes its place; empty without replacements.
    std::vector<std::pair<Nodes::NodeLink, Nodes::NodeLink>> replacements() const;
    /// Links to those of `from` that are of the same family as `to` will lead there; the empty link
    /// takes it back.
    void replace(const Nodes::NodeLinks &from, const Nodes::NodeLink &to);

private:
    void addTargets(const Usages &usages);
    void showTarget(int row);
    void pickReplacement();
    void showUsages();
    Nodes::NodeLinks chosenTargets() const;
    bool isGoing(const Nodes::ConfigNode &node) const;

    Workspace &m_workspace;
    Nodes::NodeLinks m_nodes;
    Usages m_usages;
    Nodes::NodeLinks m_targets; ///< rows of the upper list
    std::map<Nodes::NodeLink, Nodes::NodeLink> m_replacements;
    QTreeWidget *m_list; ///< children
    UsagesModel *m_model;
    QTreeView *m_view;
};

} // namespace Editor
