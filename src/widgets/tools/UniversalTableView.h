#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/tools/UniversalTableSortModel.h"

#include <QPointer>
#include <QTableView>

class QMenu;

namespace Widgets {

class ArchiverDBMgrDialog;

/// Shows nodes or files. Of the nodes the one in front is told, so that a list of its files can
/// follow; files have a context menu, whose work the dialog does that owns the table. GUI thread.
class WIDGETS_EXPORT UniversalTableView : public QTableView
{
    Q_OBJECT

public:
    explicit UniversalTableView(QWidget *parent = nullptr);

    /// Null: files are neither copied nor deleted.
    void setDialog(ArchiverDBMgrDialog *dialog) { m_dialog = dialog; }

    /// Lists the database files of an archiver, those that are there. `parent` owns the model; the
    /// former model goes.
    void makeModel(const Nodes::NodeLink &link, UniversalTableType type, QObject *parent);
    void makeModel(const Nodes::NodesArray &nodes, UniversalTableType type, QObject *parent);

    /// Null before makeModel.
    UniversalTableSortModel *sortModel() const { return m_sortModel; }
    const Nodes::NodeLink &currentLink() const { return m_link; }
    UniversalTableType type() const { return m_type; }
    /// Of the selected rows, from the top.
    QList<UniversalTableItem *> selectedItems() const;
    /// Entries for what is selected; null in node mode. The caller's.
    QMenu *makeMenu();

signals:
    void showArchivatorFiles(Nodes::NodeLink node);
    /// Another list stands in the table, with a selection of its own.
    void listed();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void setTable(UniversalTableSortModel *model, UniversalTableType type);
    void refresh();
    void tell(const QModelIndex &row);

    Nodes::NodeLink m_link;
    UniversalTableType m_type = UniversalTableNodes;
    ArchiverDBMgrDialog *m_dialog = nullptr;
    QPointer<UniversalTableSortModel> m_sortModel;
};

} // namespace Widgets
