#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QDialog>

class QDialogButtonBox;
class QLineEdit;
class QListWidget;

namespace Editor {

/// Asks for some nodes of a list, found by typing a part of their paths. GUI thread.
class ChoiceDialog : public QDialog
{
    Q_OBJECT

public:
    ChoiceDialog(const QString &title, const Nodes::NodeLinks &nodes, bool isSeveral,
                 QWidget *parent);

    Nodes::NodeLinks chosen() const;

private:
    void filter(const QString &text);
    void check();

    Nodes::NodeLinks m_nodes;
    QLineEdit *m_search;
    QListWidget *m_list;
    QDialogButtonBox *m_buttons;
};

} // namespace Editor
