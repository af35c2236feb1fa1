#include "widgets/reports/engine/data/DataSource.h"

#include <cmath>

namespace LimeReport {

namespace {

bool isNothing(const QVariant &value)
{
    const int type = int(value.type());
    if (type == QMetaType::Double || type == QMetaType::Float)
        return !std::isfinite(value.toDouble());
    return !value.isValid() || (value.isNull() && type != QMetaType::QString);
}

} // namespace

DataSource::DataSource(SharedRowsPtr rows) : m_rows(std::move(rows))
{
    if (!m_rows)
        return;
    m_rowCount = m_rows->rowCount();
    m_columns = m_rows->columns();
    for (int i = m_columns.size() - 1; i >= 0; --i) { // the first of two equal names counts
        m_exact.insert(m_columns.at(i), i);
        m_folded.insert(m_columns.at(i).toCaseFolded(), i);
    }
}

int DataSource::column(const QString &name) const
{
    const int exact = m_exact.value(name, -1);
    return exact >= 0 ? exact : m_folded.value(name.toCaseFolded(), -1);
}

bool DataSource::contains(int row, int column) const
{
    return row >= 0 && row < m_rowCount && column >= 0 && column < m_columns.size();
}

QVariant DataSource::value(int row, int column) const
{
    if (!contains(row, column))
        return QVariant();
    QVariant value = m_rows->value(row, column);
    return isNothing(value) ? QVariant() : value;
}

Nodes::Quality DataSource::quality(int row, int column) const
{
    if (!contains(row, column) || isNothing(m_rows->value(row, column)))
        return Nodes::Quality::Bad;
    return m_rows->quality(row, column);
}

} // namespace LimeReport
