#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QDialog>

#include <functional>
#include <optional>

class QLabel;
class QPushButton;

namespace Editor {

class ProjectTreeModel;
class TreeFilterView;

/// Dialog that lets the user pick one node of the project from its tree. GUI thread.
class TreePicker : public QDialog
{
    Q_OBJECT

public:
    /// Whether a node can be picked.
    using Test = std::function<bool(const Nodes::ConfigNode &)>;

    TreePicker(Nodes::NodesCollection &project, const QString &title, Test isPickable,
               QWidget *parent);
    ~TreePicker() override;

    /// Shows the node as the one picked.
    void setPicked(const Nodes::NodeLink &node);
    /// Empty while none is.
    Nodes::NodeLink picked() const;

    /// Shows the dialog; nothing when the user has cancelled it. `families` are those that can be
    /// picked (see PropertyDescriptor::linkFamilies); empty: all nodes.
    static std::optional<Nodes::NodeLink> pick(Nodes::NodesCollection &project,
                                               const QString &title,
                                               const std::vector<unsigned> &families,
                                               const Nodes::NodeLink &current, QWidget *parent);

private:
    void refresh();

    Test m_isPickable;
    ProjectTreeModel *m_model; ///< the three are children
    TreeFilterView *m_tree;
    QLabel *m_path;
    QPushButton *m_ok;
};

} // namespace Editor
