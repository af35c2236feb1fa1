#include "widgets/reports/engine/data/SnapshotRows.h"

#include <QAbstractItemModel>

#include <algorithm>

namespace LimeReport {

namespace {

constexpr int keptTexts = 4096; // beyond, texts of a column hardly repeat

Nodes::Quality toQuality(const QVariant &told)
{
    if (!told.isValid())
        return Nodes::Quality::Good;
    return Nodes::Quality(std::clamp(told.toInt(), 0, int(Nodes::Quality::Stale)));
}

} // namespace

SnapshotRows::SnapshotRows(const QAbstractItemModel &model) : m_columns(model.columnCount())
{
    for (int i = 0; i < model.columnCount(); ++i)
        m_names.append(model.headerData(i, Qt::Horizontal).toString());
}

void SnapshotRows::addRow(const QAbstractItemModel &model)
{
    for (int i = 0; i < int(m_columns.size()); ++i) {
        Column &column = m_columns[i];
        const QModelIndex index = model.index(m_rowCount, i);
        // What is edited is the typed value; what is displayed may be formatted for a view.
        QVariant value = index.data(Qt::EditRole);
        if (!value.isValid())
            value = index.data(Qt::DisplayRole);
        column.values.push_back(shared(column, value));
        const Nodes::Quality quality = toQuality(index.data(QualityRole));
        if (quality != Nodes::Quality::Good || !column.qualities.empty()) {
            column.qualities.resize(m_rowCount, Nodes::Quality::Good);
            column.qualities.push_back(quality);
        }
    }
    ++m_rowCount;
}

QVariant SnapshotRows::shared(Column &column, const QVariant &value)
{
    if (value.type() != QVariant::String)
        return value;
    const QString text = value.toString();
    const auto known = column.texts.constFind(text);
    if (known != column.texts.constEnd())
        return known.value();
    if (column.texts.size() < keptTexts)
        column.texts.insert(text, text);
    return value;
}

QVariant SnapshotRows::value(int row, int column) const
{
    return m_columns[column].values[row];
}

Nodes::Quality SnapshotRows::quality(int row, int column) const
{
    const Column &cells = m_columns[column];
    return row < int(cells.qualities.size()) ? cells.qualities[row] : Nodes::Quality::Good;
}

} // namespace LimeReport
