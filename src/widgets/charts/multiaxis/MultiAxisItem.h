#pragma once

#include "widgets/charts/multiaxis/MultiAxisAttached.h"

#include <qwt_plot_item.h>
#include <qwt_plot_seriesitem.h>
#include <qwt_scale_map.h>

#include <type_traits>
#include <utility>

namespace Widgets {

/// Common part of MultiAxisItem: a Qwt plot item that may stand on any axis of a MultiAxisPlot.
template <class Item> class MultiAxisItemBase : public Item, public MultiAxisAttached
{
public:
    using Item::Item;

    void setAxes(QwtAxisId xAxis, QwtAxisId yAxis)
    {
        setXAxis(xAxis);
        setYAxis(yAxis);
    }
    void setXAxis(QwtAxisId axis)
    {
        if (takeAxis(axis))
            Item::setXAxis(axis.pos);
    }
    void setYAxis(QwtAxisId axis)
    {
        if (takeAxis(axis))
            Item::setYAxis(axis.pos);
    }
    [[nodiscard]] QwtAxisId xAxis() const { return attachedXAxis(); }
    [[nodiscard]] QwtAxisId yAxis() const { return attachedYAxis(); }

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override
    {
        Item::draw(painter, adapted(attachedXAxis(), xMap), adapted(attachedYAxis(), yMap),
                   canvasRect);
    }
    /// In the direction of a further axis the item has no extent while Qwt scales its own four.
    [[nodiscard]] QRectF boundingRect() const override
    {
        return forScaling(Item::boundingRect(), Item::plot());
    }
    void updateScaleDiv(const QwtScaleDiv &xDiv, const QwtScaleDiv &yDiv) override
    {
        Item::updateScaleDiv(divisionOf(attachedXAxis(), xDiv, Item::plot()),
                             divisionOf(attachedYAxis(), yDiv, Item::plot()));
    }
    void getCanvasMarginHint(const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                             const QRectF &canvasRect, double &left, double &top, double &right,
                             double &bottom) const override
    {
        Item::getCanvasMarginHint(adapted(attachedXAxis(), xMap), adapted(attachedYAxis(), yMap),
                                  canvasRect, left, top, right, bottom);
    }

protected:
    [[nodiscard]] QwtScaleMap adapted(QwtAxisId axis, const QwtScaleMap &map) const
    {
        return adaptedMap(axis, map, Item::plot());
    }
};

/// A Qwt plot item that may stand on any axis of a MultiAxisPlot:
/// `MultiAxisItem<QwtPlotMarker> marker; marker.setYAxis({QwtAxis::yLeft, 1});`
template <class Item, bool isSeries = std::is_base_of_v<QwtPlotSeriesItem, Item>>
class MultiAxisItem : public MultiAxisItemBase<Item>
{
public:
    using MultiAxisItemBase<Item>::MultiAxisItemBase;
};

/// Series: what draws a part of one by itself (QwtPlotDirectPainter) knows Qwt's own maps only.
template <class Item> class MultiAxisItem<Item, true> : public MultiAxisItemBase<Item>
{
public:
    using MultiAxisItemBase<Item>::MultiAxisItemBase;

    void drawSeries(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                    const QRectF &canvasRect, int from, int to) const override
    {
        Item::drawSeries(painter, this->adapted(this->xAxis(), xMap),
                         this->adapted(this->yAxis(), yMap), canvasRect, from, to);
    }
};

} // namespace Widgets
