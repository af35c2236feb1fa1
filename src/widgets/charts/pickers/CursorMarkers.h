#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/MultiAxisItem.h"

#include <QColor>
#include <QRectF>

#include <vector>

#include <qwt_plot_marker.h>

namespace Widgets {

/// Marker of a cursor at a sample. Its label is left to CursorLabels, which sees all of them.
class CursorMarker : public MultiAxisItem<QwtPlotMarker>
{
public:
    /// Frame of its label: the colour of its series.
    CursorMarker(const QString &title, const QColor &frame);

    const QColor &frame() const { return m_frame; }
    /// Where it was painted last, and on which canvas.
    const QPointF &anchor() const { return m_anchor; }
    const QRectF &canvas() const { return m_canvas; }

protected:
    void drawLabel(QPainter *painter, const QRectF &canvasRect, const QPointF &pos) const override;

private:
    QColor m_frame;
    mutable QPointF m_anchor;
    mutable QRectF m_canvas;
};

/// Line of a cursor with its time along it, which changes sides where it would be cut off.
class CursorLine : public MultiAxisItem<QwtPlotMarker>
{
public:
    using MultiAxisItem::MultiAxisItem;

    /// Room that the label took when it was painted last.
    const QRectF &labelRect() const { return m_rect; }

protected:
    void drawLabel(QPainter *painter, const QRectF &canvasRect, const QPointF &pos) const override;

private:
    mutable QRectF m_rect;
};

/// Paints the labels of the markers above everything else: beside their points, wholly on the
/// canvas and none on another one. Labels that find no room are left out. The markers outlive it.
class WIDGETS_EXPORT CursorLabels : public QwtPlotItem
{
public:
    CursorLabels(std::vector<const CursorMarker *> markers, std::vector<const CursorLine *> lines);

    /// Places for labels of these sizes beside their anchors, none on another one nor on
    /// `obstacles`; a null rectangle for one that finds no room.
    static std::vector<QRectF> arrange(const std::vector<QPointF> &anchors,
                                       const std::vector<QSizeF> &sizes,
                                       const std::vector<QRectF> &obstacles, const QRectF &canvas);

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    static void drawLabel(QPainter &painter, const CursorMarker &marker, const QRectF &rect);

    std::vector<const CursorMarker *> m_markers;
    std::vector<const CursorLine *> m_lines;
};

} // namespace Widgets
