#include "editor/review/FindingModel.h"

#include "nodes/model/ConfigNode.h"

#include <algorithm>

namespace Editor {

namespace {

QString nameOf(const Nodes::NodeLink &link)
{
    const Nodes::ConfigNode *node = link.GetNode();
    return node ? QString::fromStdString(node->GetName()) : QString();
}

} // namespace

void FindingModel::clear()
{
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

void FindingModel::append(const Nodes::NodeLink &screen, const ReviewFindings &findings)
{
    if (findings.isEmpty())
        return;
    beginInsertRows({}, m_rows.size(), m_rows.size() + findings.size() - 1);
    for (const ReviewFinding &finding : findings)
        m_rows.append({Editor::nameOf(screen),
                       finding.where == screen ? QString() : Editor::nameOf(finding.where),
                       finding});
    endInsertRows();
}

int FindingModel::count() const
{
    return int(std::count_if(m_rows.begin(), m_rows.end(), [](const Row &row) {
        return row.finding.severity != ReviewFinding::Measure;
    }));
}

QString FindingModel::text() const
{
    QString all;
    for (int row = -1; row < m_rows.size(); ++row) {
        QStringList cells;
        for (int column = 0; column < ColumnCount; ++column)
            cells << (row < 0 ? headerData(column, Qt::Horizontal).toString()
                              : textAt(m_rows[row], column));
        all += cells.join('\t') + '\n';
    }
    return all;
}

int FindingModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int FindingModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString FindingModel::nameOf(ReviewFinding::Severity severity)
{
    switch (severity) {
    case ReviewFinding::Fault:
        return QStringLiteral("✖ Ошибка");
    case ReviewFinding::Warning:
        return QStringLiteral("▲ Замечание");
    case ReviewFinding::Hint:
        return QStringLiteral("○ Совет");
    case ReviewFinding::Measure:
        break;
    }
    return QStringLiteral("◷ Замер");
}

QString FindingModel::textAt(const Row &row, int column) const
{
    switch (column) {
    case Severity:
        return nameOf(row.finding.severity);
    case Screen:
        return row.screen;
    case Place:
        return row.place;
    case What:
        return row.finding.what;
    default:
        return row.finding.advice;
    }
}

QVariant FindingModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows[index.row()];
    if (role == SortRole && index.column() == Severity)
        return int(row.finding.severity);
    if (role == Qt::ToolTipRole)
        return row.finding.what + '\n' + row.finding.advice;
    return role == Qt::DisplayRole || role == SortRole ? textAt(row, index.column()) : QVariant();
}

QVariant FindingModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles{QStringLiteral("Важность"), QStringLiteral("Экран"),
                                    QStringLiteral("Элемент"), QStringLiteral("Что не так"),
                                    QStringLiteral("Что сделать")};
    return role == Qt::DisplayRole && orientation == Qt::Horizontal ? titles[section] : QVariant();
}

} // namespace Editor
