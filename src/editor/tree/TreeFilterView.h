#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QSet>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QTreeView;

namespace Editor {

class ProjectTreeModel;

/// A view of a project's tree with the line that filters it. What the user has expanded stays so:
/// through filters, moves and undo. GUI thread.
class TreeFilterView : public QWidget
{
    Q_OBJECT

public:
    /// Takes over the view; the model outlives both.
    TreeFilterView(ProjectTreeModel &model, QTreeView *view, QWidget *parent);
    ~TreeFilterView() override;

    QTreeView &view() const { return *m_view; }
    /// At the left of the filter; becomes a child.
    void addToLine(QWidget *widget);
    /// Into the line of the filter, as Ctrl+F does.
    void startSearch();
    void setFilter(const QString &text);

    /// The current one first, the others in the order of the tree.
    Nodes::NodeLinks selected() const;
    Nodes::NodeLinks selectedInOrder() const;
    /// Those that the filter hides are left out. The first becomes the current one; with
    /// `isRevealing` the way to it is expanded and it is scrolled to.
    void select(const Nodes::NodeLinks &nodes, bool isRevealing);
    /// The same for one node, lifting a filter that hides it.
    void reveal(const Nodes::NodeLink &node);

    /// Ids of the nodes expanded, for the next session.
    QSet<quint64> expanded() const { return m_expanded; }
    void setExpanded(const QSet<quint64> &ids);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fitColumns();
    void applyFilter();
    void expandHits();
    void expandKept();
    void expandRows(const QModelIndex &parent, int first, int last);
    void keepExpanded(const QModelIndex &index, bool isExpanded);
    void selectFirstHit();

    ProjectTreeModel &m_model;
    QHBoxLayout *m_line; ///< all are children
    QLineEdit *m_search;
    QLabel *m_count;
    QTreeView *m_view;
    QSet<quint64> m_expanded;
    bool m_isApplying = false;
};

} // namespace Editor
