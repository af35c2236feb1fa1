#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

namespace Nodes {
struct PropertyDescriptor;
}

namespace Editor {

class NodePickerModel;

/// Picks nodes that a property may refer to: one, or several for a list. Deletes itself when
/// closed.
class NodePicker : public QDialog
{
    Q_OBJECT

public:
    NodePicker(const Nodes::NodesCollection *project, const Nodes::PropertyDescriptor &descriptor,
               QWidget *parent);
    ~NodePicker() override;

    /// Selects a node; 0 selects none.
    void setCurrent(unsigned long id);

signals:
    /// In the order of the tree; never empty.
    void picked(const Nodes::NodeLinks &nodes);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void search(const QString &text);
    void take();
    void check();
    Nodes::NodeLinks chosen() const;

    const Nodes::NodesCollection *m_project;
    unsigned long m_token;
    NodePickerModel *m_model;
    QLineEdit *m_search;
    QTreeView *m_view;
    QLabel *m_found;
    QPushButton *m_take;
};

} // namespace Editor
