#pragma once

#include "editor/signals/SheetEdits.h"

#include <QWidget>

#include <set>
#include <string>

class QAction;
class QLabel;
class QLineEdit;
class QToolBar;

namespace Editor {

class SheetModel;
class SheetView;
class Workspace;

/// The table of all nodes of a family below one node, as a spreadsheet: edited in place, copied,
/// pasted, filled, imported and exported, named by patterns. What is selected in it is selected in
/// the workspace. GUI thread.
class SheetPage : public QWidget
{
    Q_OBJECT

public:
    SheetPage(Workspace &workspace, const Nodes::NodeLink &scope, unsigned family, QWidget *parent);
    ~SheetPage() override;

    SheetModel &model() const { return *m_model; }
    SheetView &table() const { return *m_table; }
    /// Selects the node's row; false when it has none here.
    bool reveal(const Nodes::NodeLink &node);

    /// Nodes of the selected rows, in their order.
    Nodes::NodeLinks selectedNodes() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    void copy();
    void paste();
    /// Asks what the columns of the text in the clipboard mean, and shows what it would change.
    void pasteMapped();
    void fillDown();
    void addByPattern();
    void renameByPattern();
    void removeSelected();
    void importFile();
    void exportFile();
    /// Asks for limits and gives the selected signals alarms at them.
    void setAlarms();
    /// Gives the selected signals to a group of the archive, made when there is none.
    void archiveSelected();

private:
    void importBytes(const QByteArray &bytes);
    SheetEdits::Cells selectedCells() const;
    void makeActions(QToolBar &bar);
    QAction *addAction(QToolBar &bar, const QString &text, const QString &tip,
                       const QKeySequence &keys, void (SheetPage::*run)());
    void tell(const SheetEdits::Refusals &refusals);
    SheetEdits::Columns shownColumns() const;
    void chooseColumns(const QPoint &at);
    void showCount();
    void keepSelection();
    void restoreSelection();
    void tellSelection();
    void fitColumns();

    Workspace &m_workspace;
    unsigned m_family;
    SheetModel *m_model; ///< children
    SheetView *m_table;
    QLineEdit *m_filter;
    QLabel *m_count;
    Nodes::NodeLinks m_kept; ///< selected before the rows are gathered anew
    int m_fittedColumns = 0;
    int m_fittedRows = -1;
    bool m_isFitting = false;
    std::set<std::string> m_sized; ///< titles of columns that somebody has dragged
};

} // namespace Editor
