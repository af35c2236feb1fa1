#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTableWidget;

namespace Nodes {
class AccessReview;
}

namespace Editor {

class Workspace;

/// Who may do what with the node selected elsewhere, or with the project as a whole: a row a user
/// or role, a column a privilege, decided by the rules the station decides by. GUI thread.
class AccessMatrix : public QWidget
{
    Q_OBJECT

public:
    AccessMatrix(Workspace &workspace, QWidget *parent);
    ~AccessMatrix() override;

    /// Shows the project as it is now.
    void refresh();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void addRow(const Nodes::NodeLink &whose, bool isUser, const Nodes::AccessReview &review);
    QString reason(const Nodes::NodeLink &who, int privilege,
                   const Nodes::AccessReview &review) const;
    void tellCell();
    void openRule();
    void follow(const Nodes::NodeLinks &nodes);

    Workspace &m_workspace;
    Nodes::NodeLink m_node; ///< empty: the whole project
    QLabel *m_about;        ///< children
    QTableWidget *m_table;
    QLabel *m_reason;
    QPushButton *m_rule;
};

} // namespace Editor
