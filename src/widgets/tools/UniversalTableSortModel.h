#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/tools/UniversalTableModel.h"

#include <QSortFilterProxyModel>

namespace Widgets {

/// A universal table that sorts: numbers and times by value, texts without regard to case. Rows are
/// numbered as they stand. GUI thread.
class WIDGETS_EXPORT UniversalTableSortModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    UniversalTableSortModel(const QList<FileInfoData> &files, UniversalTableType type,
                            QObject *parent = nullptr);
    UniversalTableSortModel(const Nodes::NodesArray &nodes, UniversalTableType type,
                            QObject *parent = nullptr);

    UniversalTableModel *table() const { return m_table; }
    /// Null for an index that is not valid.
    UniversalTableItem *itemAt(const QModelIndex &index) const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    void begin(UniversalTableModel *table);

    UniversalTableModel *m_table = nullptr;
};

} // namespace Widgets
