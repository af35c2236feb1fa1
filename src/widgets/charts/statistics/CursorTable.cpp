#include "widgets/charts/statistics/CursorTable.h"

#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/series/SerieColumn.h"

#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/values/NumberText.h"

#include <QStringList>

#include <cmath>

namespace Widgets {

namespace {

constexpr const char *titles[CursorTable::Count] = {
    "Название", "Визир 1", "Визир 2", "Разность", "Среднее", "Мин", "Макс", "Интеграл", ""};
constexpr const char *tips[CursorTable::Count] = {
    "Название сигнала",
    "Значение под первым визиром",
    "Значение под вторым визиром",
    "Значение под вторым визиром минус значение под первым",
    "Среднее по времени между визирами, без разрывов",
    "Наименьшее между визирами",
    "Наибольшее между визирами",
    "Интеграл по времени между визирами, без разрывов",
    "≈: архив сжат, среднее и интеграл приближённые"};

QString fixed(double number, int decimals)
{
    return QString::fromStdString(std::isfinite(number) ? Nodes::FormatShown(number, decimals)
                                                        : Nodes::NoValueText);
}

QString fixed(const std::optional<double> &number, int decimals)
{
    return fixed(number.value_or(SpanStatistics::None), decimals);
}

QString durationText(double ms)
{
    const auto seconds = qint64(std::llround(ms / 1000));
    if (seconds >= 86400)
        return QStringLiteral("%1 д %2 ч").arg(seconds / 86400).arg(seconds % 86400 / 3600);
    if (seconds >= 3600)
        return QStringLiteral("%1 ч %2 мин").arg(seconds / 3600).arg(seconds % 3600 / 60);
    if (seconds >= 60)
        return QStringLiteral("%1 мин %2 с").arg(seconds / 60).arg(seconds % 60);
    return QStringLiteral("%1 с").arg(seconds);
}

} // namespace

void CursorTable::setRows(std::vector<Row> rows)
{
    const auto isSame = [](const Row &a, const Row &b) { return a.serie == b.serie; };
    if (std::equal(rows.begin(), rows.end(), m_rows.begin(), m_rows.end(), isSame)) {
        m_rows = std::move(rows);
        if (!m_rows.empty())
            emit dataChanged(index(0, 0), index(rowCount() - 1, Count - 1));
        return;
    }
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void CursorTable::setStatistics(int row, const SpanStatistics &statistics)
{
    if (row >= rowCount())
        return;
    m_rows[std::size_t(row)].statistics = statistics;
    emit dataChanged(index(row, Mean), index(row, Remark));
}

std::pair<QString, double> CursorTable::integralUnit(const QString &unit)
{
    static const std::pair<const char *, double> rates[] = {
        {"/ч", 3600}, {"/час", 3600}, {"/мин", 60}, {"/с", 1}, {"/сут", 86400}};
    for (const auto &[ending, seconds] : rates)
        if (unit.endsWith(QString::fromUtf8(ending)))
            return {unit.left(unit.size() - QString::fromUtf8(ending).size()), seconds};
    return {unit.isEmpty() ? QStringLiteral("ч") : unit + QStringLiteral("·ч"), 3600};
}

int CursorTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int CursorTable::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(Count);
}

QVariant CursorTable::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto column = Column(index.column());
    const Row &row = m_rows[std::size_t(index.row())];
    if (role == Qt::DisplayRole)
        return text(row, column);
    if (role == Qt::DecorationRole && column == Name && row.serie)
        return row.serie->getColor();
    if (role == Qt::TextAlignmentRole)
        return int((column == Name || column == Remark ? Qt::AlignLeft : Qt::AlignRight) |
                   Qt::AlignVCenter);
    if (role == SerieQualityRole && row.statistics && column >= Mean && column <= Integral)
        return int(row.statistics->worst);
    return {};
}

QVariant CursorTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= Count)
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromUtf8(titles[section]);
    if (role == Qt::ToolTipRole)
        return QString::fromUtf8(tips[section]);
    if (role == Qt::TextAlignmentRole)
        return int((section == Name || section == Remark ? Qt::AlignLeft : Qt::AlignRight) |
                   Qt::AlignVCenter);
    return {};
}

QString CursorTable::text(const Row &row, Column column)
{
    const Nodes::widgetChartBasicSerie *node = row.serie ? row.serie->getNode() : nullptr;
    const int decimals = node ? node->GetDecimals() : 1;
    const SpanStatistics none;
    const SpanStatistics &sums = row.statistics ? *row.statistics : none;
    switch (column) {
    case Name:
        return row.serie ? row.serie->getData(int(SerieColumn::Name), Qt::DisplayRole).toString()
                         : QString();
    case First:
        return fixed(row.first, decimals);
    case Second:
        return fixed(row.second, decimals);
    case Difference:
        return fixed(row.first && row.second ? *row.second - *row.first : SpanStatistics::None,
                     decimals);
    case Mean:
        return fixed(sums.mean, decimals + 1);
    case Minimum:
        return fixed(sums.minimum, decimals);
    case Maximum:
        return fixed(sums.maximum, decimals);
    case Integral: {
        const auto unit = integralUnit(node ? QString::fromStdString(node->GetUnit()) : QString());
        const QString number = std::isfinite(sums.integral)
                                   ? QString::number(sums.integral / unit.second, 'g', 6)
                                   : QString::fromUtf8(Nodes::NoValueText);
        return number + ' ' + unit.first;
    }
    default:
        return remark(row);
    }
}

QString CursorTable::remark(const Row &row)
{
    if (!row.statistics)
        return {};
    const SpanStatistics &sums = *row.statistics;
    QStringList remarks;
    if (sums.isApproximate)
        remarks << QStringLiteral("≈");
    if (sums.covered <= 0)
        remarks << QStringLiteral("нет данных");
    else if (sums.gaps >= 1000 || sums.gaps > sums.covered / 1000)
        remarks << QStringLiteral("без разрывов: ") + durationText(sums.gaps);
    if (sums.worst != Nodes::Quality::Good)
        remarks << QStringLiteral("есть: ") +
                       QString::fromUtf8(Nodes::QualityName(sums.worst)).toLower();
    return remarks.join(QStringLiteral("; "));
}

} // namespace Widgets
