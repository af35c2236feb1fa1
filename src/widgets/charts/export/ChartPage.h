#pragma once

#include "widgets/WidgetsExport.h"

#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace Widgets {

class ISerie;
class Legend;
class MultiAxisPlot;

/// What a chart shows, on paper: title, interval, the plot with all its axes, its legend and the
/// time of making. GUI thread.
class WIDGETS_EXPORT ChartPage
{
public:
    /// Both outlive the page; `legend` may be null.
    ChartPage(const MultiAxisPlot &plot, const Legend *legend, QString title, QString interval);

    /// Height that a picture of that width wants, pixels at 96 dpi.
    int heightFor(int width) const;
    /// In coordinates of the painter's device, which says how fine they are.
    void paint(QPainter &painter, const QRectF &page) const;

private:
    struct Column
    {
        int number; // SerieColumn
        double width;
    };

    std::vector<int> rows() const;
    double paintHead(QPainter &painter, const QRectF &page) const;
    double paintFoot(QPainter &painter, const QRectF &page) const;
    void paintLegend(QPainter &painter, const QRectF &place) const;
    std::vector<Column> columnsOf(const QPainter &painter, double width) const;
    void paintCell(QPainter &painter, int row, const Column &column, const QRectF &cell) const;

    const MultiAxisPlot &m_plot;
    const Legend *m_legend;
    QString m_title;
    QString m_interval;
};

} // namespace Widgets
