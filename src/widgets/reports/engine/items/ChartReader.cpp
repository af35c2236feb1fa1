#include "widgets/reports/engine/items/ChartReader.h"

#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/expressions/ValueText.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <limits>

namespace LimeReport {

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr int mostBars = 400;     // more can't be told apart on a page
constexpr int thinnedFrom = 4000; // points; a page has not as many columns
constexpr int thinnedTo = 1000;   // buckets of which the extremes are kept
const QStringList typeNames{"Pie", "VerticalBar", "HorizontalBar", "GridLines", "Lines"};

// Distinguishable on grey and in print.
const QRgb colors[] = {0xff1f5fa8, 0xffb35900, 0xff2e7d32, 0xff7b3fa0, 0xff00707c, 0xff5d4037};

int typeOf(const QVariant &told)
{
    bool isNumber = false;
    const int number = told.toInt(&isNumber);
    if (isNumber)
        return number >= 0 && number < typeNames.size() ? number : -1;
    return told.isValid() ? typeNames.indexOf(told.toString()) : ChartData::Lines;
}

bool isBarTold(const QVariant &preferredType)
{
    return preferredType == QLatin1String("Bar") || preferredType == 0;
}

} // namespace

ChartReader::ChartReader(const QVariantMap &properties, const ReportScope &scope)
    : m_properties(properties), m_scope(scope)
{
}

QString ChartReader::text(const char *name) const
{
    return m_properties.value(QLatin1String(name)).toString().trimmed();
}

void ChartReader::failColumn(const QString &name)
{
    m_fault = {QStringLiteral("в источнике данных «%1» нет столбца «%2»").arg(m_source, name),
               QStringLiteral("нет столбца данных «%1»").arg(name)};
}

ChartData ChartReader::read(ItemFault *fault)
{
    m_data.type = typeOf(m_properties.value(QStringLiteral("chartType")));
    m_data.title = text("chartTitle");
    m_data.hasLegend = m_properties.value(QStringLiteral("showLegend"), true).toBool();
    if (m_data.type < 0)
        m_fault = {QStringLiteral("неизвестный вид диаграммы «%1»").arg(text("chartType")),
                   QStringLiteral("неизвестный вид диаграммы")};
    else if (findSource())
        readAxis();
    int number = 0;
    if (m_fault.isEmpty())
        for (const QVariant &told : m_properties.value(QStringLiteral("series")).toList())
            readSeries(told.toMap(), number++);
    if (m_fault.isEmpty() && m_data.series.isEmpty())
        m_fault = {QStringLiteral("в диаграмме нет ни одного ряда"),
                   QStringLiteral("у диаграммы нет рядов")};
    *fault = m_fault;
    return m_fault.isEmpty() ? m_data : ChartData();
}

bool ChartReader::findSource()
{
    m_source = text("datasource");
    m_rows = m_scope.source(m_source);
    m_rowCount = m_rows ? m_scope.rowCount(m_source) : 0;
    const bool isByRow = m_data.isBars() || m_data.type == ChartData::Pie;
    if (!m_rows)
        m_fault = {QStringLiteral("нет источника данных «%1» для диаграммы").arg(m_source),
                   QStringLiteral("нет источника данных")};
    else if (isByRow && m_rowCount > mostBars)
        m_fault = {
            QStringLiteral("диаграмму из %1 столбцов или секторов не прочесть; нужны линии или "
                           "не более %2 значений")
                .arg(m_rowCount)
                .arg(mostBars),
            QStringLiteral("слишком много столбцов или секторов")};
    return m_fault.isEmpty();
}

