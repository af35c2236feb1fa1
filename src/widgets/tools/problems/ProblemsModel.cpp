#include "widgets/tools/problems/ProblemsModel.h"

#include "utils/convert/PlainTip.h"

#include <QHash>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace Widgets {

namespace {

// A sign beside the word: told apart at a glance, without colour.
QString severityText(Problem::enSeverity severity)
{
    return severity == Problem::Error ? QStringLiteral("✕ Ошибка") : QStringLiteral("○ Замечание");
}

QString cell(const Problem &problem, int column)
{
    switch (column) {
    case ProblemsModel::SeverityColumn:
        return severityText(problem.severity);
    case ProblemsModel::PlaceColumn:
        return problem.place;
    default:
        return problem.text;
    }
}

} // namespace

void ProblemsModel::clear()
{
    beginResetModel();
    m_problems.clear();
    m_counts[Problem::Error] = m_counts[Problem::Remark] = 0;
    endResetModel();
}

void ProblemsModel::append(const std::vector<Problem> &problems)
{
    if (problems.empty())
        return;
    const int first = int(m_problems.size());
    beginInsertRows({}, first, first + int(problems.size()) - 1);
    m_problems.insert(m_problems.end(), problems.begin(), problems.end());
    for (const Problem &problem : problems)
        ++m_counts[problem.severity];
    endInsertRows();
}

void ProblemsModel::replace(const std::vector<Problem> &problems)
{
    std::unordered_multimap<uint, const Problem *> wanted;
    const auto keyOf = [](const Problem &problem) { return qHash(problem.place + problem.text); };
    for (const Problem &problem : problems)
        wanted.emplace(keyOf(problem), &problem);
    for (int row = int(m_problems.size()) - 1; row >= 0; --row) {
        const auto [begin, end] = wanted.equal_range(keyOf(problem(row)));
        const auto same = std::find_if(
            begin, end, [&](const auto &entry) { return *entry.second == problem(row); });
        if (same == end)
            remove(row);
        else
            wanted.erase(same);
    }
    std::unordered_set<const Problem *> fresh;
    for (const auto &[key, problem] : wanted)
        fresh.insert(problem);
    std::vector<Problem> added;
    for (const Problem &problem : problems) {
        if (fresh.count(&problem) != 0)
            added.push_back(problem);
    }
    append(added);
}

void ProblemsModel::remove(int row)
{
    beginRemoveRows({}, row, row);
    --m_counts[problem(row).severity];
    m_problems.erase(m_problems.begin() + row);
    endRemoveRows();
}

int ProblemsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_problems.size());
}

int ProblemsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ProblemsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Problem &found = problem(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return cell(found, index.column());
    case Qt::ToolTipRole:
        return Utils::PlainTip(cell(found, index.column()));
    case SortRole:
        return index.column() == SeverityColumn ? QVariant(int(found.severity))
                                                : QVariant(cell(found, index.column()));
    case FilterRole:
        return QString(found.place + '\n' + found.text);
    default:
        return {};
    }
}

QVariant ProblemsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QString titles[] = {QStringLiteral("Важность"), QStringLiteral("Где"),
                                     QStringLiteral("Что не так и что сделать")};
    const bool isTitle = orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
                         section < ColumnCount;
    return isTitle ? QVariant(titles[section]) : QVariant();
}

} // namespace Widgets
