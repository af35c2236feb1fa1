#include "widgets/elements/health/MeasureModel.h"

#include "widgets/elements/health/HealthText.h"

namespace Widgets {

namespace {

constexpr int signSize = 18;

} // namespace

void MeasureModel::setMeasures(std::vector<Nodes::AlarmMeasure> measures)
{
    beginResetModel();
    m_measures = std::move(measures);
    endResetModel();
}

int MeasureModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_measures.size());
}

int MeasureModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant MeasureModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Nodes::AlarmMeasure &measure = m_measures[std::size_t(index.row())];
    if (role == Qt::TextAlignmentRole && index.column() == Value)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::DecorationRole && index.column() == Verdict &&
        measure.verdict != Nodes::HealthVerdict::None)
        return HealthText::sign(measure.verdict, signSize);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case Name:
        return QString::fromStdString(measure.name);
    case Value:
        return HealthText::value(measure);
    case Target:
        return QString::fromStdString(measure.target);
    default:
        return HealthText::verdict(measure.verdict);
    }
}

QVariant MeasureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QString names[] = {QStringLiteral("Показатель"), QStringLiteral("Значение"),
                                    QStringLiteral("Рекомендуется"), QStringLiteral("Оценка")};
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 ||
        section >= ColumnCount)
        return {};
    return names[section];
}

} // namespace Widgets
