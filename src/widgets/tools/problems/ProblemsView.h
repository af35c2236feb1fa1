#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/tools/problems/ProblemsCheck.h"
#include "widgets/tools/problems/ProblemsModel.h"

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace Widgets {

class ProblemsFilter;

/// The problems of a project in a table that is searched and sorted; a double click or Enter leads
/// to the node. GUI thread.
class WIDGETS_EXPORT ProblemsView : public QWidget
{
    Q_OBJECT

public:
    /// Large: for fingers, and read at arm's length. Compact: beside other panels of a desk, which
    /// check again by themselves.
    enum enLook { Large, Compact };

    explicit ProblemsView(QWidget *parent = nullptr, enLook look = Large);

    /// Checks the project anew. The core outlives the view.
    void check(const Nodes::systemCore *core);
    /// Checks the project once more; what was found before stays on the screen until that is done.
    void checkAgain(const Nodes::systemCore *core);
    /// Which rows are shown.
    void setShown(Problem::enSeverity severity, bool isShown);
    /// Puts what else can be done into the line above the table, as its last; takes it over.
    void addTool(QWidget *tool);
    /// Rows that are chosen; of a desk's view these can be several.
    std::vector<Problem> chosen() const;
    const ProblemsModel &model() const { return *m_model; }
    QTableView &table() const { return *m_table; }
    /// What was found and how far the check is, in Russian.
    QString summary() const;
    QSize sizeHint() const override;

signals:
    void chosenChanged();
    /// Only for nodes that are there; `property` is the key of the one to mend, "" for none.
    void nodeActivated(const Nodes::NodeLink &node, const QString &property);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void buildTable();
    void fitRows();
    void makeLarge();
    void onActivated(const QModelIndex &index);
    void take(const std::vector<Problem> &problems);
    void tellProgress(int done, int count);
    void finish();
    void tellCounts();
    QPushButton *makeFilter(Problem::enSeverity severity);

    const enLook m_look;
    QHBoxLayout *m_top;
    const Nodes::systemCore *m_core = nullptr;
    ProblemsCheck m_check;
    ProblemsModel *m_model;
    ProblemsFilter *m_rows;
    QTableView *m_table;
    QLineEdit *m_search;
    QLabel *m_summary;
    QPushButton *m_again;
    QPushButton *m_filters[2] = {};
    bool m_isReplacing = false; // what is found takes the place of the rows when all is found
    std::vector<Problem> m_found;
};

} // namespace Widgets
