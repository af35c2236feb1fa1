#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/tools/UniversalTableItem.h"

#include "nodes/model/NodesArray.h"

#include <QAbstractTableModel>
#include <QList>

namespace Widgets {

/// Nodes or files as rows; see UniversalTableItem. GUI thread.
class WIDGETS_EXPORT UniversalTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role {
        ItemRole = Qt::UserRole, ///< UniversalTableItem *
        SortRole                 ///< value to sort by
    };

    UniversalTableModel(const QList<FileInfoData> &files, UniversalTableType type,
                        QObject *parent = nullptr);
    UniversalTableModel(const Nodes::NodesArray &nodes, UniversalTableType type,
                        QObject *parent = nullptr);

    /// Shows the first ones only.
    void setColumnCount(int count);
    /// Null for a row that is not there. The model's own.
    UniversalTableItem *getItem(int row) const { return m_items.value(row); }
    const QList<UniversalTableItem *> &getItems() const { return m_items; }
    UniversalTableType type() const { return m_type; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;

private:
    QList<UniversalTableItem *> m_items; // children of the model
    UniversalTableType m_type;
    int m_columnCount;
};

} // namespace Widgets
