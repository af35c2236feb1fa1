#pragma once

#include "nodes/model/NodeType.h"

#include <QWidget>

class QLineEdit;
class QSortFilterProxyModel;
class QTreeView;

namespace Editor {

class ElementModel;
class Workspace;

/// The kinds of elements, to be dragged into a scene; a double click or Enter puts one into the
/// middle of what the active scene shows. GUI thread.
class ElementPanel : public QWidget
{
    Q_OBJECT

public:
    ElementPanel(Workspace &workspace, QWidget *parent);
    ~ElementPanel() override;

    QTreeView &view() const { return *m_view; }
    void setFilter(const QString &text);
    /// New element in the topmost visible layer of the active scene; false, and told, when there
    /// is no such scene.
    bool addToScene(Nodes::NodeType type);

private:
    Workspace &m_workspace;
    ElementModel *m_model; ///< all are children
    QSortFilterProxyModel *m_filter;
    QLineEdit *m_search;
    QTreeView *m_view;
};

} // namespace Editor
