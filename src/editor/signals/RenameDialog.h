#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QDialog>

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QTableWidget;

namespace Editor {

/// Asks how many nodes are to be renamed at once, and shows each old name beside its new one. GUI
/// thread.
class RenameDialog : public QDialog
{
    Q_OBJECT

public:
    RenameDialog(const Nodes::NodeLinks &nodes, QWidget *parent);

    /// One a node, in their order.
    const std::vector<std::string> &names() const { return m_names; }

private:
    void preview();

    std::vector<std::string> m_old;
    std::vector<std::string> m_names;
    QLineEdit *m_search; ///< children
    QLineEdit *m_replacement;
    QLineEdit *m_form;
    QTableWidget *m_table;
    QLabel *m_count;
};

} // namespace Editor
