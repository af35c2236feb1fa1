#pragma once

#include "widgets/WidgetsExport.h"

#include "widgets/reports/engine/items/ItemFault.h"

#include <QBitArray>
#include <QColor>
#include <QStringList>
#include <QVariantMap>
#include <QVector>

namespace LimeReport {

class ReportScope;

/// What a chart of a report shows, taken from its data source. Any thread.
struct WIDGETS_EXPORT ChartData
{
    enum Type { Pie = 0, VerticalBar = 1, HorizontalBar = 2, GridLines = 3, Lines = 4 };
    enum class Axis { Category, Number, Time };

    struct Series
    {
        QString name;
        QColor color;
        bool isBar = false;
        QVector<double> x;  ///< index of the category, number, or milliseconds since the epoch
        QVector<double> y;  ///< NaN: no value, a gap
        QBitArray doubtful; ///< value is there, but not good
    };

    /// Properties of a ChartItem, see docs/report-expressions.md. With a fault it holds nothing.
    static ChartData read(const QVariantMap &properties, const ReportScope &scope,
                          ItemFault *fault);
    /// To values that QDataStream writes, and back.
    QVariantMap packed() const;
    static ChartData unpacked(const QVariantMap &packed);

    bool isBars() const { return type == VerticalBar || type == HorizontalBar; }
    bool isDoubtfulAny() const;
    /// Whether there is anything to draw.
    bool hasValues() const;

    int type = Lines;
    Axis axis = Axis::Category;
    QString title;
    bool hasLegend = true;
    QStringList categories;
    QVector<Series> series;
};

} // namespace LimeReport
