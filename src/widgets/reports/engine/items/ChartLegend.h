#pragma once

#include "widgets/reports/engine/items/ChartData.h"

#include <QPointF>

class QPainter;

namespace LimeReport {

/// Names of the series below a chart, in as many lines as they need. Units are 0.1 mm.
class ChartLegend
{
public:
    ChartLegend(const ChartData &data, double width, const QPainter &painter);

    /// 0 without a legend.
    double height() const { return m_height; }
    void draw(QPainter &painter, double top) const;

private:
    struct Entry
    {
        QString text;
        QColor color; // invalid: the note about doubtful values
        bool isBar = false;
        QPointF at;
    };

    QVector<Entry> m_entries;
    double m_width;
    double m_height = 0;
};

} // namespace LimeReport
