#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Connection.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QTreeView;

namespace Editor {

class UsagesModel;
class Workspace;

/// List of who refers to the nodes that were asked for, kept up with the project. A double click
/// goes there. GUI thread.
class UsagesPanel : public QWidget
{
    Q_OBJECT

public:
    UsagesPanel(Workspace &workspace, QWidget *parent);
    ~UsagesPanel() override;

    void setTargets(const Nodes::NodeLinks &nodes);
    UsagesModel &model() const { return *m_model; }
    QTreeView &view() const { return *m_view; }

    /// Brings the window's panel forward with the usages of those nodes.
    static void showFor(Workspace &workspace, const Nodes::NodeLinks &nodes);

private:
    void takeProject();
    void letProjectGo();
    void refresh();
    void revealAt(const QModelIndex &index);

    Workspace &m_workspace;
    Nodes::NodeLinks m_targets;
    Nodes::ScopedConnection m_connection;
    QTimer m_due;    ///< a burst of changes is one refresh
    QLabel *m_title; ///< the three are children
    UsagesModel *m_model;
    QTreeView *m_view;
};

} // namespace Editor
