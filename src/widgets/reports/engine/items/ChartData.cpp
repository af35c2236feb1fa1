#include "widgets/reports/engine/items/ChartData.h"

#include "widgets/reports/engine/items/ChartReader.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace LimeReport {

namespace {

QByteArray bytesOf(const QVector<double> &numbers)
{
    return QByteArray(reinterpret_cast<const char *>(numbers.constData()),
                      numbers.size() * int(sizeof(double)));
}

QVector<double> numbersOf(const QByteArray &bytes)
{
    QVector<double> numbers(bytes.size() / int(sizeof(double)));
    std::memcpy(numbers.data(), bytes.constData(), std::size_t(numbers.size()) * sizeof(double));
    return numbers;
}

} // namespace

ChartData ChartData::read(const QVariantMap &properties, const ReportScope &scope, ItemFault *fault)
{
    return ChartReader(properties, scope).read(fault);
}

bool ChartData::isDoubtfulAny() const
{
    return std::any_of(series.begin(), series.end(),
                       [](const Series &one) { return one.doubtful.count(true) > 0; });
}

bool ChartData::hasValues() const
{
    return std::any_of(series.begin(), series.end(), [](const Series &one) {
        return std::any_of(one.y.begin(), one.y.end(), [](double y) { return !std::isnan(y); });
    });
}

QVariantMap ChartData::packed() const
{
    QVariantList list;
    for (const Series &one : series)
        list.append(QVariantMap{{"name", one.name},
                                {"color", one.color},
                                {"isBar", one.isBar},
                                {"x", bytesOf(one.x)},
                                {"y", bytesOf(one.y)},
                                {"doubtful", one.doubtful}});
    return {{"type", type},           {"axis", int(axis)},        {"title", title},
            {"hasLegend", hasLegend}, {"categories", categories}, {"series", list}};
}

ChartData ChartData::unpacked(const QVariantMap &packed)
{
    ChartData data;
    data.type = packed.value(QStringLiteral("type")).toInt();
    data.axis = Axis(packed.value(QStringLiteral("axis")).toInt());
    data.title = packed.value(QStringLiteral("title")).toString();
    data.hasLegend = packed.value(QStringLiteral("hasLegend")).toBool();
    data.categories = packed.value(QStringLiteral("categories")).toStringList();
    for (const QVariant &told : packed.value(QStringLiteral("series")).toList()) {
        const QVariantMap one = told.toMap();
        data.series.append({one.value("name").toString(), one.value("color").value<QColor>(),
                            one.value("isBar").toBool(), numbersOf(one.value("x").toByteArray()),
                            numbersOf(one.value("y").toByteArray()),
                            one.value("doubtful").toBitArray()});
    }
    return data;
}

} // namespace LimeReport
