#pragma once

#include "editor/picker/NodePickerModel.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

namespace Nodes {
struct PropertyDescriptor;
}

namespace Editor {

/// Lets the user pick nodes of a project: those that a property may refer to, or others that pass a
/// test; one, or several for a list. Deletes itself when closed. GUI thread.
class NodePicker : public QDialog
{
    Q_OBJECT

public:
    using Test = NodePickerModel::Test;

    NodePicker(const Nodes::NodesCollection *project, const QString &title, const Test &isPickable,
               QWidget *parent);
    /// For a property, named after it; several where it holds a list.
    NodePicker(const Nodes::NodesCollection *project, const Nodes::PropertyDescriptor &descriptor,
               QWidget *parent);
    ~NodePicker() override;

    /// Selects a node; 0 selects none.
    void setCurrent(unsigned long id);
    /// What would be picked now, in the order of the tree.
    Nodes::NodeLinks chosen() const;

    /// Shows the dialog and waits; the empty link when the user has cancelled it.
    static Nodes::NodeLink pick(const Nodes::NodesCollection *project, const QString &title,
                                const Test &isPickable, const Nodes::NodeLink &current,
                                QWidget *parent);

signals:
    /// In the order of the tree; never empty.
    void picked(const Nodes::NodeLinks &nodes);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void search(const QString &text);
    void take();
    void check();

    const Nodes::NodesCollection *m_project;
    unsigned long m_token;
    NodePickerModel *m_model;
    QLineEdit *m_search;
    QTreeView *m_view;
    QLabel *m_found;
    QPushButton *m_take;
};

} // namespace Editor
