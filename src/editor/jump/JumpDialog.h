#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QDialog>

class QAction;
class QLabel;
class QLineEdit;
class QTreeView;

namespace Editor {

class JumpModel;

/// The quick jump: part of a name, a path or a command is typed, the arrows choose, Enter goes
/// there. The mouse is not needed. GUI thread.
class JumpDialog : public QDialog
{
    Q_OBJECT

public:
    /// Takes over the model.
    JumpDialog(JumpModel *model, QWidget *parent);

    /// What was chosen; leads nowhere, or is null, when it is the other or nothing.
    const Nodes::NodeLink &node() const { return m_node; }
    QAction *command() const { return m_command; }
    /// The node is to be shown in the tree only, not opened.
    bool isToBeShown() const { return m_isToBeShown; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void search(const QString &text);
    void take(bool isToBeShown);
    QString found(const QString &text) const;
    void place();

    JumpModel *m_model;
    QLineEdit *m_text;
    QTreeView *m_rows;
    QLabel *m_count;
    Nodes::NodeLink m_node;
    QAction *m_command = nullptr;
    bool m_isToBeShown = false;
};

} // namespace Editor
