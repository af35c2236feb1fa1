#include "editor/signals/ImportPreview.h"

#include <QBrush>
#include <QColor>
#include <QFont>

#include <algorithm>

namespace Editor {

using Nodes::SheetPlan;

namespace {

constexpr QRgb changedFill = 0xffdcebf7;
constexpr QRgb addedFill = 0xffe2f0dc;
constexpr QRgb refusedFill = 0xfff7dada;

QString toText(const std::string &text)
{
    return QString::fromStdString(text);
}

} // namespace

ImportPreview::ImportPreview(QObject *parent) : QAbstractTableModel(parent) {}

ImportPreview::~ImportPreview() = default;

void ImportPreview::show(const Nodes::TextTable &table, std::size_t first, const SheetPlan &plan,
                         const std::vector<std::string> &titles)
{
    beginResetModel();
    m_table = &table;
    m_first = first;
    m_width = titles.size();
    m_fates = plan.fates;
    m_fates.resize(table.size(), SheetPlan::LeftOut);
    m_before.clear();
    m_refused.clear();
    m_troubles.clear();
    for (const SheetPlan::Mark &mark : plan.marks)
        m_before[{mark.row, mark.column}] = toText(mark.before);
    for (const Nodes::SheetRefusal &refusal : plan.refusals) {
        const QString reason = toText(refusal.reason);
        QString &trouble = m_troubles[refusal.row];
        trouble += trouble.isEmpty() ? QString() : QStringLiteral("\n");
        trouble += refusal.column.empty() ? reason : toText(refusal.column) + ": " + reason;
        const auto title = std::find(titles.begin(), titles.end(), refusal.column);
        if (title != titles.end() && !refusal.column.empty())
            m_refused[{refusal.row, std::size_t(title - titles.begin())}] = reason;
    }
    choose();
    endResetModel();
}

void ImportPreview::setShown(Shown shown)
{
    beginResetModel();
    m_shown = shown;
    choose();
    endResetModel();
}

void ImportPreview::choose()
{
    m_rows.clear();
    for (std::size_t row = m_first; m_table && row < m_table->size(); ++row) {
        const bool isTouched =
            m_fates[row] == SheetPlan::Changed || m_fates[row] == SheetPlan::Added;
        if (m_shown == All || (m_shown == Touched && isTouched) ||
            (m_shown == Troubled && m_troubles.count(row + 1) != 0))
            m_rows.push_back(row);
    }
}

QString ImportPreview::troubleOf(int row) const
{
    if (row < 0 || row >= int(m_rows.size()))
        return {};
    const auto found = m_troubles.find(m_rows[std::size_t(row)] + 1);
    return found == m_troubles.end() ? QString() : found->second;
}

int ImportPreview::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ImportPreview::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_width) + 1;
}

QString ImportPreview::fateOf(std::size_t row) const
{
    const bool isPart = m_troubles.count(row + 1) != 0;
    switch (m_fates[row]) {
    case SheetPlan::Added:
        return isPart ? tr("+ новый, частично") : tr("+ новый");
    case SheetPlan::Changed:
        return isPart ? tr("≠ изменится частично") : tr("≠ изменится");
    case SheetPlan::Same:
        return isPart ? tr("✗ ничего не взято") : tr("= как есть");
    case SheetPlan::Refused:
        return tr("✗ не принята");
    case SheetPlan::LeftOut:
        break;
    }
    return isPart ? tr("✗ не принята") : tr("пустая");
}

QVariant ImportPreview::cell(const Place &place, const QString &text, int role) const
{
    const auto refused = m_refused.find(place);
    const auto before = m_before.find(place);
    const bool isRefused = refused != m_refused.end();
    const bool isChanged = before != m_before.end();
    if (role == Qt::BackgroundRole && (isRefused || isChanged))
        return QBrush(QColor(isRefused ? refusedFill : changedFill));
    if (role == Qt::ToolTipRole && isRefused)
        return refused->second;
    if (role == Qt::FontRole && isRefused) {
        QFont font;
        font.setStrikeOut(true);
        return font;
    }
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    const QString none = tr("(пусто)");
    return isChanged ? tr("%1 → %2").arg(before->second.isEmpty() ? none : before->second,
                                         text.isEmpty() ? none : text)
                     : text;
}

QVariant ImportPreview::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= int(m_rows.size()))
        return {};
    const std::size_t row = m_rows[std::size_t(index.row())];
    if (index.column() > 0) {
        const auto column = std::size_t(index.column()) - 1;
        const auto &fields = (*m_table)[row];
        return cell({row + 1, column}, column < fields.size() ? toText(fields[column]) : QString(),
                    role);
    }
    if (role == Qt::DisplayRole)
        return tr("%1: %2").arg(row + 1).arg(fateOf(row));
    if (role == Qt::ToolTipRole)
        return troubleOf(index.row());
    if (role == Qt::BackgroundRole && m_troubles.count(row + 1) != 0)
        return QBrush(QColor(refusedFill));
    if (role == Qt::BackgroundRole && m_fates[row] == SheetPlan::Added)
        return QBrush(QColor(addedFill));
    if (role == Qt::BackgroundRole && m_fates[row] == SheetPlan::Changed)
        return QBrush(QColor(changedFill));
    return {};
}

} // namespace Editor
