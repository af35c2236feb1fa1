#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/tools/problems/ProblemsCheck.h"
#include "widgets/tools/problems/ProblemsModel.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace Widgets {

/// The problems of a project in a table that is searched and sorted; a double click or Enter leads
/// to the node. GUI thread.
class WIDGETS_EXPORT ProblemsView : public QWidget
{
    Q_OBJECT

public:
    explicit ProblemsView(QWidget *parent = nullptr);

    /// Checks the project anew. The core outlives the view.
    void check(const Nodes::systemCore *core);
    const ProblemsModel &model() const { return *m_model; }
    QTableView &table() const { return *m_table; }
    /// What was found and how far the check is, in Russian.
    QString summary() const;

signals:
    /// Only for nodes that are there.
    void nodeActivated(const Nodes::NodeLink &node);

private:
    void buildTable();
    void onActivated(const QModelIndex &index);
    void tellProgress(int done, int count);

    const Nodes::systemCore *m_core = nullptr;
    ProblemsCheck m_check;
    ProblemsModel *m_model;
    QSortFilterProxyModel *m_rows;
    QTableView *m_table;
    QLineEdit *m_search;
    QLabel *m_summary;
    QPushButton *m_again;
};

} // namespace Widgets