void ChartReader::readAxis()
{
    QString column = text("xAxisField");
    if (column.isEmpty())
        column = text("labelsField");
    const QVariantList series = m_properties.value(QStringLiteral("series")).toList();
    if (column.isEmpty() && !series.isEmpty())
        column = series.first().toMap().value(QStringLiteral("labelsColumn")).toString();
    m_axisColumn = m_rows->column(column);
    if (m_axisColumn < 0 && !column.isEmpty())
        failColumn(column);
    QVariant first;
    for (int row = 0; row < m_rowCount && !first.isValid() && m_axisColumn >= 0; ++row)
        first = m_rows->value(m_scope.sourceRow(m_source, row), m_axisColumn);
    const bool isLines = m_data.type == ChartData::GridLines || m_data.type == ChartData::Lines;
    if (isLines && (first.type() == QVariant::DateTime || first.type() == QVariant::Date))
        m_data.axis = ChartData::Axis::Time;
    else if (isLines && first.type() != QVariant::String && !std::isnan(ValueText::toNumber(first)))
        m_data.axis = ChartData::Axis::Number;
    if (m_data.axis != ChartData::Axis::Category || m_rowCount > thinnedFrom)
        return;
    for (int row = 0; row < m_rowCount; ++row) {
        const QVariant label = m_rows->value(m_scope.sourceRow(m_source, row), m_axisColumn);
        m_data.categories.append(m_axisColumn < 0 ? QString::number(row + 1)
                                                  : ValueText::usual(label));
    }
}

double ChartReader::xAt(int row) const
{
    if (m_data.axis == ChartData::Axis::Category)
        return row;
    const QVariant value = m_rows->value(m_scope.sourceRow(m_source, row), m_axisColumn);
    if (m_data.axis == ChartData::Axis::Number)
        return ValueText::toNumber(value);
    const QDateTime time = ValueText::toDateTime(value);
    return time.isValid() ? double(time.toMSecsSinceEpoch()) : none;
}

void ChartReader::readSeries(const QVariantMap &told, int number)
{
    const QString name = told.value(QStringLiteral("valuesColumn")).toString();
    const int column = m_rows->column(name);
    if (column < 0) {
        failColumn(name);
        return;
    }
    ChartData::Series series;
    series.name = told.value(QStringLiteral("name")).toString();
    series.color = told.value(QStringLiteral("color")).value<QColor>();
    series.isBar = m_data.isBars() && isBarTold(told.value(QStringLiteral("preferredType"), 0));
    if (series.name.isEmpty())
        series.name = name;
    if (!series.color.isValid())
        series.color = QColor::fromRgb(colors[std::size_t(number) % std::size(colors)]);
    for (int row = 0; row < m_rowCount; ++row) {
        const double x = xAt(row);
        if (std::isnan(x))
            continue;
        const int sourceRow = m_scope.sourceRow(m_source, row);
        const Nodes::Quality quality = m_rows->quality(sourceRow, column);
        const bool isBad = quality == Nodes::Quality::Bad;
        series.x.append(x);
        series.y.append(isBad ? none : ValueText::toNumber(m_rows->value(sourceRow, column)));
        series.doubtful.resize(series.x.size());
        series.doubtful.setBit(series.x.size() - 1, !isBad && quality != Nodes::Quality::Good);
    }
    if (series.x.size() > thinnedFrom)
        thin(series);
    m_data.series.append(series);
}

// The extremes of each bucket, in their order, and whether it had a gap: the picture stays that of
// all points.
void ChartReader::thin(ChartData::Series &series) const
{
    ChartData::Series thinned;
    QVector<bool> doubtful;
    const int count = series.x.size();
    for (int bucket = 0; bucket < thinnedTo; ++bucket) {
        const int begin = int(qint64(count) * bucket / thinnedTo);
        const int end = int(qint64(count) * (bucket + 1) / thinnedTo);
        int low = -1;
        int high = -1;
        bool hasGap = false;
        for (int i = begin; i < end; ++i) {
            hasGap = hasGap || std::isnan(series.y[i]);
            if (!std::isnan(series.y[i]) && (low < 0 || series.y[i] < series.y[low]))
                low = i;
            if (!std::isnan(series.y[i]) && (high < 0 || series.y[i] > series.y[high]))
                high = i;
        }
        const auto take = [&](int i, double y) {
            thinned.x.append(series.x[i]);
            thinned.y.append(y);
            doubtful.append(series.doubtful.testBit(i));
        };
        if (low >= 0)
            take(std::min(low, high), series.y[std::min(low, high)]);
        if (low >= 0 && low != high)
            take(std::max(low, high), series.y[std::max(low, high)]);
        if (hasGap)
            take(end - 1, none);
    }
    series.x = thinned.x;
    series.y = thinned.y;
    series.doubtful = QBitArray(doubtful.size());
    for (int i = 0; i < doubtful.size(); ++i)
        series.doubtful.setBit(i, doubtful[i]);
}

} // namespace LimeReport
