#pragma once

#include "widgets/reports/engine/data/DataSet.h"

#include <QHash>
#include <QVector>

namespace LimeReport {

/// Which rows of a detail source belong to which master row, found once. One thread.
class WIDGETS_EXPORT DetailIndex
{
public:
    /// Columns that are not there leave every master without rows: see errors().
    DetailIndex(const DetailLink &link, const DataSource &master, const DataSource &detail);

    const QVector<int> &rowsOf(int masterRow) const;
    const DetailLink &link() const { return m_link; }
    const QStringList &errors() const { return m_errors; }

private:
    QVector<int> columnsOf(const DataSource &source, const QString &name, const QStringList &names);

    DetailLink m_link;
    DataSource m_master;
    QVector<int> m_masterColumns;
    QHash<QString, QVector<int>> m_rows;
    QStringList m_errors;
};

} // namespace LimeReport
