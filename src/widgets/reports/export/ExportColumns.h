#pragma once

#include "widgets/reports/export/ExportSheet.h"

#include <QVector>

namespace Widgets {

/// The columns of an exported sheet: those of the source and, behind each that has values which are
/// not good, one that tells their quality in words. Any thread.
class ExportColumns
{
public:
    explicit ExportColumns(const LimeReport::SharedRows &rows);

    int count() const { return m_columns.size(); }
    QString header(int column) const;
    /// Invalid for no value. Of a column of qualities: "" for good ones.
    QVariant cell(int row, int column) const;

private:
    struct Column
    {
        int source;
        bool isQuality;
    };

    const LimeReport::SharedRows &m_rows;
    const QStringList m_names;
    QVector<Column> m_columns;
};

} // namespace Widgets
