#include "widgets/reports/engine/data/DetailIndex.h"

namespace LimeReport {

namespace {

// Lengths keep ("a", "bc") from ("ab", "c"); numbers meet whatever type holds them.
QString keyOf(const DataSource &source, int row, const QVector<int> &columns)
{
    QString key;
    for (const int column : columns) {
        const QVariant value = source.value(row, column);
        if (!value.isValid())
            return QString(); // no value belongs to no other
        const QString text = value.toString();
        key += QString::number(text.size()) + ':' + text;
    }
    return key;
}

} // namespace

DetailIndex::DetailIndex(const DetailLink &link, const DataSource &master, const DataSource &detail)
    : m_link(link), m_master(master)
{
    m_masterColumns = columnsOf(master, link.master, link.masterColumns);
    const QVector<int> columns = columnsOf(detail, link.detail, link.detailColumns);
    if (!m_errors.isEmpty())
        return;
    for (int row = 0; row < detail.rowCount(); ++row) {
        const QString key = keyOf(detail, row, columns);
        if (!key.isEmpty())
            m_rows[key].append(row);
    }
}

QVector<int> DetailIndex::columnsOf(const DataSource &source, const QString &name,
                                    const QStringList &names)
{
    QVector<int> columns;
    for (const QString &column : names) {
        columns.append(source.column(column));
        if (columns.last() < 0)
            m_errors.append(
                QStringLiteral("источник данных «%1»: связь называет столбец «%2» в «%3», "
                               "а его нет; исправьте шаблон")
                    .arg(m_link.name, column, name));
    }
    return columns;
}

const QVector<int> &DetailIndex::rowsOf(int masterRow) const
{
    static const QVector<int> none;
    const auto found = m_errors.isEmpty()
                           ? m_rows.constFind(keyOf(m_master, masterRow, m_masterColumns))
                           : m_rows.constEnd();
    return found == m_rows.constEnd() ? none : found.value();
}

} // namespace LimeReport
