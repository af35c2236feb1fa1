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

void FindingModel::take(const Nodes::NodeLink &screen, const ReviewFindings &findings)
{
    const auto isOf = [&screen](const Row &row) { return row.link == screen; };
    const auto first = std::find_if(m_rows.begin(), m_rows.end(), isOf);
    const int place = int(first - m_rows.begin());
    const int count = int(std::find_if_not(first, m_rows.end(), isOf) - first); // they are together
    if (count > 0) {
        beginRemoveRows({}, place, place + count - 1);
        m_rows.remove(place, count);
        endRemoveRows();
    }
    if (findings.isEmpty())
        return;
    beginInsertRows({}, place, place + findings.size() - 1);
    for (int i = 0; i < findings.size(); ++i) {
        const ReviewFinding &finding = findings[i];
        m_rows.insert(place + i,
                      {screen, Editor::nameOf(screen),
                       finding.where == screen ? QString() : Editor::nameOf(finding.where),
                       QString::fromStdString(finding.where.GetLinkName(true)), finding});
    }
    endInsertRows();
}

int FindingModel::count() const
{
    return int(std::count_if(m_rows.begin(), m_rows.end(), [](const Row &row) {
        return row.finding.severity != ReviewFinding::Measure;
    }));
}

Nodes::TextTable FindingModel::table() const
{
    Nodes::TextTable table;
    for (int row = -1; row < m_rows.size(); ++row) {
        std::vector<std::string> cells;
        for (int column = 0; column < ColumnCount; ++column) {
            const QString text = row < 0 ? headerData(column, Qt::Horizontal).toString()
                                         : textAt(m_rows[row], column);
            cells.push_back(text.toStdString());
        }
        cells.push_back(row < 0 ? "Путь" : m_rows[row].path.toStdString());
        table.push_back(std::move(cells));
    }
    return table;
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
