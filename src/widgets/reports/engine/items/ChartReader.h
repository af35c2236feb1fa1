#pragma once

#include "widgets/reports/engine/items/ChartData.h"

namespace LimeReport {

class DataSource;

/// Takes the series of one chart out of its source. Used by ChartData.
class ChartReader
{
public:
    ChartReader(const QVariantMap &properties, const ReportScope &scope);

    ChartData read(ItemFault *fault);

private:
    bool findSource();
    void readAxis();
    void readSeries(const QVariantMap &told, int number);
    void thin(ChartData::Series &series) const;
    double xAt(int row) const;
    QString text(const char *name) const;
    void failColumn(const QString &name);

    const QVariantMap &m_properties;
    const ReportScope &m_scope;
    QString m_source;
    const DataSource *m_rows = nullptr;
    int m_rowCount = 0;
    int m_axisColumn = -1;
    ChartData m_data;
    ItemFault m_fault;
};

} // namespace LimeReport
